#pragma once

#include <QString>

#include <functional>

namespace velmo {

struct Screen;

/// Shows the presenter's scenes on `screen`, at rest and in a flight; `save` is called for each with its name.
void showPresenter(const Screen& screen, const std::function<void(const QString&)>& save);

} // namespace velmo
