#pragma once

#include <QImage>
#include <QSizeF>
#include <QString>

#include <optional>

namespace velmo::NameTag {

struct Image {
    QImage pixels; ///< premultiplied sRGB, `scale` pixels a point
    QSizeF size;   ///< points
};

/// The pill with the name and, under it, the role. The same law wherever the tag stands: on the bubble's rim, on the
/// presenter's stage, in the column. `size` is the name's font size in points, `maxWidth` the widest that the pill may
/// be, `scale` the pixels of a point. Text that does not fit ends in an ellipsis. Absent when the text has no room.
/// Any thread.
std::optional<Image> image(const QString& name, const QString& role, double size, double maxWidth, double scale);

} // namespace velmo::NameTag
