#pragma once

#include <QString>

#include <optional>

namespace velmo {

/// A named moment of a recording.
struct Chapter {
    double time = 0; ///< recorded seconds
    QString title;
    std::optional<QString> location; ///< what was opened at that moment
    friend bool operator==(const Chapter&, const Chapter&) = default;
};

} // namespace velmo
