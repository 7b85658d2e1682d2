#pragma once

#include <QAction>
#include <QKeySequence>

#include <functional>

namespace velmo {

/// A menu item that carries a callback and is its own target. Main thread.
class ActionItem final : public QAction {
    Q_OBJECT

public:
    /// An empty `key` is no key. An empty `callback` makes a disabled item.
    ActionItem(const QString& title, const QKeySequence& key, std::function<void()> callback, QObject* parent);

    void fire() const;

private:
    std::function<void()> callback_;
};

} // namespace velmo
