#pragma once

#include <QString>

#include <optional>

namespace velmo {

/// "THIRD_PARTY_NOTICES.txt" beside the program, else in ../share/velmo-studio from there, else in the data folders
/// of the system. Absent when it is nowhere. `programFolder` is that of the executable.
std::optional<QString> thirdPartyNotices(const QString& programFolder);

} // namespace velmo
