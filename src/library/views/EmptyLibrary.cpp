#include "library/views/EmptyLibrary.h"

#include "library/views/BoardPreview.h"
#include "ui/Button.h"
#include "ui/Label.h"
#include "ui/Painting.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>

namespace velmo {

namespace {

constexpr int kWidth = 720;
constexpr int kHeight = 488;
constexpr double kRadius = 20;

QLabel* makeHint(const QString& text) {
    return makeLabel(text, TextStyle::caption, Theme::muted);
}

QLabel* makeKeyCap(const QString& text) {
    auto* cap = makeHint(text);
    QFont font = cap->font();
    font.setWeight(QFont::DemiBold);
    cap->setFont(font);
    cap->setStyleSheet(QStringLiteral("QLabel { color: %1; background: %2; border: 1px solid %3; border-radius: 6px;"
                                      " padding: 2px 7px; }")
                           .arg(Theme::sand.name(), Theme::surface2.name(QColor::HexArgb),
                                Theme::strongBorder().name(QColor::HexArgb)));
    return cap;
}

} // namespace

EmptyLibrary::EmptyLibrary(const QString& place, QWidget* parent) : QWidget(parent) {
    auto* record = new Button(ButtonStyle::primaryLarge, QStringLiteral("Grabar ahora"));
    record->setSymbol(QStringLiteral("circle.fill"));
    connect(record, &Button::clicked, this, &EmptyLibrary::recordRequested);

    auto* hint = new QHBoxLayout;
    hint->setSpacing(6);
    hint->addStretch();
    hint->addWidget(makeHint(QStringLiteral("Atajo:")));
    hint->addWidget(key_ = makeKeyCap({}));
    setShortcutModifier(ShortcutModifier::control);
    hint->addWidget(makeHint(QStringLiteral("desde cualquier app · Los videos se guardan en ") + place));
    hint->addStretch();

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 24);
    column->setSpacing(0);
    column->addStretch();
    column->addWidget(new BoardPreview, 0, Qt::AlignHCenter);
    column->addSpacing(20);
    column->addWidget(record, 0, Qt::AlignHCenter);
    column->addSpacing(10);
    column->addLayout(hint);
    column->addStretch();
    setMinimumHeight(440);
}

void EmptyLibrary::setShortcutModifier(ShortcutModifier modifier) {
    key_->setText(shortcutText(QStringLiteral("⌃G"), modifier));
}

QRectF EmptyLibrary::card() const {
    const double width = std::min<double>(Type::scaled(kWidth), this->width());
    const double height = std::min<double>(Type::heightFor(kHeight), this->height() - 24);
    return {(this->width() - width) / 2, (this->height() - 24 - height) / 2, width, height};
}

void EmptyLibrary::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Painting::roundedBox(painter, card(), kRadius, Theme::surface, Theme::border);
}

} // namespace velmo
