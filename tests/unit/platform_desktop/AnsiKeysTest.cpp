#include "platform/desktop/AnsiKeys.h"

#include <gtest/gtest.h>

#include <linux/input-event-codes.h>

#include <set>

namespace velmo {
namespace {

struct Place {
    int virtualKeyCode;
    int evdev;
};

// The eighteen keys of the program, by the system's own names.
constexpr Place kProgramKeys[] = {{5, KEY_G},  {35, KEY_P},     {46, KEY_M},     {2, KEY_D},  {11, KEY_B}, {6, KEY_Z},
                                  {15, KEY_R}, {24, KEY_EQUAL}, {27, KEY_MINUS}, {0, KEY_A},  {3, KEY_F},  {8, KEY_C},
                                  {40, KEY_K}, {17, KEY_T},     {18, KEY_1},     {19, KEY_2}, {20, KEY_3}, {21, KEY_4}};

TEST(AnsiKeys, EachKeyOfTheProgramIsAtItsPlaceOnTheKeyboard) {
    for (const Place& place : kProgramKeys) {
        EXPECT_EQ(xKeyCode(place.virtualKeyCode), place.evdev + 8) << place.virtualKeyCode;
    }
}

TEST(AnsiKeys, GIsTheXKey42) {
    EXPECT_EQ(xKeyCode(5), 42);
}

TEST(AnsiKeys, NoPlaceIsNamedTwice) {
    std::set<int> virtualCodes;
    std::set<int> evdevCodes;
    for (const AnsiKey& key : kAnsiKeys) {
        EXPECT_TRUE(virtualCodes.insert(key.virtualKeyCode).second) << key.virtualKeyCode;
        EXPECT_TRUE(evdevCodes.insert(key.evdevCode).second) << int(key.evdevCode);
    }
}

TEST(AnsiKeys, APlaceOutsideTheMainBlockHasNoKey) {
    EXPECT_EQ(xKeyCode(10), std::nullopt); // the extra key of ISO keyboards
    EXPECT_EQ(xKeyCode(122), std::nullopt);
    EXPECT_EQ(xKeyCode(-1), std::nullopt);
}

} // namespace
} // namespace velmo
