#include "ui/Symbol.h"

#include <gtest/gtest.h>

#include <QImage>

namespace velmo {
namespace {

/// Pixels of the icon that are not clear.
int inked(const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += qAlpha(image.pixel(x, y)) > 64 ? 1 : 0;
        }
    }
    return count;
}

TEST(Symbol, EveryNameHasADrawingThatShowsSomething) {
    for (const QString& name : Symbol::names()) {
        const QImage image = Symbol::pixmap(name, 24, Qt::white).toImage();
        ASSERT_EQ(image.width(), 24) << qPrintable(name);
        EXPECT_GT(inked(image), 20) << qPrintable(name);
        EXPECT_LT(inked(image), 24 * 24) << qPrintable(name);
    }
}

TEST(Symbol, TheNamesThatTheSurfacesAskForAreThere) {
    for (const char* name : {"pause.fill",
                             "play.fill",
                             "bookmark.fill",
                             "arrow.counterclockwise",
                             "trash",
                             "mic.fill",
                             "stop.fill",
                             "display",
                             "rectangle.inset.bottomleading.filled",
                             "person.crop.square.fill",
                             "film",
                             "circle.fill",
                             "xmark",
                             "info.circle",
                             "exclamationmark.triangle",
                             "macwindow",
                             "person.crop.rectangle.fill",
                             "rectangle.righthalf.inset.filled",
                             "rectangle.lefthalf.inset.filled",
                             "pencil.tip.crop.circle",
                             "crop",
                             "crop.rotate",
                             "plus.magnifyingglass",
                             "minus.magnifyingglass",
                             "plus.viewfinder",
                             "flashlight.off.fill",
                             "flashlight.on.fill",
                             "cursorarrow.motionlines",
                             "pin.fill",
                             "arrow.uturn.backward",
                             "person.crop.circle",
                             "video.badge.plus",
                             "pencil.and.scribble",
                             "iphone",
                             "text.viewfinder",
                             "books.vertical.fill",
                             "pencil.tip",
                             "feather",
                             "signature",
                             "highlighter",
                             "wand.and.rays",
                             "rectangle",
                             "circle",
                             "arrow.up.right",
                             "line.diagonal",
                             "eraser"}) {
        EXPECT_TRUE(Symbol::exists(QString::fromLatin1(name))) << name;
    }
    EXPECT_FALSE(Symbol::exists(QStringLiteral("no.such.symbol")));
}

TEST(Symbol, IsDrawnInTheColourAndTheScaleAskedFor) {
    const QPixmap pixmap = Symbol::pixmap(QStringLiteral("circle.fill"), 16, QColor(10, 200, 30), 2);
    EXPECT_EQ(pixmap.width(), 32);
    EXPECT_EQ(pixmap.devicePixelRatio(), 2);
    EXPECT_EQ(pixmap.toImage().pixelColor(16, 16), QColor(10, 200, 30));
}

} // namespace
} // namespace velmo
