#include "ui/Swatch.h"

#include "ui/FocusRing.h"
#include "ui/Theme.h"

#include <QConicalGradient>
#include <QPainter>

#include <utility>

namespace velmo {

namespace {

constexpr int kRoom = 4; ///< a gap of two and a ring of two
constexpr int kAcross = 30 + 2 * kRoom;

} // namespace

Swatch::Swatch(const QString& name, std::vector<QColor> colors, QWidget* parent)
    : QAbstractButton(parent), colors_(std::move(colors)) {
    setText(name);
    setToolTip(name);
    setCheckable(true);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setFixedSize(sizeHint());
    new FocusRing(*this, kAcross / 2.0);
}

QSize Swatch::sizeHint() const {
    return {kAcross, kAcross};
}

void Swatch::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF disc = QRectF(rect()).adjusted(kRoom, kRoom, -kRoom, -kRoom);
    QConicalGradient turn(disc.center(), 90);
    for (std::size_t i = 0; i <= colors_.size(); ++i) { // the first once more, to close the round
        turn.setColorAt(static_cast<double>(i) / static_cast<double>(colors_.size()), colors_[i % colors_.size()]);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(turn);
    painter.drawEllipse(disc);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Theme::withOpacity(Theme::sand, underMouse() ? 0.6 : 0.3), 1));
    painter.drawEllipse(disc.adjusted(0.5, 0.5, -0.5, -0.5));
    if (isChecked()) {
        painter.setPen(QPen(Theme::skyBright, 2));
        painter.drawEllipse(QRectF(rect()).adjusted(1, 1, -1, -1));
    }
}

} // namespace velmo
