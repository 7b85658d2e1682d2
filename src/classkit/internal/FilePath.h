#pragma once

#include <QString>

#include <filesystem>

namespace velmo::internal {

inline std::filesystem::path pathOf(const QString& text) {
    return text.toStdString();
}

/// A folder's path as its name: without the slash that may follow it.
inline std::filesystem::path withoutEndingSlash(const std::filesystem::path& path) {
    return path.has_filename() ? path : path.parent_path();
}

/// A file name without its last extension.
inline QString stemOf(const QString& name) {
    return QString::fromStdString(pathOf(name).stem().native());
}

} // namespace velmo::internal
