#include "panels/ZoomGroup.h"

#include "ui/Button.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QHBoxLayout>
#include <QPainter>

namespace velmo {

namespace {

constexpr int kHeight = 42;
constexpr double kRadius = 12;
constexpr int kHead = 54; ///< the room of the heading and the level
constexpr int kLeft = 12;
constexpr int kRight = 3;
constexpr double kOutline = 0.55;

} // namespace

ZoomGroup::ZoomGroup(QWidget* parent) : QWidget(parent), row_(new QHBoxLayout(this)) {
    setFixedHeight(kHeight);
    row_->setContentsMargins(kHead, 0, kRight, 0);
    row_->setSpacing(0);
    setLevel(1);
}

void ZoomGroup::add(Button* button) {
    row_->addWidget(button, 0, Qt::AlignVCenter);
}

void ZoomGroup::setLevel(double level) {
    level_ = textFor(level);
    setAccessibleName(QStringLiteral("Zoom ") + level_);
    update(0, 0, kHead, height());
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
    painter.setPen(Theme::sky);
    painter.setFont(Type::font(TextStyle::zoomHead));
    painter.drawText(QRectF(kLeft, 7, kHead - kLeft, 12), Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("ZOOM"));
    painter.setPen(Theme::sand);
    painter.setFont(Type::font(TextStyle::strong));
    painter.drawText(QRectF(kLeft, 19, kHead - kLeft, 18), Qt::AlignLeft | Qt::AlignVCenter, level_);
}

} // namespace velmo
