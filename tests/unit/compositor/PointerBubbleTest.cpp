#include "compositor/PointerBubble.h"

#include <QImage>
#include <QPainter>
#include <QTransform>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace velmo {
namespace {

using std::numbers::pi;

constexpr int kSide = 420;
constexpr Point kMiddle{kSide / 2.0, kSide / 2.0};
constexpr double kRadius = 100;
// With sin((age - 0.28) * 5) = 0 the breathing is still and the bubble has exactly its radius.
const double kStillAge = 0.28 + pi / 5 * 2;

const std::vector<Color> kRed = {{1, 0, 0, 1}};
const std::vector<Color> kThree = {{1, 0, 0, 1}, {0, 1, 0, 1}, {0, 0, 1, 1}};

QImage drawn(double age, const std::vector<Color>& colors, double radius = kRadius) {
    QImage image(kSide, kSide, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    PointerBubble::draw(painter, kMiddle, radius, age, colors);
    painter.end();
    return image;
}

/// `angle` counter-clockwise from the right, as seen.
QColor at(const QImage& image, double distance, double angle = 0) {
    return image.pixelColor(static_cast<int>(kMiddle.x + distance * std::cos(angle)),
                            static_cast<int>(kMiddle.y - distance * std::sin(angle)));
}

bool isBlank(const QImage& image) {
    QImage blank(image.size(), image.format());
    blank.fill(Qt::transparent);
    return image == blank;
}

/// How far from the middle the picture reaches, to the right.
int reach(const QImage& image) {
    for (int x = kSide - 1; x >= 0; --x) {
        if (image.pixelColor(x, kSide / 2).alpha() > 0) {
            return x - kSide / 2;
        }
    }
    return 0;
}

TEST(PointerBubble, IsVisibleFromItsBeginningUntilItHasVanished) {
    EXPECT_TRUE(PointerBubble::isVisible(0));
    EXPECT_TRUE(PointerBubble::isVisible(3.399));
    EXPECT_FALSE(PointerBubble::isVisible(3.4));
    EXPECT_FALSE(PointerBubble::isVisible(-0.001));
    EXPECT_FALSE(PointerBubble::isVisible(std::nan("")));
    EXPECT_EQ(PointerBubble::duration, 3.0);
    EXPECT_EQ(PointerBubble::radiusFraction, 0.034);
}

TEST(PointerBubble, BeginsInvisible) {
    EXPECT_TRUE(isBlank(drawn(0, kThree)));
    EXPECT_TRUE(isBlank(drawn(-1, kThree)));
    EXPECT_FALSE(isBlank(drawn(0.05, kThree)));
}

TEST(PointerBubble, IsGoneAtItsEnd) {
    EXPECT_FALSE(isBlank(drawn(3.35, kThree)));
    EXPECT_TRUE(isBlank(drawn(3.4, kThree)));
    EXPECT_TRUE(isBlank(drawn(60, kThree)));
}

TEST(PointerBubble, PaintsNothingWithoutColours) {
    for (const double age : {0.1, 1.0, 3.2}) {
        EXPECT_TRUE(isBlank(drawn(age, {})));
    }
}

TEST(PointerBubble, LeavesThePainterAsItWas) {
    QImage image(kSide, kSide, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    painter.setPen(QPen(Qt::green, 7));
    painter.setBrush(Qt::blue);
    PointerBubble::draw(painter, kMiddle, kRadius, 1, kThree);
    EXPECT_EQ(painter.pen(), QPen(Qt::green, 7));
    EXPECT_EQ(painter.brush(), QBrush(Qt::blue));
    EXPECT_FALSE(painter.testRenderHint(QPainter::Antialiasing));
}

TEST(PointerBubble, ASingleColourRunsAllRoundTheRim) {
    const QImage image = drawn(kStillAge, kRed);
    for (int i = 0; i < 360; i += 3) {
        const QColor rim = at(image, kRadius - 4.5, i * pi / 180);
        EXPECT_EQ(rim.alpha(), 255) << i;
        EXPECT_EQ(rim.red(), 255) << i;
        EXPECT_LE(rim.green(), 2) << i;
    }
}

TEST(PointerBubble, TheBodyIsWhiteAndThenTheFirstColourEachAtATenth) {
    const QColor body = at(drawn(kStillAge, kRed), 20);
    EXPECT_NEAR(body.alphaF(), 1 - 0.9 * 0.9, 0.01);
    // white 0.1 under red 0.1: premultiplied red 0.19, green 0.09
    EXPECT_NEAR(body.redF() * body.alphaF(), 0.19, 0.01);
    EXPECT_NEAR(body.greenF() * body.alphaF(), 0.09, 0.01);
}

TEST(PointerBubble, TheHaloFadesBetweenItsTwoRadii) {
    const QImage image = drawn(kStillAge, kRed);
    const QColor between = at(image, 135); // 0.75 of 110 from the inner radius is 142.5
    EXPECT_NEAR(between.alphaF(), 0.28 * (170 - 135) / 110.0, 0.012);
    EXPECT_NEAR(between.redF(), 1, 0.05);
    EXPECT_NEAR(between.greenF(), 0, 0.05);
    EXPECT_EQ(at(image, 171).alpha(), 0);
    EXPECT_NEAR(at(image, 80).alphaF(), 1 - 0.81 * (1 - 0.28 * (170 - 80) / 110.0), 0.012);
}

TEST(PointerBubble, TheInnerLineIsWhiteAndInsetByTheRim) {
    const QImage image = drawn(kStillAge, {{0, 0, 0, 1}});
    const double rim = 9;
    const QColor line = at(image, kRadius - rim - 0.4, pi / 4);
    const QColor inside = at(image, kRadius - rim - 4, pi / 4);
    EXPECT_GT(line.lightness(), inside.lightness() + 60);
    EXPECT_EQ(inside, at(image, kRadius - rim - 4, pi / 3));
}

TEST(PointerBubble, TheColoursRunRoundTheRimFromItsTurningBase) {
    for (const double age : {kStillAge, kStillAge + 0.3}) {
        const QImage image = drawn(age, kThree);
        const double base = age * 2.2;
        const double rim = (kRadius * (1 + std::sin((age - 0.28) * 5) * 0.035)) * 0.955;
        const auto rimAt = [&](double turn) { return at(image, rim, base + turn * 2 * pi); };
        EXPECT_GT(rimAt(0.02).red(), 220) << age;
        EXPECT_GT(rimAt(1 / 3.0 + 0.02).green(), 220) << age;
        EXPECT_GT(rimAt(2 / 3.0 + 0.02).blue(), 220) << age;
        const QColor mixed = rimAt(0.5 / 3 + 0.005); // half way from red to green, in sRGB
        EXPECT_NEAR(mixed.red(), 128, 14) << age;
        EXPECT_NEAR(mixed.green(), 128, 14) << age;
        EXPECT_LE(mixed.blue(), 4) << age;
        const QColor closing = rimAt(2.5 / 3 + 0.005); // from blue back to red
        EXPECT_NEAR(closing.red(), 128, 14) << age;
        EXPECT_NEAR(closing.blue(), 128, 14) << age;
    }
}

TEST(PointerBubble, ArrivesWithAnOvershootAndBreathesAfterwards) {
    const double halo = 1.7;
    // p = 0.5: 1.12 times 0.45 * 0.875 + 0.55
    EXPECT_NEAR(reach(drawn(0.14, kRed)), kRadius * halo * 1.12 * (0.875 * 0.45 + 0.55), 3);
    EXPECT_NEAR(reach(drawn(0.28 + pi / 10, kRed)), kRadius * halo * 1.035, 3);
    EXPECT_NEAR(reach(drawn(0.28 + 3 * pi / 10, kRed)), kRadius * halo * 0.965, 3);
}

TEST(PointerBubble, TheArrivalFadesInFasterThanItGrows) {
    // p = 0.25: alpha 0.45
    const double scale = (1 + std::sin(0.25 * pi) * 0.12) * ((1 - std::pow(0.75, 3)) * 0.45 + 0.55);
    const QColor rim = at(drawn(0.07, kRed), kRadius * scale * 0.955, 1.0);
    const double under = 1 - (1 - 0.28 * 0.45 * (1.7 - 0.955) / 1.1) * (1 - 0.045) * (1 - 0.045);
    EXPECT_NEAR(rim.alphaF(), 1 - (1 - under) * (1 - 0.45), 0.05);
}

TEST(PointerBubble, GrowsWhileItVanishes) {
    const double age = 3.2;
    const double scale = (1 + std::sin((age - 0.28) * 5) * 0.035) * 1.075;
    const QImage image = drawn(age, kRed);
    EXPECT_NEAR(reach(image), kRadius * 1.7 * scale, 4);
    EXPECT_NEAR(at(image, 20).alphaF(), 1 - 0.95 * 0.95, 0.01);
}

TEST(PointerBubble, ASmallBubbleKeepsARimOfTwo) {
    const QImage image = drawn(kStillAge, kRed, 10);
    EXPECT_GT(at(image, 9).alpha(), 200); // pixels from 9 to 10 and 8 to 9
    EXPECT_GT(at(image, 8).alpha(), 200);
    EXPECT_LT(at(image, 6).alpha(), 120);
}

TEST(PointerBubble, PaletteColoursAreBytesOver255) {
    const std::uint32_t hexes[] = {0x000000, 0xff8033};
    const std::vector<Color> colors = PointerBubble::paletteColors(hexes);
    ASSERT_EQ(colors.size(), 2u);
    EXPECT_EQ(colors[0], (Color{0, 0, 0, 1}));
    EXPECT_EQ(colors[1], (Color{1, 128 / 255.0, 51 / 255.0, 1}));
    EXPECT_TRUE(PointerBubble::paletteColors({}).empty());
}

} // namespace
} // namespace velmo
