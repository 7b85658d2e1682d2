#pragma once

#include "classkit/ClassData.h"

#include <QString>

#include <filesystem>
#include <vector>

namespace velmo::internal {

// The two documents of a class folder, as pure functions of its record.

/// "00:00" up to "59:59", then "1:00:00": whole seconds, rounded down. A time before the start shows as the start.
QString timeLabel(double seconds);
/// A copy by time; those of one time keep their order.
std::vector<Chapter> sortedByTime(const std::vector<Chapter>& chapters);
/// Text for HTML, also inside double quotes.
QString escaped(QString text);
/// A path, or part of one, as the value of an attribute: percent-encoded, then escaped.
QString href(const QString& text);

/// A self-contained page: the video one folder up, a clickable index, the material.
QString html(const ClassData& data, const QString& title);
/// The index to paste, the links and the material.
QString indexText(const ClassData& data, const QString& title);

/// Writes both into `folder`, each replaced atomically; one that cannot be written is left as it was.
void writePages(const ClassData& data, const std::filesystem::path& folder);

} // namespace velmo::internal
