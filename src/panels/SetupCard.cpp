#include "panels/SetupCard.h"

#include "ui/Painting.h"
#include "ui/Theme.h"

#include <QPainter>
#include <QVBoxLayout>

namespace velmo {

SetupCard::SetupCard(const Head& head, DefaultsStore& store, QWidget* parent)
    : QWidget(parent), head_(new Disclosure(head.symbol, head.title, Disclosure::Chevron::atEnd)),
      contents_(new QWidget), body_(new QVBoxLayout(contents_)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(head_);
    column->addWidget(contents_);
    body_->setContentsMargins(12, 0, 12 - kSwitchRoom, 14);
    body_->setSpacing(12);
    connect(head_, &QAbstractButton::toggled, contents_, &QWidget::setVisible);
    const bool open = store.boolean(head.key).value_or(head.openByDefault);
    head_->setChecked(open);
    contents_->setVisible(open);
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
