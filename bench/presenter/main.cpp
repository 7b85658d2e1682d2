// What the presenter's scenes cost: CPU of this process, of the X server and of the compositing manager, in parts of
// one core, with a camera of 1280x720 at 30 pictures a second over a still desktop; and how many steps a flight has.
//
//   tools/desk run build/release/bin/bench_presenter [SECONDS]

#include "platform/x11/X11ScreenCapture.h"
#include "session/QtTimers.h"
#include "settings/Prefs.h"
#include "support/MemoryDefaultsStore.h"
#include "support/SlideImage.h"
#include "support/Teacher.h"
#include "support/Wallpaper.h"
#include "surfaces/PresenterWindow.h"
#include "surfaces/internal/PresenterPanel.h"
#include "unit/surfaces/FakePreviewLender.h"

#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QTimer>

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

namespace velmo {
namespace {

struct Cpu {
    double own = 0;
    double server = 0;
    double compositor = 0;
};

double cpuOf(const std::string& pid) {
    std::ifstream file("/proc/" + pid + "/stat");
    std::string text;
    std::getline(file, text);
    std::size_t at = text.rfind(')');
    if (at == std::string::npos) {
        return 0;
    }
    ++at;
    for (int field = 0; field < 12; ++field) {
        at = text.find(' ', at + 1);
    }
    char* end = nullptr;
    const double user = std::strtod(text.c_str() + at, &end);
    return (user + std::strtod(end, nullptr)) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

/// The compositing manager beside this desktop's X server: a child of the same process.
std::string compositorPid() {
    const auto parentOf = [](const std::string& pid) {
        std::ifstream file("/proc/" + pid + "/stat");
        std::string text;
        std::getline(file, text);
        const std::size_t end = text.rfind(')');
        return end == std::string::npos ? std::string() : text.substr(end + 4, text.find(' ', end + 4) - end - 4);
    };
    const std::string desk = parentOf(qEnvironmentVariable("DESK_XSERVER_PID").toStdString());
    for (const QString& entry : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        std::ifstream file("/proc/" + entry.toStdString() + "/comm");
        std::string name;
        std::getline(file, name);
        if (name == "picom" && parentOf(entry.toStdString()) == desk) {
            return entry.toStdString();
        }
    }
    return "0";
}

Cpu cpu() {
    static const std::string compositor = compositorPid();
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return {seconds(usage.ru_utime) + seconds(usage.ru_stime),
            cpuOf(qEnvironmentVariable("DESK_XSERVER_PID").toStdString()), cpuOf(compositor)};
}

void pass(double seconds) {
    QEventLoop loop;
    QTimer::singleShot(static_cast<int>(seconds * 1000), Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Each paint of a widget that reached the screen.
class Paints final : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            times.push_back(HostClock::shared().now().seconds());
        }
        return false;
    }
    std::vector<double> times;
};

class Bench {
public:
    explicit Bench(int seconds) : seconds_(seconds) {
        test::setWallpaper(client_, test::slideImage(1920, 1080));
        for (int i = 0; i < 8; ++i) {
            pictures_.push_back(test::teacherPicture(i / 8.0));
        }
        bubble_.put({90, 70, 220, 220});
        QObject::connect(&camera_, &QTimer::timeout, &camera_,
                         [this] { bubble_.feed.publish(pictures_[next_++ % pictures_.size()]); });
        camera_.setTimerType(Qt::PreciseTimer);
        camera_.start(33);
        window_.prepare(screen_);
        pass(0.5);
        window_.park();
        const_cast<PresenterPanel*>(window_.panel())->installEventFilter(&paints_);
    }

    void run() {
        std::printf("%-44s %9s %9s %9s\n", "", "program", "X server", "picom");
        measure("camera alone");
        for (const auto& [style, name] :
             {std::pair{PresenterStyle::sideRight, "side"}, std::pair{PresenterStyle::framed, "framed"},
              std::pair{PresenterStyle::full, "full"}}) {
            fly(style, name);
        }
    }

private:
    void measure(const std::string& what) {
        pass(1.5);
        const Cpu before = cpu();
        pass(seconds_);
        const Cpu after = cpu();
        const auto percent = [this](double a, double b) { return (b - a) * 100 / seconds_; };
        std::printf("%-44s %8.1f%% %8.1f%% %8.1f%%\n", what.c_str(), percent(before.own, after.own),
                    percent(before.server, after.server), percent(before.compositor, after.compositor));
        std::fflush(stdout);
    }

    void flight(const std::string& what, PresenterState::Phase end) {
        paints_.times.clear();
        const Cpu before = cpu();
        const double start = HostClock::shared().now().seconds();
        while (window_.state().phase() != end) {
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        const double took = HostClock::shared().now().seconds() - start;
        const Cpu after = cpu();
        double longest = 0;
        for (std::size_t i = 1; i < paints_.times.size(); ++i) {
            longest = std::max(longest, paints_.times[i] - paints_.times[i - 1]);
        }
        std::printf("%-44s %8.1f%% %8.1f%% %8.1f%%  %zu paints in %.2f s, longest gap %.0f ms\n", what.c_str(),
                    (after.own - before.own) * 100 / took, (after.server - before.server) * 100 / took,
                    (after.compositor - before.compositor) * 100 / took, paints_.times.size(), took, longest * 1000);
        std::fflush(stdout);
    }

    void fly(PresenterStyle style, const std::string& name) {
        window_.enter(screen_, style);
        flight(name + ": way in", PresenterState::Phase::shown);
        measure(name + ": on the stage");
        window_.exit({});
        flight(name + ": way out", PresenterState::Phase::rest);
        pass(0.5);
    }

    int seconds_;
    test::XTestClient client_{qEnvironmentVariable("DISPLAY").toStdString()};
    X11ScreenCapture capture_{std::nullopt, nullptr, HostClock::shared()};
    Screen screen_{0, {0, 0, 1920, 1080}, 1};
    QtTimers timers_;
    test::MemoryDefaultsStore store_;
    Prefs prefs_{store_};
    test::FakePreviewLender bubble_;
    std::vector<FrameRef> pictures_;
    std::size_t next_ = 0;
    QTimer camera_;
    Paints paints_;
    PresenterWindow window_{{prefs_,
                             bubble_,
                             capture_,
                             HostClock::shared(),
                             timers_,
                             std::make_unique<ThreadQueue>("velmo.presenter"),
                             {},
                             static_cast<int>(QCoreApplication::applicationPid())}};
};

} // namespace
} // namespace velmo

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    velmo::Bench(argc > 1 ? std::atoi(argv[1]) : 10).run();
    return EXIT_SUCCESS;
}
