// What the overlay costs: CPU of this process, which holds nothing but the overlay, and of the X server with its
// compositing manager's requests, in parts of one core.
//
//   tools/desk run build/release/bin/bench_overlay [SECONDS]

#include "bench/support/CpuTime.h"
#include "platform/desktop/XInputPointerMotion.h"
#include "session/QtTimers.h"
#include "support/XTestClient.h"
#include "surfaces/SpotlightOverlay.h"

#include <QApplication>
#include <QCursor>
#include <QProcess>

#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace velmo {
namespace {

class Mouse final : public PointerPort {
public:
    Point location() const override {
        const QPoint at = QCursor::pos();
        return {static_cast<double>(at.x()), 1080.0 - at.y()};
    }
};

using bench::ownCpu;
using bench::pass;
using bench::serverCpu;

/// The mouse of another process: a wide slow round, 120 events a second.
int moveForever() {
    test::XTestClient client(qEnvironmentVariable("DISPLAY").toStdString());
    for (int i = 0;; ++i) {
        const double angle = i / 120.0 * 1.5;
        client.movePointer(static_cast<int>(960 + 600 * std::cos(angle)),
                           static_cast<int>(540 + 300 * std::sin(angle)));
        client.sync();
        usleep(1'000'000 / 120);
    }
}

class Mover {
public:
    Mover() { process_.start(QApplication::applicationFilePath(), {QStringLiteral("--move")}); }
    ~Mover() {
        process_.kill();
        process_.waitForFinished();
    }

private:
    QProcess process_;
};

void measure(const char* what, int seconds) {
    pass(1500); // fades and starts are no part of it
    const double own = ownCpu();
    const double server = serverCpu();
    pass(seconds * 1000);
    std::printf("%-58s %6.3f %%  %6.2f %%\n", what, (ownCpu() - own) * 100 / seconds,
                (serverCpu() - server) * 100 / seconds);
    std::fflush(stdout);
}

void run(int seconds) {
    QtTimers timers;
    Mouse mouse;
    XInputPointerMotion motion;
    const Screen screen{1, {0, 0, 1920, 1080}, 1};
    SpotlightOverlay overlay{{HostClock::shared(), timers, mouse, motion, [] {
                                  return std::vector<Color>{Color::fromHex(0xD4FF3A), Color::fromHex(0x8FE000)};
                              }}};
    std::printf("%-58s %8s  %8s\n", "", "overlay", "X server");
    measure("no overlay", seconds);
    overlay.start(screen, false);
    measure("started, without circles", seconds);
    overlay.start(screen, true);
    measure("watching for circles, mouse at rest", seconds);
    {
        const Mover mover;
        overlay.stop();
        measure("no overlay, mouse moving", seconds);
        overlay.start(screen, true);
        measure("watching for circles, mouse moving", seconds);
    }
    overlay.setSpotlight(true);
    measure("spotlight, mouse at rest", seconds);
    const Mover mover;
    measure("spotlight, mouse moving", seconds);
}

} // namespace
} // namespace velmo

int main(int argc, char** argv) {
    if (argc > 1 && std::string(argv[1]) == "--move") {
        return velmo::moveForever();
    }
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    velmo::run(argc > 1 ? std::atoi(argv[1]) : 10);
    return EXIT_SUCCESS;
}
