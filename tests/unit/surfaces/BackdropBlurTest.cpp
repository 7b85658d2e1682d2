#include "surfaces/BackdropBlur.h"

#include <gtest/gtest.h>

#include <cmath>

namespace velmo {
namespace {

QImage flat(QSize size, QColor color) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

TEST(BackdropBlur, MakesAPicture640WideInTheSameRatio) {
    BackdropBlur blur;
    EXPECT_EQ(blur.render(flat({1920, 1080}, Qt::red)).size(), QSize(640, 360));
    EXPECT_EQ(blur.render(flat({320, 320}, Qt::red)).size(), QSize(640, 640));
    EXPECT_EQ(blur.render(flat({640, 268}, Qt::red)).size(), QSize(640, 268));
}

TEST(BackdropBlur, OfNothingIsNothing) {
    BackdropBlur blur;
    EXPECT_TRUE(blur.render({}).isNull());
}

TEST(BackdropBlur, LeavesAFlatGreyFlatUpToItsEdgesAndALittleDarker) {
    BackdropBlur blur;
    const QImage result = blur.render(flat({640, 360}, QColor(128, 128, 128)));
    for (const QPoint at : {QPoint(0, 0), QPoint(639, 0), QPoint(320, 180), QPoint(0, 359), QPoint(639, 359)}) {
        EXPECT_EQ(result.pixelColor(at), QColor(118, 118, 118)); // 0.04 of 255 is 10.2
    }
}

TEST(BackdropBlur, DrawsColoursApartByATenth) {
    BackdropBlur blur;
    const QColor result = blur.render(flat({640, 360}, QColor(200, 100, 100))).pixelColor(300, 200);
    const double grey = 100 + 100 * 0.2126;
    EXPECT_NEAR(result.red(), grey + (200 - grey) * 1.1 - 10.2, 1);
    EXPECT_NEAR(result.green(), grey + (100 - grey) * 1.1 - 10.2, 1);
}

TEST(BackdropBlur, BlackStaysBlackAndWhiteStaysInRange) {
    BackdropBlur blur;
    EXPECT_EQ(blur.render(flat({640, 100}, Qt::black)).pixelColor(9, 9), QColor(0, 0, 0));
    EXPECT_EQ(blur.render(flat({640, 100}, Qt::white)).pixelColor(9, 9), QColor(245, 245, 245));
}

TEST(BackdropBlur, SpreadsALineByASigmaOf9InBothDirections) {
    for (const bool upright : {true, false}) {
        QImage image = flat({640, 400}, QColor(60, 60, 60));
        for (int i = 0; i < (upright ? 400 : 640); ++i) {
            for (int k = -4; k <= 4; ++k) {
                image.setPixelColor(upright ? 300 + k : i, upright ? i : 200 + k, Qt::white);
            }
        }
        BackdropBlur blur;
        const QImage result = blur.render(image);
        double sum = 0;
        double squares = 0;
        for (int away = -40; away <= 40; ++away) {
            const int value = result.pixelColor(upright ? 300 + away : 300, upright ? 200 : 200 + away).red() - 50;
            sum += value;
            squares += value * away * away;
        }
        const double line = (9 * 9 - 1) / 12.0; // the line's own variance
        EXPECT_NEAR(std::sqrt(squares / sum - line), 9, 0.3);
    }
}

TEST(BackdropBlur, GivesTheSameAfterAPictureOfAnotherSize) {
    QImage image = flat({640, 360}, Qt::darkGreen);
    for (int i = 0; i < 300; ++i) {
        image.setPixelColor(i * 2, i, Qt::yellow);
    }
    BackdropBlur fresh;
    BackdropBlur used;
    used.warmUp();
    used.render(flat({640, 640}, Qt::white));
    EXPECT_EQ(used.render(image), fresh.render(image));
}

} // namespace
} // namespace velmo
