#include "ui/IconTile.h"

#include "ui/Painting.h"
#include "ui/Symbol.h"

#include <QPainter>

#include <utility>

namespace velmo {

IconTile::IconTile(QString symbol, QColor ink, QColor tint, QWidget* parent, int size)
    : QWidget(parent), symbol_(std::move(symbol)), ink_(ink), tint_(tint) {
    setFixedSize(size, size);
}

void IconTile::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Painting::roundedBox(painter, rect(), 12, tint_, Qt::transparent);
    Symbol::paint(painter, rect(), symbol_, width() * 11 / 21, ink_);
}

} // namespace velmo
