#include "surfaces/internal/PaletteDot.h"

#include "ui/Painting.h"
#include "ui/Theme.h"

#include <QEnterEvent>
#include <QPainter>

namespace velmo {

namespace {

constexpr double kRadius = 10;

} // namespace

PaletteDot::PaletteDot(Choice choice, const QString& name, const QColor& color, double diameter)
    : choice_(choice), color_(color), diameter_(diameter),
      hover_(this, Fade::kHover, QEasingCurve::Linear, [this] { update(); }) {
    setCheckable(true);
    setToolTip(name);
    setAccessibleName(name);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
}

void PaletteDot::enterEvent(QEnterEvent* event) {
    hover_.moveTo(1);
    QAbstractButton::enterEvent(event);
}

void PaletteDot::leaveEvent(QEvent* event) {
    hover_.moveTo(0);
    QAbstractButton::leaveEvent(event);
}

void PaletteDot::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QRectF dot(0, 0, diameter_, diameter_);
    dot.moveCenter(QRectF(rect()).center());
    choice_ == Choice::color ? paintColor(painter, dot) : paintWidth(painter, dot);
}

void PaletteDot::paintColor(QPainter& painter, const QRectF& dot) const {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color_);
    painter.drawEllipse(dot);
    painter.setBrush(Qt::NoBrush);
    const double rim = isDown() ? 0.8 : 0.3 + 0.3 * hover_.value();
    painter.setPen(QPen(Theme::withOpacity(Theme::sand, rim), 1));
    painter.drawEllipse(dot.adjusted(0.5, 0.5, -0.5, -0.5));
    if (isChecked()) {
        painter.setPen(QPen(Theme::sand, 2));
        painter.drawEllipse(dot.adjusted(-3, -3, 3, 3)); // two points of floor between
    }
}

void PaletteDot::paintWidth(QPainter& painter, const QRectF& dot) const {
    QColor fill = Theme::withOpacity(Theme::surface2, Theme::surface2.alphaF() * hover_.value());
    if (isDown()) {
        fill = Theme::over(Theme::surface2, Theme::surface2);
    } else if (isChecked()) {
        fill = Theme::lit();
    }
    Painting::roundedBox(painter, rect(), kRadius, fill, isChecked() ? Theme::litOutline() : QColor(Qt::transparent));
    painter.setPen(Qt::NoPen);
    painter.setBrush(isChecked() ? Theme::sky : Theme::withOpacity(Theme::sand, 0.9 + 0.1 * hover_.value()));
    painter.drawEllipse(dot);
}

} // namespace velmo
