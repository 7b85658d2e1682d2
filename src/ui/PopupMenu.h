#pragma once

#include <QMenu>

namespace velmo {

/// A menu of the program's own look. Use it as any QMenu.
class PopupMenu final : public QMenu {
    Q_OBJECT
public:
    explicit PopupMenu(QWidget* parent = nullptr);

private:
    void markChecked();
};

} // namespace velmo
