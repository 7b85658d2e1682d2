#pragma once

#include "settings/EnumTable.h"

namespace velmo {

enum class BubbleSize { s, m, l };

template <>
struct EnumTable<BubbleSize> {
    struct Row {
        BubbleSize value;
        std::string_view raw;
        double diameter;
        BubbleSize next;
    };
    static constexpr std::array<Row, 3> rows{{
        {BubbleSize::s, "s", 150, BubbleSize::m},
        {BubbleSize::m, "m", 220, BubbleSize::l},
        {BubbleSize::l, "l", 320, BubbleSize::s},
    }};
    static_assert(rowsInOrder(rows));
};

/// In points.
constexpr double diameter(BubbleSize size) {
    return rowOf(size).diameter;
}
/// The next size of the cycle.
constexpr BubbleSize next(BubbleSize size) {
    return rowOf(size).next;
}

} // namespace velmo
