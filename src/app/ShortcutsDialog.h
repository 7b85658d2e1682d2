#pragma once

#include "ui/DialogWindow.h"

namespace velmo {

/// The window of `Shortcuts`: its message, its introduction, its table, "Listo". Goes by itself when closed; never
/// blocks. Main thread.
class ShortcutsDialog final : public DialogWindow {
    Q_OBJECT

public:
    explicit ShortcutsDialog(QWidget* parent = nullptr);
};

} // namespace velmo
