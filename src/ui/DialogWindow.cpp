#include "ui/DialogWindow.h"

#include "ui/Painting.h"
#include "ui/Theme.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QWindow>

namespace velmo {

DialogWindow::DialogWindow(QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint) {
    setAttribute(Qt::WA_TranslucentBackground);
    setContentsMargins(Shadow::margins(Elevation::dialog));
}

QRect DialogWindow::card() const {
    return rect().marginsRemoved(contentsMargins());
}

void DialogWindow::present() {
    adjustSize();
    if (const QScreen* screen = QGuiApplication::screenAt(QCursor::pos())) {
        const QRect free = screen->availableGeometry();
        move(free.center() - card().center());
    }
    show();
    raise();
    activateWindow();
}

void DialogWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRectF box = card();
    Shadow::paint(painter, box, kRadius, Elevation::dialog);
    Painting::roundedBox(painter, box, kRadius, Theme::card(), Theme::strongBorder());
}

void DialogWindow::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && card().contains(event->position().toPoint()) &&
        windowHandle() != nullptr) {
        windowHandle()->startSystemMove();
    }
}

} // namespace velmo
