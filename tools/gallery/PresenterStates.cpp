#include "support/FakeScreenCapture.h" // first: "emit" means something else once Qt was read

#include "PresenterStates.h"

#include "session/QtTimers.h"
#include "settings/Prefs.h"
#include "support/ManualClock.h"
#include "support/MemoryDefaultsStore.h"
#include "support/SlideImage.h"
#include "support/Teacher.h"
#include "support/WaitUntil.h"
#include "surfaces/PresenterWindow.h"
#include "ui/ScreenPlace.h"
#include "unit/surfaces/FakePreviewLender.h"

#include <QLabel>
#include <QPixmap>

#include <chrono>
#include <cstring>

namespace velmo {
namespace {

FrameRef slidePicture(int width, int height) {
    const QImage slide = test::slideImage(width, height);
    FrameRef picture = PixelBuffer::create(PixelFormat::bgra, width, height);
    for (int y = 0; y < height; ++y) {
        std::memcpy(picture->plane(0).row(y), slide.constScanLine(y), static_cast<std::size_t>(slide.bytesPerLine()));
    }
    return picture;
}

class PresenterStates {
public:
    explicit PresenterStates(const Screen& screen) : screen_(screen) {
        capture_.content.displays = {
            {screen.displayID, screen.frame, int(screen.frame.width), int(screen.frame.height)}};
        capture_.image = [](const ContentFilter&, const StreamConfiguration& wish) -> Result<FrameRef> {
            return slidePicture(wish.width, wish.height);
        };
        slide_.setGeometry(ScreenPlace::frame(screen));
        slide_.setPixmap(QPixmap::fromImage(test::slideImage(slide_.width(), slide_.height())));
        slide_.show();
        bubble_.put({90, 70, 220, 220});
        bubble_.feed.publish(test::teacherPicture(0));
        prefs_.showName = true;
        prefs_.presenterName = QStringLiteral("Laura Méndez");
        prefs_.presenterRole = QStringLiteral("Cálculo II");
    }

    /// As it looks when the share `flown` of the flight is over; more than 1 for a stage with its name.
    void show(PresenterStyle style, double flown, const std::function<void()>& save) {
        window_.enter(screen_, style);
        test::waitUntil([this] { return bubble_.covered; });
        clock_.advance(PresenterFlight::kSeconds * flown);
        test::waitUntil([] { return false; }, std::chrono::milliseconds(400));
        save();
        window_.reset();
    }

private:
    Screen screen_;
    QLabel slide_{nullptr, Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint};
    test::ManualClock clock_{100};
    QtTimers timers_;
    test::MemoryDefaultsStore store_;
    Prefs prefs_{store_};
    test::FakeScreenCapture capture_;
    test::FakePreviewLender bubble_;
    PresenterWindow window_{
        {prefs_, bubble_, capture_, clock_, timers_, std::make_unique<ThreadQueue>("velmo.presenter"), {}, 0}};
};

} // namespace

void showPresenter(const Screen& screen, const std::function<void(const QString&)>& save) {
    struct State {
        PresenterStyle style;
        double flown;
        const char* name;
    };
    constexpr State kStates[] = {{PresenterStyle::framed, 0, "presenter-flight-0"},
                                 {PresenterStyle::framed, 0.3, "presenter-flight-30"},
                                 {PresenterStyle::framed, 0.7, "presenter-flight-70"},
                                 {PresenterStyle::framed, 2, "presenter-framed"},
                                 {PresenterStyle::sideRight, 2, "presenter-side-right"},
                                 {PresenterStyle::sideLeft, 2, "presenter-side-left"},
                                 {PresenterStyle::full, 2, "presenter-full"}};
    PresenterStates states(screen);
    for (const State& state : kStates) {
        states.show(state.style, state.flown, [&] { save(QString::fromLatin1(state.name)); });
    }
}

} // namespace velmo
