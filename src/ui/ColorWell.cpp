#include "ui/ColorWell.h"

#include "ui/ColorChooser.h"
#include "ui/FocusRing.h"
#include "ui/Painting.h"
#include "ui/Theme.h"

#include <QPainter>

namespace velmo {

namespace {

constexpr int kWidth = 26;
constexpr int kHeight = 20;
constexpr double kRadius = 6;

} // namespace

ColorWell::ColorWell(const QString& name, QWidget* parent) : QAbstractButton(parent) {
    setAccessibleName(name);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setFixedSize(sizeHint());
    new FocusRing(*this, kRadius);
    connect(this, &QAbstractButton::clicked, this, &ColorWell::open);
}

QSize ColorWell::sizeHint() const {
    return {kWidth, kHeight};
}

void ColorWell::setColor(const QColor& color) {
    color_ = color;
    setAccessibleDescription(Theme::hexString(color).value_or(QString()));
    update();
}

void ColorWell::open() {
    auto* chooser = new ColorChooser(color_, this); // goes by itself
    connect(chooser, &ColorChooser::picked, this, [this](const QColor& color) {
        setColor(color);
        emit picked(color);
    });
    chooser->popUpAt(mapToGlobal(QPoint(0, height() + 6)));
}

void ColorWell::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Painting::roundedBox(painter, rect(), kRadius, color_, Theme::withOpacity(Theme::sand, underMouse() ? 0.6 : 0.3));
}

} // namespace velmo
