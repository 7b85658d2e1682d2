#pragma once

#include <QWidget>

namespace velmo {

class Prefs;

/// Which key the program's global keys are held with. Main thread.
class ShortcutKeyRow final : public QWidget {
    Q_OBJECT
public:
    /// `prefs` is borrowed.
    explicit ShortcutKeyRow(Prefs& prefs, QWidget* parent = nullptr);
};

} // namespace velmo
