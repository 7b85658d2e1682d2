#pragma once

#include "settings/EnumTable.h"

namespace velmo {

/// How the outline of the bubble is drawn.
enum class RingStyle { chameleon, fine, aurora, classic, none };

template <>
struct EnumTable<RingStyle> {
    struct Row {
        RingStyle value;
        std::string_view raw;
        std::string_view title;
    };
    static constexpr std::array<Row, 5> rows{{
        {RingStyle::chameleon, "chameleon", "Camaleón"},
        {RingStyle::fine, "fine", "Fino"},
        {RingStyle::aurora, "aurora", "Aurora"},
        {RingStyle::classic, "classic", "Clásico"},
        {RingStyle::none, "none", "Sin borde"},
    }};
    static_assert(rowsInOrder(rows));
};

} // namespace velmo
