#include "ui/SwitchRow.h"

#include "ui/Label.h"
#include "ui/Switch.h"
#include "ui/Theme.h"

#include <QGridLayout>
#include <QMouseEvent>

namespace velmo {

namespace {

constexpr int kSwitchColumn = 46;

} // namespace

SwitchRow::SwitchRow(const QString& text, const QString& hint, QWidget* parent)
    : QWidget(parent), switch_(new Switch(text)) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(0); // the switch beside the label leaves enough
    grid->addWidget(makeWrappedLabel(text, TextStyle::label, Theme::sand), 0, 0);
    grid->addWidget(switch_, 0, 1, Qt::AlignRight | Qt::AlignVCenter);
    if (!hint.isEmpty()) {
        hint_ = makeWrappedLabel({}, TextStyle::caption, Theme::muted);
        grid->addWidget(hint_, 1, 0);
        setHint(hint);
    }
    grid->setColumnStretch(0, 1);
    grid->setColumnMinimumWidth(1, kSwitchColumn);
    // Clicked, not toggled: what the program sets itself is no news.
    connect(switch_, &QAbstractButton::clicked, this, &SwitchRow::switched);
}

void SwitchRow::setHint(const QString& hint) {
    hint_->setText(hint);
    switch_->setAccessibleDescription(hint);
}

void SwitchRow::setOn(bool on) {
    switch_->setChecked(on);
}

bool SwitchRow::isOn() const {
    return switch_->isChecked();
}

void SwitchRow::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) {
        switch_->click();
    }
}

} // namespace velmo
