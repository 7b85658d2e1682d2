#pragma once

#include "app/Shortcuts.h"
#include "ui/DialogWindow.h"

class QLabel;

namespace velmo {

class ShortcutsTable;

/// The window of `Shortcuts`: its message, its introduction, its table, "Listo". Goes by itself when closed; never
/// blocks. Main thread.
class ShortcutsDialog final : public DialogWindow {
    Q_OBJECT

public:
    explicit ShortcutsDialog(const Shortcuts::State& state, QWidget* parent = nullptr);

    void setState(const Shortcuts::State& state);

private:
    void fitTable();

    QLabel* introduction_;
    ShortcutsTable* table_;
    class FittingScrollArea* scroll_ = nullptr;
};

} // namespace velmo
