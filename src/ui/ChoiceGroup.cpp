#include "ui/ChoiceGroup.h"

#include <QAbstractButton>

#include <algorithm>

namespace velmo {

ChoiceGroup::ChoiceGroup(const QString& name, QWidget* parent) : QWidget(parent) {
    setAccessibleName(name);
}

void ChoiceGroup::add(const QString& id, QAbstractButton* button) {
    button->setParent(this);
    button->setCheckable(true);
    button->setAutoExclusive(true); // among the children of this widget
    buttons_.push_back(button);
    ids_.push_back(id);
    connect(button, &QAbstractButton::clicked, this, [this, id] { choose(id); });
    guideTab();
}

void ChoiceGroup::setCurrent(const QString& id) {
    const auto found = std::find(ids_.begin(), ids_.end(), id);
    current_ = found == ids_.end() ? QString() : id;
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        const bool on = found == ids_.begin() + static_cast<std::ptrdiff_t>(i);
        if (!on && buttons_[i]->isChecked()) { // an exclusive button cannot be switched off otherwise
            buttons_[i]->setAutoExclusive(false);
            buttons_[i]->setChecked(false);
            buttons_[i]->setAutoExclusive(true);
        }
        if (on) {
            buttons_[i]->setChecked(true);
        }
    }
    guideTab();
}

/// Tab stops once in the group: at what is chosen, else at the first.
void ChoiceGroup::guideTab() {
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        const bool stop = current_.isEmpty() ? i == 0 : ids_[i] == current_;
        buttons_[i]->setFocusPolicy(stop ? Qt::StrongFocus : Qt::ClickFocus);
    }
}

QString ChoiceGroup::current() const {
    return current_;
}

void ChoiceGroup::choose(const QString& id) {
    if (id != current_) {
        current_ = id;
        guideTab();
        emit picked(id);
    }
}

} // namespace velmo
