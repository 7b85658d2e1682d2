#include "ui/Switch.h"

#include "ui/Painting.h"
#include "ui/Theme.h"

#include <QFocusEvent>
#include <QPainter>

namespace velmo {

namespace {

constexpr int kWidth = 36;
constexpr int kHeight = 21;
constexpr int kRoom = 4; // for the focus ring
constexpr double kKnob = 15;
constexpr double kOff = 3;
constexpr double kOn = 18;

} // namespace

Switch::Switch(const QString& text, QWidget* parent)
    : QAbstractButton(parent), knob_(this, Fade::kSwitch, QEasingCurve::OutCubic, [this] { update(); }) {
    setCheckable(true);
    setText(text);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setFixedSize(sizeHint());
    connect(this, &QAbstractButton::toggled, this, [this](bool on) {
        if (isVisible()) {
            knob_.moveTo(on ? 1 : 0);
        } else {
            knob_.jump(on ? 1 : 0);
        }
    });
}

QSize Switch::sizeHint() const {
    return {kWidth + 2 * kRoom, kHeight + 2 * kRoom};
}

void Switch::focusInEvent(QFocusEvent* event) {
    showsFocus_ = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    QAbstractButton::focusInEvent(event);
}

void Switch::focusOutEvent(QFocusEvent* event) {
    showsFocus_ = false;
    QAbstractButton::focusOutEvent(event);
}

void Switch::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box(kRoom, kRoom, kWidth, kHeight);
    const double on = knob_.value();
    const QColor off = Theme::withOpacity(Theme::track(), underMouse() ? 0.26 : 0.18);
    Painting::roundedBox(painter, box, kHeight / 2.0, off, Theme::withOpacity(Theme::border, 0.16 * (1 - on)));
    Painting::roundedBox(painter, box, kHeight / 2.0, Theme::withOpacity(Theme::brand, on), Qt::transparent);
    const double width = kKnob + (isDown() ? 2 : 0);
    const double x = box.left() + kOff + (kOn - kOff) * on - (isDown() ? 2 * on : 0);
    painter.setPen(Qt::NoPen);
    painter.setBrush(on > 0.5 ? Theme::sand : Theme::muted);
    painter.drawRoundedRect(QRectF(x, box.top() + 3, width, kKnob), kKnob / 2, kKnob / 2);
    if (showsFocus_) {
        Painting::focusRing(painter, box, kHeight / 2.0);
    }
}

} // namespace velmo
