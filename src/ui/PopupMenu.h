#pragma once

#include <QMenu>

namespace velmo {

/// A menu of the program's own look, with a check mark at the right of what is checked. Use it as any QMenu.
class PopupMenu final : public QMenu {
    Q_OBJECT
public:
    explicit PopupMenu(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace velmo
