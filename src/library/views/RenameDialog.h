#pragma once

#include "ui/DialogWindow.h"

#include <QString>

class QLineEdit;

namespace velmo {

/// Asks for a recording's new title. Main thread; it never blocks. Goes by itself when it is closed.
class RenameDialog final : public DialogWindow {
    Q_OBJECT

public:
    explicit RenameDialog(const QString& title, QWidget* parent = nullptr);

signals:
    /// The user wants this title; nothing is said about whether it can be had.
    void saved(const QString& title);

private:
    void save();

    QLineEdit* name_;
};

} // namespace velmo
