#include "ui/Theme.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace velmo {
namespace {

double luminance(const QColor& color) {
    const auto linear = [](double c) { return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& a, const QColor& b) {
    const auto [low, high] = std::minmax({luminance(a), luminance(b)});
    return (high + 0.05) / (low + 0.05);
}

TEST(Theme, RingColoursWrapInBothDirections) {
    EXPECT_EQ(Theme::ring(-1), Theme::nsColor(0xBF5AF2));
    EXPECT_EQ(Theme::ring(10), Theme::sky);
    EXPECT_EQ(Theme::ring(-11), Theme::nsColor(0xBF5AF2));
    EXPECT_EQ(Theme::ring(5), Theme::nsColor(0xFF453A));
}

TEST(Theme, ReadsSixHexadecimalDigitsWithOrWithoutMarks) {
    EXPECT_EQ(Theme::colorFromHex(QStringLiteral("#0F2A21")), Theme::navy);
    EXPECT_EQ(Theme::colorFromHex(QStringLiteral("0f2a21")), Theme::navy);
    EXPECT_EQ(Theme::colorFromHex(QStringLiteral("##0F2A21#")), Theme::navy);
    for (const char* text : {"#0F2A2", "", "#", "0F2A2G", "0x0F2A", "+0F2A2", "0F 2A2", "#0F2A211"}) {
        EXPECT_FALSE(Theme::colorFromHex(QString::fromLatin1(text))) << text;
    }
}

TEST(Theme, WritesHexadecimalDigitsInCapitalsWithAMark) {
    EXPECT_EQ(Theme::hexString(Theme::navyDeep), QStringLiteral("#0A1D16"));
    EXPECT_EQ(Theme::hexString(QColor::fromHsv(0, 0, 255)), QStringLiteral("#FFFFFF"));
    EXPECT_FALSE(Theme::hexString(QColor()));
}

TEST(Theme, DerivedRolesComeOutAsTheOpaqueColoursOfTheLook) {
    const auto near = [](const QColor& made, unsigned hex) {
        const QColor wanted = Theme::nsColor(hex);
        return std::abs(made.red() - wanted.red()) <= 1 && std::abs(made.green() - wanted.green()) <= 1 &&
               std::abs(made.blue() - wanted.blue()) <= 1;
    };
    EXPECT_TRUE(near(Theme::card(), 0x15352A));
    EXPECT_TRUE(near(Theme::rowHover(), 0x1B4032));
    EXPECT_TRUE(near(Theme::cardHover(), 0x204A3A));
    EXPECT_TRUE(near(Theme::field(), 0x0C231B));
    EXPECT_TRUE(near(Theme::withOpacity(Theme::floating(), 1), 0x0D241C));
    EXPECT_TRUE(near(Theme::over(Theme::lit(), Theme::navy), 0x1A4C38));
    EXPECT_TRUE(near(Theme::over(Theme::chosen(), Theme::navy), 0x184533));
    EXPECT_TRUE(near(Theme::danger(), 0xB53F41));
    EXPECT_TRUE(near(Theme::dangerText(), 0xEB9392));
}

TEST(Theme, TextsCanBeReadOnEveryFloor) {
    for (const QColor& floor : {Theme::navy, Theme::navyDeep, Theme::card(), Theme::rowHover(), Theme::cardHover(),
                                Theme::field(), Theme::over(Theme::lit(), Theme::navy)}) {
        EXPECT_GE(contrast(Theme::sand, floor), 4.5);
        EXPECT_GE(contrast(Theme::muted, floor), 4.5);
        EXPECT_GE(contrast(Theme::sky, floor), 4.5);
        EXPECT_GE(contrast(Theme::gold, floor), 4.5);
    }
    for (const QColor& floor : {Theme::navy, Theme::card()}) {
        EXPECT_GE(contrast(Theme::dangerText(), floor), 4.5);
    }
    EXPECT_GE(contrast(Theme::navyDeep, Theme::brand), 4.5);
    EXPECT_GE(contrast(Theme::nsColor(0xFFFFFF), Theme::danger()), 4.5);
    EXPECT_GE(contrast(Theme::disabledText(), Theme::navy), 2.5);
}

TEST(Theme, TextsOnFloatingSurfacesCanBeReadWhateverIsBehindThem) {
    for (const QColor& behind : {Theme::nsColor(0xFFFFFF), Theme::nsColor(0x000000)}) {
        const QColor floor = Theme::over(Theme::floating(), behind);
        for (const QColor& ink : {Theme::sand, Theme::muted, Theme::sky, Theme::gold}) {
            EXPECT_GE(contrast(ink, floor), 4.5);
        }
        EXPECT_GE(contrast(Theme::sky, Theme::over(Theme::lit(), floor)), 4.5);
        EXPECT_GE(contrast(Theme::rec, floor), 3) << "the recording dot, which is no text";
    }
}

TEST(Theme, WordsOnButtonsCanBeReadInEveryState) {
    const QColor lightened = Theme::over(Theme::nsColor(0xFFFFFF, 0.08), Theme::brand);
    const QColor darkened = Theme::over(Theme::withOpacity(Theme::navyDeep, 0.12), Theme::brand);
    for (const QColor& end : {Theme::brand, Theme::skyBright, lightened, darkened}) {
        EXPECT_GE(contrast(Theme::navyDeep, end), 4.5);
    }
    for (const double share : {0.78, 0.88, 0.66}) { // of the danger button at rest, under the pointer, pressed
        EXPECT_GE(contrast(Theme::nsColor(0xFFFFFF), Theme::mix(Theme::rec, share, Theme::navyDeep)), 4.5);
    }
    for (const QColor& floor : {Theme::sand, Theme::mix(Theme::navyDeep, 0.1, Theme::sand)}) {
        EXPECT_GE(contrast(Theme::navyDeep, floor), 4.5) << "of what ends a recording";
        EXPECT_GE(contrast(Theme::navy, floor), 4.5) << "of tooltips";
    }
    EXPECT_GE(contrast(Theme::sand, Theme::over(Theme::selection(), Theme::field())), 4.5) << "selected text";
}

TEST(Theme, OutlinesOfWhatIsChosenAndFocusedStandOut) {
    for (const QColor& floor : {Theme::navy, Theme::card()}) {
        EXPECT_GE(contrast(Theme::skyBright, floor), 3) << "focus";
        EXPECT_GE(contrast(Theme::over(Theme::chosenOutline(), floor), floor), 3);
    }
}

TEST(Theme, HeadlinesAreBoldAndOfTheirSize) {
    EXPECT_EQ(Theme::headline(26).pixelSize(), 26);
    EXPECT_EQ(Theme::headline(26).weight(), QFont::Bold);
}

} // namespace
} // namespace velmo
