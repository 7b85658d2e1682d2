#include "ui/SymbolLabel.h"

#include "ui/Symbol.h"

#include <QPainter>

#include <utility>

namespace velmo {

SymbolLabel::SymbolLabel(QString symbol, int size, QColor color, QWidget* parent)
    : QWidget(parent), symbol_(std::move(symbol)), size_(size), color_(color) {
    setFixedSize(size, size);
}

void SymbolLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Symbol::paint(painter, rect(), symbol_, size_, color_);
}

} // namespace velmo
