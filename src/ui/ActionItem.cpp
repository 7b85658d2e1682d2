#include "ui/ActionItem.h"

#include <utility>

namespace velmo {

ActionItem::ActionItem(const QString& title, const QKeySequence& key, std::function<void()> callback, QObject* parent)
    : QAction(title, parent), callback_(std::move(callback)) {
    setShortcut(key);
    setEnabled(static_cast<bool>(callback_));
    setMenuRole(QAction::NoRole);
    connect(this, &QAction::triggered, this, &ActionItem::fire);
}

void ActionItem::fire() const {
    if (callback_) {
        callback_();
    }
}

} // namespace velmo
