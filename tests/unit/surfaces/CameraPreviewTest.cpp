#include "surfaces/CameraPreview.h"

#include "support/CameraPictures.h"
#include "surfaces/internal/PictureFill.h"

#include <QCoreApplication>

#include <gmock/gmock.h>

#include <hwy/targets.h>

#include <cmath>

namespace velmo {
namespace {

using test::cameraPicture;

int difference(QRgb a, QRgb b) {
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
}

QImage filled(const QImage& source, QSize to, bool mirrored = false) {
    QImage image(to, QImage::Format_RGB32);
    PictureFill({source.size(), to, mirrored}).fill(*cameraPicture(source), image);
    return image;
}

/// Grey, so that the coarser chroma has no part in it.
QImage greyNoise(QSize size) {
    QImage image(size, QImage::Format_RGB32);
    std::uint32_t state = 1;
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            state = state * 1664525 + 1013904223;
            const int value = static_cast<int>(state >> 24);
            image.setPixel(x, y, qRgb(value, value, value));
        }
    }
    return image;
}

/// The mean of the area [left, left + step) x [top, top + step).
double mean(const QImage& image, double left, double top, double step) {
    double sum = 0;
    for (int y = static_cast<int>(std::floor(top)); y < std::min(top + step, image.height() * 1.0); ++y) {
        for (int x = static_cast<int>(std::floor(left)); x < std::min(left + step, image.width() * 1.0); ++x) {
            const double width = std::min(left + step, x + 1.0) - std::max(left, x * 1.0);
            const double height = std::min(top + step, y + 1.0) - std::max(top, y * 1.0);
            sum += width * height * qRed(image.pixel(x, y));
        }
    }
    return sum / (step * step);
}

TEST(PictureFill, EachPixelIsTheMeanOfTheAreaThatItCovers) {
    const QImage source = greyNoise({1280, 720});
    const QImage result = filled(source, {220, 220});
    const double step = 720.0 / 220;
    for (int y = 0; y < 220; y += 3) {
        for (int x = 0; x < 220; x += 3) {
            ASSERT_NEAR(qRed(result.pixel(x, y)), mean(source, 280 + x * step, y * step, step), 2.5) << x << "," << y;
        }
    }
}

TEST(PictureFill, TheMiddleIsKeptAndTheRestIsCutOff) {
    QImage source(400, 100, QImage::Format_RGB32);
    source.fill(Qt::red);
    QPainter(&source).fillRect(150, 0, 100, 100, Qt::green);
    const QImage result = filled(source, {50, 50});
    EXPECT_LE(difference(result.pixel(1, 25), qRgb(0, 255, 0)), 3);
    EXPECT_LE(difference(result.pixel(48, 25), qRgb(0, 255, 0)), 3);
    QImage tall(100, 400, QImage::Format_RGB32);
    tall.fill(Qt::red);
    QPainter(&tall).fillRect(0, 150, 100, 100, Qt::green);
    EXPECT_LE(difference(filled(tall, {50, 50}).pixel(25, 1), qRgb(0, 255, 0)), 3);
}

TEST(PictureFill, AMirroredPictureIsTheSameTurnedRound) {
    const QImage source = test::unevenPicture({640, 360});
    const QImage plain = filled(source, {151, 117});
    EXPECT_EQ(filled(source, {151, 117}, true), plain.mirrored(true, false));
    EXPECT_NE(plain, plain.mirrored(true, false));
}

TEST(PictureFill, FlatColoursStayWhatTheyWereAtEverySize) {
    for (const QColor color : {QColor(200, 40, 90), QColor(0, 0, 0), QColor(255, 255, 255), QColor(20, 180, 240)}) {
        QImage source(322, 181, QImage::Format_RGB32);
        source.fill(color);
        for (const QSize size : {QSize(1, 1), QSize(33, 17), QSize(322, 181), QSize(640, 640), QSize(1000, 3)}) {
            const QImage result = filled(source, size);
            EXPECT_LE(difference(result.pixel(0, 0), color.rgb()), 3) << size.width();
            EXPECT_LE(difference(result.pixel(size.width() - 1, size.height() - 1), color.rgb()), 3) << size.width();
            EXPECT_EQ(qAlpha(result.pixel(size.width() / 2, size.height() / 2)), 255);
        }
    }
}

TEST(PictureFill, AnEnlargedPictureGoesSmoothlyFromPixelToPixel) {
    QImage source(4, 2, QImage::Format_RGB32);
    for (int x = 0; x < 4; ++x) {
        source.setPixel(x, 0, qRgb(80 * x, 80 * x, 80 * x));
        source.setPixel(x, 1, qRgb(80 * x, 80 * x, 80 * x));
    }
    const QImage result = filled(source, {40, 20});
    for (int x = 1; x < 40; ++x) {
        const int step = qRed(result.pixel(x, 10)) - qRed(result.pixel(x - 1, 10));
        EXPECT_GE(step, 0);
        EXPECT_LE(step, 9);
    }
}

TEST(PictureFill, GivesTheSamePixelsOnEveryInstructionSet) {
    const QImage source = test::unevenPicture({641, 359});
    const QImage best = filled(source, {203, 117}, true);
    hwy::SetSupportedTargetsForTest(HWY_SCALAR);
    const QImage plain = filled(source, {203, 117}, true);
    hwy::SetSupportedTargetsForTest(0);
    EXPECT_EQ(plain, best);
}

TEST(PictureFill, TinyPicturesAreNoProblem) {
    for (const QSize size : {QSize(1, 1), QSize(2, 1), QSize(1, 3)}) {
        QImage source(size, QImage::Format_RGB32);
        source.fill(Qt::blue);
        EXPECT_LE(difference(filled(source, {30, 20}).pixel(29, 19), qRgb(0, 0, 255)), 3);
    }
}

TEST(CameraPreview, WithoutAPictureItIsDarkGrey) {
    CameraFeed feed;
    CameraPreview preview(feed);
    EXPECT_EQ(preview.image({4, 4}).pixel(3, 3), qRgb(20, 20, 20));
    feed.publish(test::flatCameraPicture({64, 36}, Qt::white));
    EXPECT_LE(difference(preview.image({4, 4}).pixel(0, 0), qRgb(255, 255, 255)), 2);
    feed.publish(nullptr);
    EXPECT_EQ(preview.image({4, 4}).pixel(0, 0), qRgb(20, 20, 20));
}

TEST(CameraPreview, AnImageIsMadeOnceForEachPictureAndSize) {
    CameraFeed feed;
    CameraPreview preview(feed);
    feed.publish(test::flatCameraPicture({64, 36}, Qt::white));
    const qint64 first = preview.image({20, 20}).cacheKey();
    EXPECT_EQ(preview.image({20, 20}).cacheKey(), first);
    feed.publish(test::flatCameraPicture({64, 36}, Qt::black));
    EXPECT_NE(preview.image({20, 20}).cacheKey(), first);
}

TEST(CameraPreview, TurningTheMirrorTellsAndTurnsThePicture) {
    CameraFeed feed;
    CameraPreview preview(feed);
    feed.publish(cameraPicture(test::unevenPicture({160, 90})));
    QCoreApplication::sendPostedEvents();
    int changes = 0;
    QObject::connect(&preview, &CameraPreview::changed, [&] { ++changes; });
    const QImage before = preview.image({50, 50}).copy();
    preview.setMirrored(true);
    preview.setMirrored(true);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(preview.image({50, 50}), before.mirrored(true, false));
}

TEST(CameraPreview, ACameraThatChangesItsSizeIsFollowed) {
    CameraFeed feed;
    CameraPreview preview(feed);
    for (const QSize size : {QSize(1280, 720), QSize(640, 480), QSize(160, 120)}) {
        feed.publish(test::flatCameraPicture(size, Qt::green));
        EXPECT_LE(difference(preview.image({90, 70}).pixel(89, 69), qRgb(0, 255, 0)), 3);
    }
}

} // namespace
} // namespace velmo
