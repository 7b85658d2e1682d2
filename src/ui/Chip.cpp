#include "ui/Chip.h"

#include "ui/FocusRing.h"
#include "ui/Painting.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace velmo {

namespace {

constexpr int kHeight = 28;
constexpr int kPadding = 12;

QFont fontOf(bool checked) {
    QFont font = Type::font(TextStyle::chip);
    font.setWeight(checked ? QFont::DemiBold : QFont::Medium);
    return font;
}

} // namespace

Chip::Chip(const QString& text, QWidget* parent) : QAbstractButton(parent) {
    setText(text);
    setCheckable(true);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    new FocusRing(*this, Type::heightFor(kHeight) / 2.0);
}

QSize Chip::sizeHint() const {
    return {static_cast<int>(std::ceil(QFontMetricsF(fontOf(true)).horizontalAdvance(text()))) + 2 * kPadding,
            Type::heightFor(kHeight)};
}

void Chip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QColor rest = underMouse() ? Theme::surface2 : Theme::surface;
    Painting::roundedBox(painter, rect(), height() / 2.0, isChecked() ? Theme::lit() : rest,
                         isChecked() ? Theme::withOpacity(Theme::skyBright, 0.75) : Theme::border);
    painter.setFont(fontOf(isChecked()));
    painter.setPen(isChecked() ? Theme::sky : Theme::sand);
    painter.drawText(rect(), Qt::AlignCenter, text());
}

} // namespace velmo
