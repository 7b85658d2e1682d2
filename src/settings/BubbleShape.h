#pragma once

#include "base/Geometry.h"
#include "settings/EnumTable.h"

#include <cmath>

namespace velmo {

/// `rounded` is shown as "Horizontal"; its raw value stays, since stored settings carry it.
enum class BubbleShape { circle, rounded, vertical };

template <>
struct EnumTable<BubbleShape> {
    struct Row {
        BubbleShape value;
        std::string_view raw;
        std::string_view title;
        double widthFactor;
        double heightFactor;
    };
    static constexpr std::array<Row, 3> rows{{
        {BubbleShape::circle, "circle", "Círculo", 1, 1},
        {BubbleShape::rounded, "rounded", "Horizontal", 1.33, 1},
        {BubbleShape::vertical, "vertical", "Vertical", 0.78, 1.3},
    }};
    static_assert(rowsInOrder(rows));
};

/// The window's size for a bubble of `diameter` points: a side that is scaled comes out whole.
inline Size size(BubbleShape shape, double diameter) {
    const auto side = [diameter](double factor) { return factor == 1 ? diameter : std::round(diameter * factor); };
    return {side(rowOf(shape).widthFactor), side(rowOf(shape).heightFactor)};
}

} // namespace velmo
