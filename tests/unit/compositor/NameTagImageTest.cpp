#include "compositor/NameTagImage.h"

#include <QColor>
#include <QImage>
#include <cmath>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace velmo {
namespace {

constexpr double kNoLimit = 10'000;

/// As far as a pixel's colour is its own: straight, with alpha.
QColor colorAt(const NameTag::Image& tag, double x, double y) {
    return tag.pixels.pixelColor(static_cast<int>(x), static_cast<int>(y));
}

void expectNear(const QColor& actual, const QColor& expected, int tolerance) {
    EXPECT_NEAR(actual.red(), expected.red(), tolerance);
    EXPECT_NEAR(actual.green(), expected.green(), tolerance);
    EXPECT_NEAR(actual.blue(), expected.blue(), tolerance);
    EXPECT_NEAR(actual.alpha(), expected.alpha(), tolerance);
}

/// Rows in which something between `left` and the right margin is brighter than the pill.
std::vector<int> rowsWithText(const NameTag::Image& tag, double left) {
    std::vector<int> rows;
    for (int y = 3; y < tag.pixels.height() - 3; ++y) {
        for (int x = static_cast<int>(left); x < tag.pixels.width() - 12; ++x) {
            if (tag.pixels.pixelColor(x, y).green() > 140) {
                rows.push_back(y);
                break;
            }
        }
    }
    return rows;
}

TEST(NameTagImage, AnEmptyRoleGivesAPillOfOneLineWithTheDotInItsMiddle) {
    const auto one = NameTag::image("Ana Martínez", "", 40, kNoLimit, 1);
    const auto two = NameTag::image("Ana Martínez", "Física", 40, kNoLimit, 1);
    ASSERT_TRUE(one && two);
    EXPECT_LT(one->size.height(), two->size.height());
    const double dot = 40 * 0.42;
    EXPECT_GT(one->size.height(), 40 + 2 * dot);
    EXPECT_LT(one->size.height(), 40 * 1.5 + 2 * dot);
    const QColor green = QColor::fromRgbF(0.27F, 0.83F, 0.58F);
    for (const auto& tag : {*one, *two}) {
        const double left = 40 * 0.9;
        const double middle = tag.size.height() / 2;
        expectNear(colorAt(tag, left + dot / 2, middle), green, 2);
        expectNear(colorAt(tag, left + dot / 2, middle - dot / 2 + 2), green, 2);
        expectNear(colorAt(tag, left + dot / 2, middle + dot / 2 - 2), green, 2);
        EXPECT_LT(colorAt(tag, left + dot / 2, middle - dot / 2 - 2).green(), 60);
        EXPECT_LT(colorAt(tag, left + dot / 2, middle + dot / 2 + 2).green(), 60);
    }
}

TEST(NameTagImage, TheRoleStandsUnderTheName) {
    const double left = 40 * (0.9 + 0.42 + 0.5) - 2;
    const auto tag = NameTag::image("Hannah", "HHHH", 40, kNoLimit, 1);
    ASSERT_TRUE(tag);
    const std::vector<int> rows = rowsWithText(*tag, left);
    int gaps = 0;
    for (std::size_t i = 1; i < rows.size(); ++i) {
        gaps += rows[i] > rows[i - 1] + 1 ? 1 : 0;
    }
    EXPECT_EQ(gaps, 1);
    const auto alone = NameTag::image("Hannah", "", 40, kNoLimit, 1);
    const double middle = (rowsWithText(*alone, left).front() + rowsWithText(*alone, left).back()) / 2.0;
    EXPECT_NEAR(middle, alone->size.height() / 2, 40 * 0.1);
}

TEST(NameTagImage, HasThePillsBackgroundAndClearCorners) {
    const auto tag = NameTag::image("Ana", "Física", 40, kNoLimit, 1);
    ASSERT_TRUE(tag);
    EXPECT_EQ(tag->pixels.format(), QImage::Format_ARGB32_Premultiplied);
    EXPECT_EQ(tag->pixels.pixel(0, 0), 0u);
    EXPECT_EQ(tag->pixels.pixel(tag->pixels.width() - 1, tag->pixels.height() - 1), 0u);
    expectNear(colorAt(*tag, 40 * 0.9 + 40 * 0.42 + 6, tag->size.height() / 2),
               QColor::fromRgbF(0.04F, 0.13F, 0.1F, 0.88F), 3);
    const QColor rim = colorAt(*tag, tag->size.width() / 2, 0);
    EXPECT_GT(rim.green(), 80); // the outline over the background
    EXPECT_GT(rim.alpha(), 224);
}

TEST(NameTagImage, ANameWiderThanItsRoomIsCutAndThePillStaysWithinIt) {
    const QString name = "Maximiliana Guadalupe Fernández de la Concepción y Arrizabalaga";
    const auto whole = NameTag::image(name, "Profesora", 17, kNoLimit, 1);
    const auto cut = NameTag::image(name, "Profesora", 17, 200, 1);
    ASSERT_TRUE(whole && cut);
    EXPECT_GT(whole->size.width(), 400);
    EXPECT_EQ(cut->size.width(), 200);
    EXPECT_EQ(cut->size.height(), whole->size.height());
    const int margin = static_cast<int>(17 * 0.9); // nothing of the text reaches into it
    for (int y = 4; y < cut->pixels.height() - 4; ++y) {
        EXPECT_LT(cut->pixels.pixelColor(200 - margin + 2, y).green(), 120) << y;
    }
}

TEST(NameTagImage, ARoleWiderThanTheNameSetsTheWidth) {
    const auto narrow = NameTag::image("Ana", "", 20, kNoLimit, 1);
    const auto wide = NameTag::image("Ana", "Catedrática de Historia Contemporánea", 20, kNoLimit, 1);
    ASSERT_TRUE(narrow && wide);
    EXPECT_GT(wide->size.width(), narrow->size.width() + 150);
}

TEST(NameTagImage, WithoutRoomForTheTextThereIsNone) {
    EXPECT_FALSE(NameTag::image("Ana Martínez", "", 17, 30, 1));
    const double edges = 17 * (2 * 0.9 + 0.42 + 0.5);
    EXPECT_FALSE(NameTag::image("Ana Martínez", "", 17, edges + 10, 1));
    EXPECT_TRUE(NameTag::image("Ana Martínez", "", 17, edges + 10.5, 1));
    EXPECT_FALSE(NameTag::image("", "", 17, kNoLimit, 1));
    EXPECT_FALSE(NameTag::image("Ana Martínez", "", 17, -5, 1));
}

TEST(NameTagImage, ABitmapThatCannotBeMadeIsAbsent) {
    EXPECT_FALSE(NameTag::image("Ana Martínez", "", 0, 300, 1));
    EXPECT_FALSE(NameTag::image("Ana Martínez", "", 17, 300, 0));
    EXPECT_FALSE(NameTag::image("Ana Martínez", "", 17, std::nan(""), 0));
    EXPECT_FALSE(NameTag::image("Ana Martínez", "", 17, 300, 1e6));
}

TEST(NameTagImage, TheSameTagAtTwiceTheScaleHasTwiceThePixels) {
    const auto one = NameTag::image("Ana Martínez", "Física", 17, 220, 1);
    const auto two = NameTag::image("Ana Martínez", "Física", 17, 220, 2);
    ASSERT_TRUE(one && two);
    EXPECT_EQ(two->size, one->size);
    EXPECT_EQ(one->pixels.size(), one->size.toSize());
    EXPECT_EQ(two->pixels.size(), (one->size * 2).toSize());
    // The same picture: the same mean brightness.
    const auto mean = [](const QImage& image) {
        const QImage pixel = image.scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        return qGreen(pixel.pixel(0, 0));
    };
    EXPECT_NEAR(mean(two->pixels), mean(one->pixels), 6);
}

TEST(NameTagImage, LongForeignAndPictorialNamesGiveAPill) {
    const QString names[] = {QString(300, QChar('W')), QStringLiteral("👩‍🏫🎓✨ Ana 👩‍🏫"),
                             QStringLiteral("مريم العذراء الطويلة جدا"), QStringLiteral("王小明老師"),
                             QStringLiteral("Ana\tSoto")};
    for (const QString& name : names) {
        const auto tag = NameTag::image(name, name, 17, 180, 1);
        ASSERT_TRUE(tag) << name.toStdString();
        EXPECT_LE(tag->size.width(), 180);
    }
}

TEST(NameTagImage, IsTheSameOnAnyThread) {
    const auto here = NameTag::image("Ana Martínez", "Física", 24, 351.6, 1);
    ASSERT_TRUE(here);
    std::vector<std::thread> threads;
    std::vector<QImage> there(4);
    for (QImage& image : there) {
        threads.emplace_back([&image] {
            for (int i = 0; i < 20; ++i) {
                image = NameTag::image("Ana Martínez", "Física", 24, 351.6, 1)->pixels;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const QImage& image : there) {
        EXPECT_EQ(image, here->pixels);
    }
}

} // namespace
} // namespace velmo
