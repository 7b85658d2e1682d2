#pragma once

#include <QString>

#include <optional>

namespace velmo {

/// A file or folder that comes with the program: beside the executable, else in ../share/velmo-studio from there, else
/// in the data folders of the system. Absent when it is nowhere. `programFolder` is that of the executable.
std::optional<QString> programFile(const QString& programFolder, const QString& name);

inline constexpr const char* kThirdPartyNotices = "THIRD_PARTY_NOTICES.txt";
inline constexpr const char* kSlideTemplates = "plantillas";

} // namespace velmo
