#include "app/DesktopPointer.h"

#include "platform/FlippedGeometry.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

namespace velmo {

Point DesktopPointer::location() const {
    const QPoint yDown = QCursor::pos();
    const QScreen* primary = QGuiApplication::primaryScreen();
    const double height = primary != nullptr ? primary->geometry().y() + primary->geometry().height() : 0;
    return FlippedGeometry{height}.flip(Point{static_cast<double>(yDown.x()), static_cast<double>(yDown.y())});
}

} // namespace velmo
