#include "panels/ZoomGroup.h"

#include "ui/Button.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QFontMetricsF>
#include <QHBoxLayout>
#include <QPainter>

#include <cmath>

namespace velmo {

namespace {

constexpr int kHeight = 42;
constexpr double kRadius = 12;
constexpr int kHead = 54; ///< the room of the heading and the level
constexpr int kLeft = 12;
constexpr int kBetween = 7; ///< the capitals of the two lines
constexpr int kRight = 3;
constexpr double kOutline = 0.55;

} // namespace

ZoomGroup::ZoomGroup(QWidget* parent) : QWidget(parent), row_(new QHBoxLayout(this)) {
    setFixedHeight(kHeight);
    row_->setContentsMargins(Type::scaled(kHead), 0, kRight, 0);
    row_->setSpacing(0);
    setLevel(1);
}

void ZoomGroup::add(Button* button) {
    row_->addWidget(button, 0, Qt::AlignVCenter);
}

void ZoomGroup::setLevel(double level) {
    level_ = textFor(level);
    setAccessibleName(QStringLiteral("Zoom ") + level_);
    update(0, 0, Type::scaled(kHead), height());
}

QString ZoomGroup::textFor(double level) {
    return QString::number(level, 'f', 1) + QStringLiteral("×");
}

void ZoomGroup::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Theme::withOpacity(Theme::skyBright, kOutline), 1));
    painter.setBrush(Theme::lit());
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
    const QFont headFont = Type::font(TextStyle::zoomHead);
    const QFont levelFont = Type::font(TextStyle::strong);
    const double head = QFontMetricsF(headFont).capHeight();
    const double level = QFontMetricsF(levelFont).capHeight();
    const double top = (height() - head - kBetween - level) / 2;
    painter.setPen(Theme::sky);
    painter.setFont(headFont);
    painter.drawText(QPointF(kLeft, std::round(top + head)), QStringLiteral("ZOOM"));
    painter.setPen(Theme::sand);
    painter.setFont(levelFont);
    painter.drawText(QPointF(kLeft, std::round(top + head + kBetween + level)), level_);
}

} // namespace velmo
