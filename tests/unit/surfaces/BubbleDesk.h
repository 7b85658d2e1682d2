#pragma once

#include "settings/Prefs.h"
#include "support/CameraPictures.h"
#include "support/ManualClock.h"
#include "support/MemoryDefaultsStore.h"
#include "support/PaintCount.h"
#include "surfaces/BubbleController.h"
#include "surfaces/SecondBubbleController.h"
#include "unit/session/ManualTimers.h"

#include <QCoreApplication>

namespace velmo::test {

/// Both bubbles on a desktop of one screen, with a time that tests advance.
struct BubbleDesk {
    struct OneScreen final : Screens {
        std::vector<Screen> all() const override { return screens; }
        std::vector<Screen> screens{{1, {0, 0, 1920, 1080}, 1}};
    };

    BubbleServices services(CameraFeed& camera) {
        return {prefs,
                screens,
                clock,
                timers,
                camera,
                [this](const QString&, const QString&, double, double, double scale) {
                    ++namesMade;
                    NameTag::Image tag{QImage(), QSizeF(90, 30)};
                    tag.pixels = QImage((tag.size * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
                    tag.pixels.fill(Qt::darkGreen);
                    return std::optional(tag);
                }};
    }

    void giveName() {
        prefs.presenterName = QStringLiteral("Laura Méndez");
        prefs.showName = true;
    }
    /// Moves the time on and lets what is due be painted.
    void pass(double seconds) {
        timers.advance(seconds);
        QCoreApplication::processEvents();
    }
    void givePicture() {
        feed.publish(picture);
        QCoreApplication::processEvents();
    }

    MemoryDefaultsStore store;
    Prefs prefs{store};
    OneScreen screens;
    ManualClock clock{100};
    ManualTimers timers{clock};
    CameraFeed feed;
    CameraFeed secondFeed;
    FrameRef picture = flatCameraPicture({64, 36}, Qt::gray);
    bool hasVideo = true;
    int namesMade = 0;
    SecondBubbleController second{services(secondFeed)};
    BubbleController bubble{services(feed), {[this] { return hasVideo; }, [this] { second.applyPrefs(); }}};
};

} // namespace velmo::test
