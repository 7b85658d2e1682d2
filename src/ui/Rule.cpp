#include "ui/Rule.h"

#include "ui/Painting.h"
#include "ui/Theme.h"

#include <QPainter>

namespace velmo {

Rule::Rule(QWidget* parent) : QWidget(parent) {
    setFixedHeight(1);
}

void Rule::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Painting::hairline(painter, {0, 0}, {static_cast<double>(width()), 0}, Theme::border);
}

} // namespace velmo
