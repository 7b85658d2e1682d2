#include "ui/Slider.h"

#include "ui/Painting.h"
#include "ui/Theme.h"

#include <QFocusEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace velmo {

namespace {

constexpr int kHeight = 26;
constexpr double kTrack = 4;
constexpr double kKnob = 16;
constexpr double kKnobHovered = 18;
constexpr double kEnd = kKnob / 2; ///< between the widget's edge and the knob's middle at an end

} // namespace

Slider::Slider(const QString& name, QWidget* parent) : QSlider(Qt::Horizontal, parent) {
    setAccessibleName(name);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setFixedHeight(kHeight);
}

QSize Slider::sizeHint() const {
    return {160, kHeight};
}

double Slider::knobX() const {
    const double span = maximum() - minimum();
    const double share = span > 0 ? (value() - minimum()) / span : 0;
    return kEnd + share * (width() - 2 * kEnd);
}

void Slider::goTo(double x) {
    const double share = std::clamp((x - kEnd) / std::max(1.0, width() - 2 * kEnd), 0.0, 1.0);
    setValue(minimum() + static_cast<int>(std::lround(share * (maximum() - minimum()))));
}

void Slider::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        setSliderDown(true);
        goTo(event->position().x());
        event->accept();
    }
}

void Slider::mouseMoveEvent(QMouseEvent* event) {
    if (isSliderDown()) {
        goTo(event->position().x());
    }
}

void Slider::mouseReleaseEvent(QMouseEvent*) {
    setSliderDown(false);
}

/// The wheel is the panel's.
void Slider::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

void Slider::focusInEvent(QFocusEvent* event) {
    byKeyboard_ = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    QSlider::focusInEvent(event);
}

void Slider::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double middle = height() / 2.0;
    const double x = knobX();
    const QRectF track(0, middle - kTrack / 2, width(), kTrack);
    Painting::roundedBox(painter, track, kTrack / 2, Theme::withOpacity(Theme::track(), 0.20), Qt::transparent);
    if (isEnabled()) {
        Painting::roundedBox(painter, QRectF(track.topLeft(), QSizeF(x, kTrack)), kTrack / 2, Theme::brand,
                             Qt::transparent);
    }
    const double across = isEnabled() && (underMouse() || isSliderDown()) ? kKnobHovered : kKnob;
    const QRectF knob(x - across / 2, middle - across / 2, across, across);
    Painting::roundedBox(painter, knob, across / 2, isEnabled() ? Theme::sand : Theme::disabledText(), Qt::transparent);
    if (byKeyboard_ && hasFocus()) {
        Painting::focusRing(painter, knob, across / 2);
    }
}

} // namespace velmo
