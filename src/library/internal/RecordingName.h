#pragma once

#include <QString>

#include <chrono>

namespace velmo::internal {

/// "Grabación 15 nov 2026 a las 19.14", in the local time zone.
QString recordingName(std::chrono::system_clock::time_point now);

/// What a user typed as a title, as it can stand as a file name: "/" becomes "-", ":" becomes ".", and there is no
/// white space at the ends. May be empty.
QString cleanedName(QString name);

} // namespace velmo::internal
