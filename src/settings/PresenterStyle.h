#pragma once

#include "settings/EnumTable.h"

namespace velmo {

enum class PresenterStyle { full, framed, sideRight, sideLeft };

template <>
struct EnumTable<PresenterStyle> {
    struct Row {
        PresenterStyle value;
        std::string_view raw;
        bool isSide;
    };
    static constexpr std::array<Row, 4> rows{{
        {PresenterStyle::full, "full", false},
        {PresenterStyle::framed, "framed", false},
        {PresenterStyle::sideRight, "sideRight", true},
        {PresenterStyle::sideLeft, "sideLeft", true},
    }};
    static_assert(rowsInOrder(rows));
};

/// The teacher stands beside the screen, not in its place.
constexpr bool isSide(PresenterStyle style) {
    return rowOf(style).isSide;
}

} // namespace velmo
