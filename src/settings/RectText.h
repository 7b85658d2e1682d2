#pragma once

#include "base/Geometry.h"

#include <QString>

#include <optional>

namespace velmo {

/// "{{x, y}, {width, height}}", each number in its shortest form that reads back to the same value.
QString rectText(const Rect& rect);

/// The inverse; blanks may stand anywhere between the parts. Absent for anything else.
std::optional<Rect> rectFromText(const QString& text);

} // namespace velmo
