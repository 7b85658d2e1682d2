#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace velmo {

/// A place on the keyboard: its virtual key code in the ANSI layout and its evdev code.
struct AnsiKey {
    int virtualKeyCode;
    std::uint8_t evdevCode;
};

/// Letters, digits and signs of the main block, by virtual key code. Evdev codes as in linux/input-event-codes.h.
inline constexpr std::array<AnsiKey, 47> kAnsiKeys{{
    {0, 30},  // A
    {1, 31},  // S
    {2, 32},  // D
    {3, 33},  // F
    {4, 35},  // H
    {5, 34},  // G
    {6, 44},  // Z
    {7, 45},  // X
    {8, 46},  // C
    {9, 47},  // V
    {11, 48}, // B
    {12, 16}, // Q
    {13, 17}, // W
    {14, 18}, // E
    {15, 19}, // R
    {16, 21}, // Y
    {17, 20}, // T
    {18, 2},  // 1
    {19, 3},  // 2
    {20, 4},  // 3
    {21, 5},  // 4
    {22, 7},  // 6
    {23, 6},  // 5
    {24, 13}, // =
    {25, 10}, // 9
    {26, 8},  // 7
    {27, 12}, // -
    {28, 9},  // 8
    {29, 11}, // 0
    {30, 27}, // ]
    {31, 24}, // O
    {32, 22}, // U
    {33, 26}, // [
    {34, 23}, // I
    {35, 25}, // P
    {37, 38}, // L
    {38, 36}, // J
    {39, 40}, // '
    {40, 37}, // K
    {41, 39}, // ;
    {42, 43}, // backslash
    {43, 51}, // ,
    {44, 53}, // /
    {45, 49}, // N
    {46, 50}, // M
    {47, 52}, // .
    {50, 41}, // grave accent
}};

/// X key codes are evdev codes moved up by this.
inline constexpr std::uint8_t kEvdevOffset = 8;

/// The X key code of a place; absent for a place that is not in the table.
constexpr std::optional<std::uint8_t> xKeyCode(int virtualKeyCode) {
    for (const AnsiKey& key : kAnsiKeys) {
        if (key.virtualKeyCode == virtualKeyCode) {
            return static_cast<std::uint8_t>(key.evdevCode + kEvdevOffset);
        }
    }
    return std::nullopt;
}

} // namespace velmo
