#include "ui/LogoMark.h"

#include <QPainter>
#include <QSvgRenderer>

namespace velmo {

LogoMark::LogoMark(int size, QWidget* parent) : QWidget(parent) {
    setFixedSize(size, size);
}

void LogoMark::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QSvgRenderer(QStringLiteral(":/velmo/icons/logo.svg")).render(&painter, rect());
}

} // namespace velmo
