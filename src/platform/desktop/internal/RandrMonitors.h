#pragma once

#include <QPoint>
#include <QString>

#include <cstdint>
#include <vector>

namespace velmo::internal {

/// A monitor of the X screen. `output` is its first RandR output; `origin` in X pixels.
struct RandrMonitor {
    QString name;
    QPoint origin;
    std::uint32_t output = 0;
};

/// The active monitors, over Qt's connection. Empty off X11 or when the server has gone. Main thread.
std::vector<RandrMonitor> randrMonitors();

} // namespace velmo::internal
