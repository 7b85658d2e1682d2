// What screen capture costs: CPU of this process and of the X server, for workloads painted by another process on an
// Xvfb of its own at 1920x1080. Usage: bench_capture [seconds per workload, default 5]

#include "base/Clock.h"
#include "platform/x11/X11ScreenCapture.h"
#include "support/XTestClient.h"
#include "support/XTestServer.h"

#include <sys/wait.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <future>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace velmo::test {
namespace {

enum class Work { still, typing, scroll, motion };

struct Case {
    const char* name;
    Work work;
    bool overlay; ///< a translucent window of the size of the screen lies over it
    int width;    ///< of the delivered pictures
    int height;
};

constexpr Case kCases[] = {
    {"still", Work::still, false, 1920, 1080},
    {"typing, 12 letters a second", Work::typing, false, 1920, 1080},
    {"scrolling page, 30 a second", Work::scroll, false, 1920, 1080},
    {"full motion, 30 a second", Work::motion, false, 1920, 1080},
    {"typing under a translucent overlay", Work::typing, true, 1920, 1080},
    {"full motion under a translucent overlay", Work::motion, true, 1920, 1080},
    {"full motion, scaled to 1280x720", Work::motion, false, 1280, 720},
    {"full motion, scaled to 3840x2160", Work::motion, false, 3840, 2160},
};

void paintLoop(XTestClient& client, xcb_window_t window, Work work, double seconds) {
    const double rate = work == Work::typing ? 12 : 30;
    const auto begin = std::chrono::steady_clock::now();
    for (int n = 0; n < seconds * rate; ++n) {
        const auto color = 0xff000000u | static_cast<std::uint32_t>(n) * 0x070d17u;
        if (work == Work::typing) {
            client.fill(window, {n % 100 * 10, n / 100 % 40 * 20, 9, 16}, color);
        } else if (work == Work::scroll) {
            const std::uint32_t none = 0;
            const xcb_gcontext_t gc = xcb_generate_id(client.xcb());
            xcb_create_gc(client.xcb(), gc, window, XCB_GC_GRAPHICS_EXPOSURES, &none);
            xcb_copy_area(client.xcb(), window, window, gc, 200, 120, 200, 100, 1500, 900);
            xcb_free_gc(client.xcb(), gc);
            client.fill(window, {200, 1000, 1500, 20}, color);
        } else if (work == Work::motion) {
            client.fill(window, {0, 0, 1920, 1080}, color);
        }
        xcb_flush(client.xcb());
        std::this_thread::sleep_until(begin + std::chrono::duration_cast<std::chrono::nanoseconds>(
                                                  std::chrono::duration<double>((n + 1) / rate)));
    }
}

/// Another process that paints, so that its cost is not ours. Returns its id.
pid_t startPainter(const std::string& display, const Case& each, double seconds) {
    std::fflush(stdout); // or the child prints it again
    const pid_t pid = fork();
    if (pid == 0) {
        {
            XTestClient client(display);
            const auto window = client.show({0, 0, 1920, 1080}, {.color = 0xffe0e0e0});
            if (each.overlay) {
                client.show({0, 0, 1920, 1080}, {.alpha = true, .color = 0});
            }
            client.sync();
            std::this_thread::sleep_for(std::chrono::milliseconds(500));
            paintLoop(client, window, each.work, seconds);
            client.sync();
        }
        _exit(0);
    }
    return pid;
}

double cpuMilliseconds(pid_t pid) {
    std::ifstream file("/proc/" + std::to_string(pid) + "/schedstat");
    double nanoseconds = 0;
    file >> nanoseconds;
    return nanoseconds / 1e6;
}

double ownCpuMilliseconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

class Counter final : public StreamOutputHandler {
public:
    void streamDidOutput(CaptureStream&, const Sample&, StreamOutput) override { ++count; }
    std::atomic<int> count = 0;
};

struct Cost {
    double own = 0;
    double server = 0;
    int pictures = 0;
};

std::unique_ptr<CaptureStream> startStream(X11ScreenCapture& capture, const Case& each, Counter& counter,
                                           SerialQueue& queue) {
    std::promise<DisplayId> display;
    capture.queryShareableContent(
        [&](Result<ShareableContent> content) { display.set_value(content.value().displays.at(0).displayID); });
    StreamConfiguration configuration;
    configuration.width = each.width;
    configuration.height = each.height;
    auto stream = std::move(capture.makeStream(ContentFilter::display(display.get_future().get(), {}, {}),
                                               configuration, nullptr))
                      .value();
    (void)stream->addOutput(counter, StreamOutput::screen, queue);
    std::promise<void> started;
    stream->start([&](Result<void>) { started.set_value(); });
    started.get_future().get();
    return stream;
}

Cost measure(const Case& each, double seconds, bool captured) {
    const XTestServer server("1920x1080x24");
    const pid_t painter = startPainter(server.display(), each, seconds);
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    X11ScreenCapture capture(server.display(), nullptr, HostClock::shared());
    Counter counter;
    ThreadQueue queue("bench");
    std::unique_ptr<CaptureStream> stream;
    if (captured) {
        stream = startStream(capture, each, counter, queue);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    const double own = ownCpuMilliseconds();
    const double others = cpuMilliseconds(server.pid());
    const int before = counter.count;
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds - 0.2));
    const Cost cost{ownCpuMilliseconds() - own, cpuMilliseconds(server.pid()) - others, counter.count - before};
    stream.reset();
    waitpid(painter, nullptr, 0);
    return cost;
}

} // namespace

int benchMain(double seconds) {
    std::printf("%-42s %9s %12s %12s %14s %14s\n", "1920x1080, CPU in ms", "pictures", "own/picture", "own/second",
                "server/second", "without us");
    for (const Case& each : kCases) {
        const Cost alone = measure(each, seconds, false);
        const Cost cost = measure(each, seconds, true);
        std::printf("%-42s %9d %12.3f %12.2f %14.2f %14.2f\n", each.name, cost.pictures,
                    cost.pictures > 0 ? cost.own / cost.pictures : 0, cost.own / seconds, cost.server / seconds,
                    alone.server / seconds);
        std::fflush(stdout);
    }
    return 0;
}

} // namespace velmo::test

int main(int count, char** arguments) {
    return velmo::test::benchMain(count > 1 ? std::stod(arguments[1]) : 5);
}
