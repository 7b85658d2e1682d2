// What a long stroke costs: milliseconds of CPU of this process for each point that is added and painted, at the
// beginning and at the end of a stroke of 10,000 points, then for its release and for undo. On a real window of the
// whole screen:
//
//   tools/desk run build/release/bin/bench_drawing

#include "base/Clock.h"
#include "session/QtTimers.h"
#include "surfaces/DrawingView.h"
#include "surfaces/internal/DrawingOverlay.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScreen>

#include <sys/resource.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

namespace velmo {
namespace {

constexpr int kPoints = 10000;
constexpr int kBin = 500;

double cpuMilliseconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto of = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return of(usage.ru_utime) + of(usage.ru_stime);
}

/// Where the hand is after `i` movements of some eight points each.
using Hand = QPointF (*)(int i);

QPointF overTheScreen(int i) {
    return {960 + 850 * std::cos(i / 131.0), 540 + 450 * std::sin(i / 83.0)};
}
QPointF inOneSpot(int i) {
    return {960 + 60 * std::cos(i / 7.0), 540 + 60 * std::sin(i / 9.1)};
}

void send(QWidget& view, QEvent::Type type, QPointF at) {
    QMouseEvent event(type, at, at, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&view, &event);
    QCoreApplication::processEvents(); // paints
}

double timed(const std::function<void()>& work) {
    const double before = cpuMilliseconds();
    work();
    QCoreApplication::processEvents();
    return cpuMilliseconds() - before;
}

void measure(DrawingTool tool, const char* name, Hand hand) {
    QtTimers timers;
    DrawingOverlay overlay(QGuiApplication::primaryScreen()->geometry(), {HostClock::shared(), timers}, [tool] {
        return DrawingTip{tool, QColor(0xFF453A), 5};
    });
    overlay.take();
    DrawingView& view = overlay.view();
    QCoreApplication::processEvents();
    send(view, QEvent::MouseButtonPress, hand(0));
    std::vector<double> bins;
    for (int i = 1; i <= kPoints; i += kBin) {
        bins.push_back(timed([&] {
                           for (int k = 0; k < kBin; ++k) {
                               send(view, QEvent::MouseMove, hand(i + k));
                           }
                       }) /
                       kBin);
    }
    const double release = timed([&] { send(view, QEvent::MouseButtonRelease, hand(kPoints)); });
    const double undo = timed([&] { view.undo(); });
    std::printf("%-12s %-14s %9.3f %9.3f %9.3f %9.1f %9.1f\n", rawValue(tool).toUtf8().constData(), name, bins.front(),
                bins.back(), *std::max_element(bins.begin(), bins.end()), release, undo);
}

} // namespace
} // namespace velmo

int main(int count, char** arguments) {
    QApplication application(count, arguments);
    using velmo::DrawingTool;
    std::printf("%-12s %-14s %9s %9s %9s %9s %9s   (ms of CPU)\n", "", "", "first 500", "last 500", "most", "release",
                "undo");
    for (const auto tool :
         {DrawingTool::pen, DrawingTool::fountain, DrawingTool::nib, DrawingTool::highlighter, DrawingTool::laser}) {
        velmo::measure(tool, "whole screen", velmo::overTheScreen);
        velmo::measure(tool, "in one spot", velmo::inOneSpot);
    }
    return 0;
}
