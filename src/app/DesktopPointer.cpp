#include "app/DesktopPointer.h"

#include "platform/FlippedGeometry.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

namespace velmo {

Point DesktopPointer::location() const {
    const QPoint yDown = QCursor::pos();
    const QScreen* primary = QGuiApplication::primaryScreen();
    const double height = primary != nullptr ? primary->geometry().y() + primary->geometry().height() : 0;
    return FlippedGeometry{height}.flip(Point{static_cast<double>(yDown.x()), static_cast<double>(yDown.y())});
}

std::optional<WindowId> DesktopPointer::ownWindow() const {
    const QWindow* window = QGuiApplication::topLevelAt(QCursor::pos());
    return window != nullptr ? std::optional(static_cast<WindowId>(window->winId())) : std::nullopt;
}

} // namespace velmo
