#pragma once

#include "settings/DefaultsStore.h"
#include "ui/Disclosure.h"

#include <QWidget>

namespace velmo {

/// A section that opens and closes, and remembers which under its key. Main thread.
class SetupCard final : public QWidget {
    Q_OBJECT
public:
    struct Head {
        QString title;
        QString symbol;
        QString key; ///< in the defaults store
        bool openByDefault = false;
    };

    /// `store` is borrowed and outlives the card. `contents` is owned; `Rows::kRoom` at both
    /// its sides is room for marks of the focus.
    SetupCard(const Head& head, DefaultsStore& store, QWidget* contents, QWidget* parent = nullptr);

    bool isOpen() const { return head_->isChecked(); }
    void setOpen(bool open);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Disclosure* head_;
};

} // namespace velmo
