#include "ui/internal/ColorPlane.h"

#include "ui/FocusRing.h"
#include "ui/Theme.h"

#include <QKeyEvent>
#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace velmo {

namespace {

constexpr int kWidth = 212;
constexpr int kHeight = 124;
constexpr double kRadius = 8;
constexpr double kMark = 14;
constexpr double kStep = 0.02;

} // namespace

ColorPlane::ColorPlane(QWidget* parent) : QWidget(parent) {
    setAccessibleName(QStringLiteral("Intensidad y brillo"));
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::CrossCursor);
    setFixedSize(kWidth, kHeight);
    new FocusRing(*this, kRadius);
}

void ColorPlane::setColor(const QColor& color) {
    const QColor hsv = color.toHsv();
    hue_ = std::max(0, hsv.hue()); // greys have none
    strength_ = hsv.saturationF();
    light_ = hsv.valueF();
    update();
}

void ColorPlane::setHue(int hue) {
    hue_ = hue;
    update();
}

QColor ColorPlane::color() const {
    return QColor::fromHsvF(static_cast<float>(hue_ / 360.0), static_cast<float>(strength_),
                            static_cast<float>(light_));
}

void ColorPlane::goTo(double strength, double light) {
    strength_ = std::clamp(strength, 0.0, 1.0);
    light_ = std::clamp(light, 0.0, 1.0);
    update();
    emit moved();
}

void ColorPlane::mousePressEvent(QMouseEvent* event) {
    goTo(event->position().x() / width(), 1 - event->position().y() / height());
}

void ColorPlane::mouseMoveEvent(QMouseEvent* event) {
    goTo(event->position().x() / width(), 1 - event->position().y() / height());
}

void ColorPlane::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Left:
        return goTo(strength_ - kStep, light_);
    case Qt::Key_Right:
        return goTo(strength_ + kStep, light_);
    case Qt::Key_Up:
        return goTo(strength_, light_ + kStep);
    case Qt::Key_Down:
        return goTo(strength_, light_ - kStep);
    default:
        QWidget::keyPressEvent(event);
    }
}

void ColorPlane::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    QLinearGradient across(0, 0, width(), 0);
    across.setColorAt(0, Qt::white);
    across.setColorAt(1, QColor::fromHsv(hue_, 255, 255));
    painter.setBrush(across);
    painter.drawRoundedRect(rect(), kRadius, kRadius);
    QLinearGradient down(0, 0, 0, height());
    down.setColorAt(0, QColor(0, 0, 0, 0));
    down.setColorAt(1, Qt::black);
    painter.setBrush(down);
    painter.drawRoundedRect(rect(), kRadius, kRadius);
    const QPointF at(std::clamp(strength_ * width(), kMark / 2, width() - kMark / 2),
                     std::clamp((1 - light_) * height(), kMark / 2, height() - kMark / 2));
    painter.setBrush(color());
    painter.setPen(QPen(Theme::navyDeep, 3.5));
    painter.drawEllipse(at, kMark / 2 - 2, kMark / 2 - 2);
    painter.setPen(QPen(Qt::white, 2));
    painter.drawEllipse(at, kMark / 2 - 2, kMark / 2 - 2);
}

} // namespace velmo
