#include "ui/DialogWindow.h"

#include "ui/Painting.h"
#include "ui/Theme.h"
#include "ui/internal/X11Window.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QWindow>

namespace velmo {

DialogWindow::DialogWindow(QWidget* parent) : DialogWindow({Theme::card(), 14, Elevation::dialog}, parent) {}

DialogWindow::DialogWindow(Floor floor, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint), floor_(floor) {
    setAttribute(Qt::WA_TranslucentBackground);
    setContentsMargins(Shadow::margins(floor_.elevation));
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
    bringToFront();
}

void DialogWindow::bringToFront() {
    show();
    raise();
    activateWindow();
}

void DialogWindow::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    composited_ = X11Window::isComposited();
    applyShape();
}

void DialogWindow::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    applyShape();
}

void DialogWindow::applyShape() {
    if (!isVisible()) {
        return;
    }
    X11Window::setInputRegion(*this, card());
    if (!composited_) {
        QPainterPath outline;
        outline.addRoundedRect(card(), floor_.radius, floor_.radius);
        setMask(QRegion(outline.toFillPolygon().toPolygon()));
    }
}

void DialogWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRectF box = card();
    if (composited_) {
        Shadow::paint(painter, box, floor_.radius, floor_.elevation);
    }
    Painting::roundedBox(painter, box, floor_.radius, floor_.color, Theme::strongBorder());
}

void DialogWindow::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && card().contains(event->position().toPoint()) &&
        windowHandle() != nullptr) {
        windowHandle()->startSystemMove();
    }
}

} // namespace velmo
