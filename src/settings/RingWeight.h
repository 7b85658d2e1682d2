#pragma once

#include "settings/EnumTable.h"

namespace velmo {

enum class RingWeight { hairline, thin, medium, thick };

template <>
struct EnumTable<RingWeight> {
    struct Row {
        RingWeight value;
        std::string_view raw;
        std::string_view title;
        double factor;
    };
    static constexpr std::array<Row, 4> rows{{
        {RingWeight::hairline, "hairline", "Ultrafino", 0.3},
        {RingWeight::thin, "thin", "Delgado", 0.55},
        {RingWeight::medium, "medium", "Medio", 1.0},
        {RingWeight::thick, "thick", "Grueso", 1.8},
    }};
    static_assert(rowsInOrder(rows));
};

/// Multiplies the line width of the ring.
constexpr double factor(RingWeight weight) {
    return rowOf(weight).factor;
}

} // namespace velmo
