#include "surfaces/internal/BubbleCanvas.h"

#include "support/AllocationCount.h"

#include <gmock/gmock.h>

#include <cmath>

namespace velmo {
namespace {

constexpr QSize kPanel(264, 264);
constexpr QRgb kPicture = qRgb(40, 120, 200);

QImage flat(QSize size, QRgb color = kPicture) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

QImage painted(const BubbleLook& look, QSize panel, double scale, double seconds = 0, double level = 0) {
    BubbleCanvas canvas;
    canvas.setPlace(BubbleOutline::of(panel, look.shape, look.corner), panel * scale, scale);
    canvas.paint(BubbleCanvas::Part::all, RingMotion::at(look, level, seconds), flat(canvas.pictureSize()));
    return canvas.image().copy();
}

std::vector<BubbleLook> allLooks() {
    std::vector<BubbleLook> looks;
    for (const BubbleShape shape : allCases<BubbleShape>()) {
        for (const RingStyle style : allCases<RingStyle>()) {
            BubbleLook look;
            look.shape = shape;
            look.style = style;
            look.weight = looks.size() % 2 == 0 ? 1.8 : 0.3;
            look.corner = looks.size() % 3 == 0 ? 0 : 0.35;
            looks.push_back(look);
        }
    }
    return looks;
}

TEST(BubbleOutline, CardsAreRoundByTheFractionOfTheirShorterSideButNotMoreThanHalf) {
    const QSizeF panel(337, 264);
    EXPECT_DOUBLE_EQ(BubbleOutline::of(panel, BubbleShape::rounded, 0.2).radius, 44);
    EXPECT_DOUBLE_EQ(BubbleOutline::of(panel, BubbleShape::rounded, 0.9).radius, 110);
    EXPECT_DOUBLE_EQ(BubbleOutline::of(panel, BubbleShape::rounded, -1).radius, 0);
}

TEST(BubbleOutline, DistancesAreThoseFromTheEdge) {
    const BubbleOutline circle = BubbleOutline::of(kPanel, BubbleShape::circle, 0.2);
    EXPECT_NEAR(circle.distance({132, 132}), -110, 1e-9);
    EXPECT_NEAR(circle.distance({132, 22}), 0, 1e-9);
    EXPECT_NEAR(circle.distance({252, 132}), 10, 1e-9);
    const BubbleOutline card = BubbleOutline::of(kPanel, BubbleShape::rounded, 0.1);
    EXPECT_NEAR(card.distance({132, 12}), 10, 1e-9);
    EXPECT_NEAR(card.distance({132, 32}), -10, 1e-9);
    EXPECT_NEAR(card.distance({22 + 22, 22 + 22}), -22, 1e-9);
    EXPECT_NEAR(card.distance({22, 22}), 22 * std::sqrt(2.0) - 22, 1e-9);
    const BubbleOutline egg = BubbleOutline::of({364, 264}, BubbleShape::circle, 0.2);
    EXPECT_NEAR(egg.distance({22, 132}), 0, 1e-9);
    EXPECT_NEAR(egg.distance({182, 242}), 0, 1e-9);
    EXPECT_LT(egg.distance({182, 132}), 0);
}

TEST(BubbleCanvas, IsClearAtItsRimAndThePictureAloneInside) {
    for (const BubbleLook& look : allLooks()) {
        for (const double scale : {1.0, 1.5, 2.0}) {
            const QImage image = painted(look, kPanel, scale, 3, 1);
            for (int i = 0; i < image.width(); ++i) {
                for (const QPoint& at :
                     {QPoint(i, 0), QPoint(0, i), QPoint(i, image.height() - 1), QPoint(image.width() - 1, i)}) {
                    ASSERT_LE(qAlpha(image.pixel(at)), 1) << "the glow is not cut at the panel's edge";
                }
            }
            EXPECT_EQ(image.pixel(image.rect().center()), kPicture);
        }
    }
}

TEST(BubbleCanvas, EveryPixelIsPremultiplied) {
    for (const BubbleLook& look : allLooks()) {
        const QImage image = painted(look, {337, 264}, 1, 5.3, 0.7);
        for (int y = 0; y < image.height(); ++y) {
            const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
            for (int x = 0; x < image.width(); ++x) {
                ASSERT_LE(std::max({qRed(row[x]), qGreen(row[x]), qBlue(row[x])}), qAlpha(row[x])) << x << "," << y;
            }
        }
    }
}

TEST(BubbleCanvas, AStepOfTheRingLeavesTheSamePixelsAsPaintingAll) {
    for (const BubbleLook& look : allLooks()) {
        BubbleCanvas canvas;
        canvas.setPlace(BubbleOutline::of(kPanel, look.shape, look.corner), kPanel, 1);
        const QImage picture = flat(canvas.pictureSize());
        canvas.paint(BubbleCanvas::Part::all, RingMotion::at(look, 0, 1), picture);
        canvas.paint(BubbleCanvas::Part::edge, RingMotion::at(look, 0.8, 4.4), picture);
        EXPECT_EQ(canvas.image(), painted(look, kPanel, 1, 4.4, 0.8));
    }
}

TEST(BubbleCanvas, WhatAStepChangesLiesInTheRegionThatIsRepainted) {
    for (const BubbleLook& look : allLooks()) {
        BubbleCanvas canvas;
        canvas.setPlace(BubbleOutline::of(kPanel, look.shape, look.corner), kPanel, 1);
        canvas.paint(BubbleCanvas::Part::all, RingMotion::at(look, 0, 1), flat(canvas.pictureSize()));
        const QImage before = canvas.image().copy();
        canvas.paint(BubbleCanvas::Part::edge, RingMotion::at(look, 1, 8), flat(canvas.pictureSize()));
        for (int y = 0; y < before.height(); ++y) {
            for (int x = 0; x < before.width(); ++x) {
                if (before.pixel(x, y) != canvas.image().pixel(x, y)) {
                    ASSERT_TRUE(canvas.ringRegion().contains(QPoint(x, y))) << x << "," << y;
                }
            }
        }
        int area = 0;
        for (const QRect& part : canvas.ringRegion()) {
            area += part.width() * part.height();
        }
        EXPECT_LT(area, kPanel.width() * kPanel.height() * 0.7);
    }
}

TEST(BubbleCanvas, AFineRingHasItsColourOnTheEdgeAndIsAsWideAsItsLaw) {
    BubbleLook look;
    look.style = RingStyle::classic;
    look.ringColor = Color::fromHex(0xFF0000);
    const QImage image = painted(look, kPanel, 4, 0, 1); // 10.5 points, opaque
    const QRgb edge = image.pixel(22 * 4, image.height() / 2);
    EXPECT_EQ(edge, qRgb(255, 0, 0));
    int reds = 0;
    for (int x = 0; x < image.width() / 2; ++x) {
        reds += image.pixel(x, image.height() / 2) == qRgb(255, 0, 0) ? 1 : 0;
    }
    EXPECT_NEAR(reds / 4.0, 10.5, 0.6);
}

TEST(BubbleCanvas, TheChameleonsFirstColourIsWhereTheTurnSays) {
    BubbleLook look;
    look.weight = 1.8;
    const QImage top = painted(look, kPanel, 1, 0);
    EXPECT_EQ(top.pixel(132, 22), qRgb(0x00, 0xF0, 0xFF));
    const QImage quarter = painted(look, kPanel, 1, 1.5);
    const QRgb right = quarter.pixel(241, 132);
    EXPECT_NEAR(qRed(right), 0, 6);
    EXPECT_NEAR(qGreen(right), 0xF0, 6);
}

TEST(BubbleCanvas, AShadowThatIsNotSoftEndsNearTheBubble) {
    BubbleLook look;
    look.style = RingStyle::none;
    const int soft = qAlpha(painted(look, kPanel, 1).pixel(132, 256));
    look.softShadow = false;
    EXPECT_GT(soft, qAlpha(painted(look, kPanel, 1).pixel(132, 256)));
}

TEST(BubbleCanvas, PaintingTakesNoMemory) {
    BubbleLook look;
    BubbleCanvas canvas;
    canvas.setPlace(BubbleOutline::of(kPanel, look.shape, look.corner), kPanel, 1);
    const QImage picture = flat(canvas.pictureSize());
    canvas.paint(BubbleCanvas::Part::all, RingMotion::at(look, 0, 0), picture);
    const std::size_t before = test::allocationCount();
    for (int i = 0; i < 100; ++i) {
        canvas.paint(i % 2 == 0 ? BubbleCanvas::Part::all : BubbleCanvas::Part::edge,
                     RingMotion::at(look, i / 100.0, i / 30.0), picture);
    }
    EXPECT_EQ(test::allocationCount(), before);
}

} // namespace
} // namespace velmo
