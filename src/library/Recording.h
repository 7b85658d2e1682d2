#pragma once

#include <QString>
#include <QStringList>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

namespace velmo {

/// One finished video. Its title is its file's name: renaming the file is how it is retitled.
struct Recording {
    std::filesystem::path url;
    std::chrono::system_clock::time_point created;
    std::int64_t size = 0;            ///< bytes; 0 when unknown
    double duration = 0;              ///< seconds; 0 means not yet known
    std::vector<double> markers;      ///< seconds on the video's own timeline, in order of making
    QStringList markerTitles;         ///< by index into `markers`; may be shorter
    std::optional<QString> driveLink; ///< last link that can be shared

    friend bool operator==(const Recording&, const Recording&) = default;

    /// The file's name without extension; bytes that are no UTF-8 show as a replacement character.
    QString title() const;
    /// Absent when there is none on the disk.
    std::optional<std::filesystem::path> classFolder() const;
};

} // namespace velmo

template <>
struct std::hash<velmo::Recording> {
    std::size_t operator()(const velmo::Recording& recording) const noexcept;
};
