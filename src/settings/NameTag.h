#pragma once

#include <QString>

#include <optional>

namespace velmo {

class Prefs;

/// The teacher's name and role as they stand under the picture.
namespace NameTag {

struct Text {
    QString name;
    QString role; ///< may be empty
    friend bool operator==(const Text&, const Text&) = default;
};

/// Both trimmed. Absent when the name is not to be shown or is empty.
std::optional<Text> current(const Prefs& prefs);

} // namespace NameTag
} // namespace velmo
