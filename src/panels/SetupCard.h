#pragma once

#include "settings/DefaultsStore.h"
#include "ui/Disclosure.h"

#include <QWidget>

class QVBoxLayout;

namespace velmo {

/// A section that opens and closes, and remembers which under its key. Main thread.
class SetupCard final : public QWidget {
    Q_OBJECT
public:
    /// What switches keep free at their right for the focus ring; other rows leave it to line up with them.
    static constexpr int kSwitchRoom = 4;

    struct Head {
        QString title;
        QString symbol;
        QString key; ///< in the defaults store
        bool openByDefault = false;
    };

    /// `store` is borrowed and outlives the card.
    SetupCard(const Head& head, DefaultsStore& store, QWidget* parent = nullptr);

    /// Where what the card holds is added.
    QVBoxLayout& body() { return *body_; }
    bool isOpen() const { return head_->isChecked(); }
    void setOpen(bool open);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Disclosure* head_;
    QWidget* contents_;
    QVBoxLayout* body_;
};

} // namespace velmo
