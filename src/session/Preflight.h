#pragma once

#include "platform/Machine.h"
#include "platform/Screens.h"
#include "settings/VideoQuality.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <vector>

namespace velmo {

/// How long the disk lasts, said when it is under 20 minutes. `available` bytes; absent or below 1: nothing is said.
std::optional<QString> diskWarning(std::optional<std::int64_t> available, const Screen& screen, VideoQuality quality,
                                   int fps);

/// One line for each battery in use that is below 20 %.
QStringList batteryWarnings(const std::vector<PowerSource>& sources);

} // namespace velmo
