#include "ui/ScreenPlace.h"

#include "platform/FlippedGeometry.h"

#include <QGuiApplication>
#include <QScreen>

#include <cmath>

namespace velmo::ScreenPlace {

namespace {

FlippedGeometry flipped() {
    const QRect primary = QGuiApplication::primaryScreen()->geometry();
    return {static_cast<double>(primary.y() + primary.height())};
}

} // namespace

QRect toQt(const Rect& global) {
    const Rect down = flipped().flip(global);
    const auto whole = [](double value) { return static_cast<int>(std::lround(value)); };
    return QRect(whole(down.x), whole(down.y), whole(down.width), whole(down.height));
}

Rect toGlobal(const QRect& place) {
    return flipped().flip(Rect{static_cast<double>(place.x()), static_cast<double>(place.y()),
                               static_cast<double>(place.width()), static_cast<double>(place.height())});
}

QRect frame(const Screen& screen) {
    return toQt(screen.frame);
}

QRect visibleFrame(const Screen& screen) {
    const QRect whole = frame(screen);
    const QScreen* found = QGuiApplication::screenAt(whole.center());
    const QRect free = found != nullptr ? found->availableGeometry() & whole : QRect();
    return free.isEmpty() ? whole : free;
}

} // namespace velmo::ScreenPlace
