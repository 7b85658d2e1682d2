#pragma once

#include "settings/EnumTable.h"

#include <cstdint>
#include <span>

namespace velmo {

/// Colours that the chameleon ring runs through.
enum class ChameleonPalette { lime, neon, ocean, sunset, gold, forest, silver, rainbow };

template <>
struct EnumTable<ChameleonPalette> {
    struct Row {
        ChameleonPalette value;
        std::string_view raw;
        std::string_view title;
        std::size_t count;
        std::array<std::uint32_t, 7> hexes;
    };
    static constexpr std::array<Row, 8> rows{{
        {ChameleonPalette::lime, "lime", "Lima", 5, {0xD4FF3A, 0xB6F000, 0xEFFF7A, 0x8FE000, 0xC6F432}},
        {ChameleonPalette::neon, "neon", "Neón", 5, {0x00F0FF, 0xFF2BD6, 0xB6FF00, 0xFFE600, 0x7A5CFF}},
        {ChameleonPalette::ocean, "ocean", "Océano", 5, {0x00C2D1, 0x0A7BBD, 0x5CB6E8, 0x1DE9B6, 0x0D47A1}},
        {ChameleonPalette::sunset, "sunset", "Atardecer", 5, {0xFF7A18, 0xFF4E6A, 0xFF2D95, 0xA34CFF, 0xFFB347}},
        {ChameleonPalette::gold, "gold", "Dorado", 5, {0xE9C48E, 0xFFF1D0, 0xC9963B, 0xFFFFFF, 0xB8862E}},
        {ChameleonPalette::forest, "forest", "Bosque", 5, {0x2ECC71, 0xA8E063, 0x16A085, 0x5CC9A7, 0xD4FC79}},
        {ChameleonPalette::silver, "silver", "Plata", 5, {0xFFFFFF, 0xC0C7D0, 0x8A94A6, 0xE8ECF1, 0xA7C0D6}},
        {ChameleonPalette::rainbow,
         "rainbow",
         "Arcoíris",
         7,
         {0xFF453A, 0xFF9F0A, 0xFFD60A, 0x30D158, 0x64D2FF, 0x0A84FF, 0xBF5AF2}},
    }};
    static_assert(rowsInOrder(rows));
};

/// 0xRRGGBB, in the order in which they follow each other.
constexpr std::span<const std::uint32_t> hexes(ChameleonPalette palette) {
    return std::span(rowOf(palette).hexes).first(rowOf(palette).count);
}

} // namespace velmo
