#include "panels/ClockLabel.h"

#include "ui/Theme.h"
#include "ui/Type.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace velmo {

ClockLabel::ClockLabel(QWidget* parent) : QWidget(parent) {
    setFont(Type::font(TextStyle::clock));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void ClockLabel::setText(const QString& text) {
    if (text == text_) {
        return;
    }
    const bool grows = text.size() != text_.size();
    text_ = text;
    setAccessibleName(text);
    if (grows) {
        updateGeometry();
    }
    update();
}

QSize ClockLabel::sizeHint() const {
    return {static_cast<int>(std::ceil(Type::tabularWidth(font(), text_))), Type::lineHeight(TextStyle::clock)};
}

void ClockLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setFont(font());
    painter.setPen(Theme::sand);
    const double baseline = std::round(height() / 2.0 + QFontMetricsF(font()).capHeight() / 2);
    Type::drawTabular(painter, QPointF(0, baseline), text_);
}

} // namespace velmo
