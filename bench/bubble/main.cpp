// What the camera bubbles cost: CPU of this process, which holds nothing but a bubble, and of the X server, in parts of
// one core; how often the bubble was painted, and how many pixels the X server saw changed, a second. The pictures of
// the camera are made before the measuring begins.
//
//   tools/desk --no-sound run build/release/bin/bench_bubble [SECONDS]

#include "base/Clock.h"
#include "base/SerialQueue.h"
#include "bench/support/CpuTime.h"
#include "platform/synthetic/SyntheticCameras.h"
#include "session/QtTimers.h"
#include "settings/BubbleSize.h"
#include "support/PaintCount.h"
#include "surfaces/BubbleView.h"

#include <QApplication>

#include <xcb/damage.h>
#include <xcb/xcb.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <vector>

namespace velmo {
namespace {

constexpr std::size_t kPictures = 60;

std::vector<FrameRef> takePictures() {
    SyntheticCameras cameras(HostClock::shared(), {false, 0});
    std::mutex lock;
    std::vector<FrameRef> pictures; // protected by lock
    ThreadQueue queue("velmo.bench.camera");
    const auto stream = cameras.open(SyntheticCameras::kTeacher, queue,
                                     {[&](const Sample& sample) {
                                          const std::lock_guard guard(lock);
                                          pictures.push_back(sample.image);
                                      },
                                      {}});
    const auto enough = [&] {
        const std::lock_guard guard(lock);
        return pictures.size() >= kPictures;
    };
    while (stream.ok() && !enough()) {
        bench::pass(100);
    }
    const std::lock_guard guard(lock);
    return pictures;
}

/// What is painted into a window, by the X server's account, over a connection of its own.
class Damage {
public:
    explicit Damage(WId window) : x11_(xcb_connect(nullptr, nullptr)) {
        std::free(xcb_damage_query_version_reply(x11_, xcb_damage_query_version(x11_, 1, 1), nullptr));
        first_ = xcb_get_extension_data(x11_, &xcb_damage_id)->first_event;
        xcb_damage_create(x11_, xcb_generate_id(x11_), static_cast<xcb_drawable_t>(window),
                          XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
        pixels(); // what was there already
    }
    ~Damage() { xcb_disconnect(x11_); }

    double pixels() {
        std::free(xcb_get_input_focus_reply(x11_, xcb_get_input_focus(x11_), nullptr)); // all events are here now
        double sum = 0;
        while (const std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> event{xcb_poll_for_event(x11_),
                                                                                      &std::free}) {
            if ((event->response_type & 0x7f) == first_ + XCB_DAMAGE_NOTIFY) {
                const auto* notify = reinterpret_cast<const xcb_damage_notify_event_t*>(event.get());
                sum += notify->area.width * notify->area.height;
            }
        }
        return sum;
    }

private:
    xcb_connection_t* x11_;
    std::uint8_t first_ = 0;
};

struct Case {
    const char* name;
    RingStyle style;
    BubbleSize size;
    bool camera;
    bool cameraOnly = false;
    bool talks = false;
};

constexpr Case kCases[] = {
    {"no camera, no ring", RingStyle::none, BubbleSize::m, false},
    {"no camera, chameleon", RingStyle::chameleon, BubbleSize::m, false},
    {"no camera, aurora", RingStyle::aurora, BubbleSize::m, false},
    {"camera, no ring", RingStyle::none, BubbleSize::m, true},
    {"camera, chameleon", RingStyle::chameleon, BubbleSize::m, true},
    {"camera, chameleon, somebody talks", RingStyle::chameleon, BubbleSize::m, true, false, true},
    {"camera, chameleon, large", RingStyle::chameleon, BubbleSize::l, true},
    {"the camera alone, 960 x 540", RingStyle::none, BubbleSize::m, true, true},
};

void measure(const Case& each, const std::vector<FrameRef>& pictures, int seconds) {
    QtTimers timers;
    CameraFeed feed;
    BubbleView view({feed, HostClock::shared(), timers, [](auto&&...) { return std::optional<NameTag::Image>(); }});
    BubbleLook look;
    look.style = each.style;
    view.setLook(look);
    view.setCameraOnly(each.cameraOnly);
    view.setMirrored(true);
    const int side = static_cast<int>(diameter(each.size) + 2 * BubbleView::pad);
    view.setGeometry(100, 100, each.cameraOnly ? 960 : side, each.cameraOnly ? 540 : side);
    view.show();
    std::size_t next = 0;
    const auto camera =
        each.camera ? timers.repeat(1.0 / 30, [&] { feed.publish(pictures[next++ % kPictures]); }) : nullptr;
    const auto voice = each.talks ? timers.repeat(0.05, [&] { view.setLevel((next * 7 % 20) / 20.0); }) : nullptr;
    bench::pass(1500);
    test::PaintCount count(view);
    Damage damage(view.winId());
    const double own = bench::ownCpu();
    const double server = bench::serverCpu();
    bench::pass(seconds * 1000);
    const double used = bench::ownCpu() - own;
    std::printf("%-36s %8.2f %%  %8.2f %%  %9.1f  %9.0f\n", each.name, used * 100 / seconds,
                (bench::serverCpu() - server) * 100 / seconds, count.paints / static_cast<double>(seconds),
                damage.pixels() / seconds);
    std::fflush(stdout);
}

void run(int seconds) {
    const std::vector<FrameRef> pictures = takePictures();
    if (pictures.empty()) {
        std::fprintf(stderr, "the synthetic camera gives no pictures\n");
        return;
    }
    std::printf("%-36s %10s  %10s  %9s  %9s\n", "", "bubble", "X server", "paints/s", "pixels/s");
    for (const Case& each : kCases) {
        measure(each, pictures, seconds);
    }
}

} // namespace
} // namespace velmo

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    velmo::run(argc > 1 ? std::atoi(argv[1]) : 10);
    return EXIT_SUCCESS;
}
