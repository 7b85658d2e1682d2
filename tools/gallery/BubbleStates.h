#pragma once

#include <QRect>
#include <QString>

#include <functional>

namespace velmo {

/// Shows the camera bubbles in all their states. `save` takes a picture of a part of the screen; `wait` lets
/// milliseconds pass.
void showBubbles(const std::function<void(const QString& name, const QRect& place)>& save,
                 const std::function<void(int)>& wait);

} // namespace velmo
