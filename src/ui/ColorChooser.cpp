#include "ui/ColorChooser.h"

#include "ui/Painting.h"
#include "ui/Swatch.h"
#include "ui/Theme.h"
#include "ui/internal/ColorPlane.h"
#include "ui/internal/HueBar.h"

#include <QGridLayout>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace velmo {

namespace {

constexpr int kPadding = 14;
constexpr double kRadius = 12;
constexpr int kDotsInARow = 5;

} // namespace

ColorChooser::ColorChooser(const QColor& color, QWidget* parent)
    : QWidget(parent, Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint), plane_(new ColorPlane),
      hue_(new HueBar) {
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_DeleteOnClose);
    setAccessibleName(QStringLiteral("Elegir un color"));
    plane_->setColor(color);
    hue_->setValue(std::max(0, color.hsvHue()));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
    column->setSpacing(12);
    column->addWidget(plane_);
    column->addWidget(hue_);
    column->addWidget(makeDots());
    connect(plane_, &ColorPlane::moved, this, &ColorChooser::moved);
    connect(hue_, &QSlider::valueChanged, this, [this](int hue) {
        plane_->setHue(hue);
        moved();
    });
}

QWidget* ColorChooser::makeDots() {
    auto* dots = new QWidget;
    auto* grid = new QGridLayout(dots);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(2);
    for (std::size_t i = 0; i < Theme::ringColors.size(); ++i) {
        const QColor color = Theme::ringColors[i];
        auto* dot = new Swatch(Theme::hexString(color).value_or(QString()), {color});
        dot->setCheckable(false);
        connect(dot, &QAbstractButton::clicked, this, [this, color] {
            const QSignalBlocker quiet(hue_);
            hue_->setValue(std::max(0, color.hsvHue()));
            hue_->update();
            plane_->setColor(color);
            emit picked(color);
        });
        const int index = static_cast<int>(i);
        grid->addWidget(dot, index / kDotsInARow, index % kDotsInARow, Qt::AlignCenter);
    }
    return dots;
}

void ColorChooser::moved() {
    emit picked(plane_->color());
}

void ColorChooser::popUpAt(QPoint corner) {
    adjustSize();
    if (const QScreen* screen = QGuiApplication::screenAt(corner)) {
        const QRect free = screen->availableGeometry();
        corner.setX(std::clamp(corner.x(), free.left(), std::max(free.left(), free.right() - width())));
        corner.setY(std::clamp(corner.y(), free.top(), std::max(free.top(), free.bottom() - height())));
    }
    move(corner);
    show();
    plane_->setFocus(Qt::PopupFocusReason);
}

void ColorChooser::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void ColorChooser::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Painting::roundedBox(painter, rect(), kRadius, Theme::card(), Theme::strongBorder());
}

} // namespace velmo
