#include "ui/ScreenPlace.h"

#include "platform/FlippedGeometry.h"

#include <QGuiApplication>
#include <QScreen>

#include <cmath>

namespace velmo::ScreenPlace {

QRect frame(const Screen& screen) {
    const QRect primary = QGuiApplication::primaryScreen()->geometry();
    const FlippedGeometry flipped{static_cast<double>(primary.y() + primary.height())};
    const Rect down = flipped.flip(screen.frame);
    const auto whole = [](double value) { return static_cast<int>(std::lround(value)); };
    return QRect(whole(down.x), whole(down.y), whole(down.width), whole(down.height));
}

QRect visibleFrame(const Screen& screen) {
    const QRect whole = frame(screen);
    const QScreen* found = QGuiApplication::screenAt(whole.center());
    const QRect free = found != nullptr ? found->availableGeometry() & whole : QRect();
    return free.isEmpty() ? whole : free;
}

} // namespace velmo::ScreenPlace
