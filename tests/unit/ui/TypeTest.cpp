#include "ui/Type.h"

#include "support/NothingCut.h"
#include "ui/Button.h"
#include "ui/Theme.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

TEST(TypeScale, TheFontsThatDesktopsChooseByThemselvesLeaveTextAsItWasDesigned) {
    for (const double points : {9.0, 10.0, 11.0}) {
        EXPECT_EQ(Type::scaleFor(points, 96), 1) << points;
    }
    EXPECT_EQ(Type::scaleFor(-1, 96), 1) << "a font whose size is told in pixels";
    EXPECT_EQ(Type::scaleFor(6, 72), 1);
}

TEST(TypeScale, ALargerFontAndMoreDotsMakeTextLargerUpToTwice) {
    EXPECT_DOUBLE_EQ(Type::scaleFor(10, 120), 1.25);
    EXPECT_DOUBLE_EQ(Type::scaleFor(16.5, 96), 1.5);
    EXPECT_DOUBLE_EQ(Type::scaleFor(13.75, 115.2), 1.5);
    EXPECT_EQ(Type::scaleFor(40, 96), 2);
}

TEST(TypeScale, AllTextGrowsButTheNumberOfTheCountdown) {
    const test::LargerText larger(1.5);
    EXPECT_EQ(Type::font(TextStyle::caption).pixelSize(), 18);
    EXPECT_EQ(Type::lineHeight(TextStyle::body), 27);
    EXPECT_EQ(Theme::headline(26).pixelSize(), 39);
    EXPECT_EQ(Type::font(TextStyle::countdown).pixelSize(), 108);
}

TEST(TypeScale, ControlsGrowWithTheirTextOnceItNeedsMoreRoom) {
    const int usual = Button(ButtonStyle::ghost, QStringLiteral("Guardar")).sizeHint().height();
    for (const auto& [factor, more] : {std::pair{1.25, 0}, std::pair{1.5, 9}, std::pair{2.0, 18}}) {
        const test::LargerText larger(factor);
        EXPECT_EQ(Button(ButtonStyle::ghost, QStringLiteral("Guardar")).sizeHint().height(), usual + more) << factor;
    }
}

} // namespace
} // namespace velmo
