#include "ui/ModeTile.h"

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

constexpr int kHeight = 72;
constexpr int kIcon = 24;
constexpr int kTextTop = 42;
constexpr int kTextBottom = 10;
constexpr double kRadius = 12;

} // namespace

ModeTile::ModeTile(QString symbol, const QString& text, QWidget* parent)
    : QAbstractButton(parent), symbol_(std::move(symbol)) {
    setText(text);
    setCheckable(true);
    setAutoExclusive(true);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    new FocusRing(*this, kRadius);
}

QSize ModeTile::sizeHint() const {
    const QFontMetricsF metrics(Type::font(TextStyle::strong));
    return {static_cast<int>(std::ceil(metrics.horizontalAdvance(text()))) + 20, Type::heightFor(kHeight)};
}

void ModeTile::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QColor fill = isChecked() ? Theme::chosen() : underMouse() ? Theme::surface2 : Theme::surface;
    Painting::roundedBox(painter, rect(), kRadius, fill, isChecked() ? Theme::chosenOutline() : Theme::border);
    Symbol::paint(painter, QRectF(0, 12, width(), kIcon), symbol_, kIcon, isChecked() ? Theme::sky : Theme::muted);
    painter.setFont(Type::font(isChecked() ? TextStyle::strong : TextStyle::label));
    painter.setPen(isChecked() ? Theme::sand : Theme::muted);
    painter.drawText(QRectF(0, kTextTop, width(), height() - kTextTop - kTextBottom), Qt::AlignCenter, text());
}

} // namespace velmo
