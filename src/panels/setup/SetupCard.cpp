#include "panels/setup/SetupCard.h"

#include "panels/setup/Rows.h"
#include "ui/FittingScrollArea.h"
#include "ui/Painting.h"
#include "ui/Theme.h"

#include <QPainter>
#include <QVBoxLayout>

namespace velmo {

namespace {

constexpr int kSide = 12;

} // namespace

SetupCard::SetupCard(const Head& head, DefaultsStore& store, QWidget* contents, QWidget* parent)
    : QWidget(parent), head_(new Disclosure(head.symbol, head.title, Disclosure::Chevron::atEnd)) {
    setAccessibleName(head.title);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(head_);
    auto* box = new QWidget; // shown and hidden as a whole
    auto* inside = new QVBoxLayout(box);
    inside->setContentsMargins(kSide - Rows::kRoom, 0, kSide - Rows::kRoom, 14);
    inside->addWidget(contents);
    column->addWidget(box);
    connect(head_, &QAbstractButton::toggled, box, [box](bool nowOpen) {
        box->setVisible(nowOpen);
        FittingScrollArea::settle(*box);
    });
    const bool open = store.boolean(head.key).value_or(head.openByDefault);
    head_->setChecked(open);
    box->setVisible(open);
    connect(head_, &QAbstractButton::toggled, this,
            [&store, key = head.key](bool nowOpen) { store.setBoolean(key, nowOpen); });
}

void SetupCard::setOpen(bool open) {
    head_->setChecked(open);
}

void SetupCard::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Painting::roundedBox(painter, rect(), 12, Theme::surface, Theme::border);
}

} // namespace velmo
