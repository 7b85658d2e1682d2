#include "ui/Disclosure.h"

#include "ui/FocusRing.h"
#include "ui/Painting.h"
#include "ui/Symbol.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>
#include <utility>

namespace velmo {

namespace {

constexpr int kHeight = 42;
constexpr int kPadding = 12;
constexpr int kIcon = 16;
constexpr int kGap = 10;
constexpr double kRadius = 9;
constexpr int kRingInset = 2;

} // namespace

Disclosure::Disclosure(QString symbol, const QString& text, Chevron chevron, QWidget* parent)
    : QAbstractButton(parent), symbol_(std::move(symbol)), chevron_(chevron) {
    setText(text);
    setFont(Type::font(chevron == Chevron::atEnd ? TextStyle::strong : TextStyle::label));
    setCheckable(true);
    new FocusRing(*this, kRadius, QMargins(kRingInset, 4, kRingInset, 4));
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(chevron == Chevron::atEnd ? QSizePolicy::Expanding : QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize Disclosure::sizeHint() const {
    const double text = QFontMetricsF(font()).horizontalAdvance(this->text());
    const int icon = symbol_.isEmpty() ? 0 : kIcon + kGap;
    return {static_cast<int>(std::ceil(text)) + icon + kGap + kIcon + 2 * kPadding, Type::heightFor(kHeight)};
}

void Disclosure::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const bool atEnd = chevron_ == Chevron::atEnd;
    if (underMouse() && !atEnd) {
        Painting::roundedBox(painter, QRectF(rect()).adjusted(0, 4, 0, -4), kRadius, Theme::surface2, Qt::transparent);
    }
    double x = kPadding;
    if (!symbol_.isEmpty()) {
        Symbol::paint(painter, QRectF(x, 0, kIcon, height()), symbol_, kIcon, Theme::mint);
        x += kIcon + kGap;
    }
    const QFontMetricsF metrics(font());
    painter.setFont(font());
    painter.setPen(Theme::sand);
    painter.drawText(QPointF(x, std::round(height() / 2.0 + metrics.capHeight() / 2)), text());
    Symbol::paint(painter, QRectF(width() - kPadding - kIcon, 0, kIcon, height()),
                  isChecked() ? QStringLiteral("chevron.up") : QStringLiteral("chevron.down"), kIcon,
                  underMouse() ? Theme::sand : Theme::muted);
}

} // namespace velmo
