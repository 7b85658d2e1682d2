#include "platform/desktop/QtScreens.h"

#include "platform/FlippedGeometry.h"
#include "platform/desktop/internal/RandrMonitors.h"

#include <QGuiApplication>
#include <QScreen>

namespace velmo {
namespace {

/// Names are the surest sign; Qt keeps a screen's origin in X pixels whatever its scale.
std::uint32_t displayIDOf(const QScreen& screen, const std::vector<internal::RandrMonitor>& monitors) {
    for (const internal::RandrMonitor& monitor : monitors) {
        if (monitor.name == screen.name()) {
            return monitor.output;
        }
    }
    for (const internal::RandrMonitor& monitor : monitors) {
        if (monitor.origin == screen.geometry().topLeft()) {
            return monitor.output;
        }
    }
    return static_cast<std::uint32_t>(QGuiApplication::screens().indexOf(&screen) + 1);
}

Screen described(const QScreen& screen, const std::vector<internal::RandrMonitor>& monitors) {
    const auto* primary = QGuiApplication::primaryScreen();
    const FlippedGeometry flipped{static_cast<double>(primary->geometry().y() + primary->geometry().height())};
    const QRect g = screen.geometry();
    const Rect yDown{static_cast<double>(g.x()), static_cast<double>(g.y()), static_cast<double>(g.width()),
                     static_cast<double>(g.height())};
    return {displayIDOf(screen, monitors), flipped.flip(yDown), screen.devicePixelRatio()};
}

} // namespace

std::vector<Screen> QtScreens::all() const {
    std::vector<Screen> screens;
    const auto monitors = internal::randrMonitors();
    for (const QScreen* screen : QGuiApplication::screens()) { // Qt keeps the primary one first
        screens.push_back(described(*screen, monitors));
    }
    return screens;
}

QScreen* QtScreens::find(std::uint32_t displayID) {
    const auto monitors = internal::randrMonitors();
    for (QScreen* screen : QGuiApplication::screens()) {
        if (displayIDOf(*screen, monitors) == displayID) {
            return screen;
        }
    }
    return nullptr;
}

Screen QtScreens::describe(const QScreen& screen) {
    return described(screen, internal::randrMonitors());
}

} // namespace velmo
