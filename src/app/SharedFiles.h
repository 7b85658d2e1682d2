#pragma once

#include <QString>

#include <optional>

namespace velmo {

/// A file or folder that comes with the program: beside it, in ../share/velmo-studio, or where the system keeps such
/// data. Absent when it is in none of them.
std::optional<QString> sharedFile(const QString& programFolder, const QString& name);

} // namespace velmo
