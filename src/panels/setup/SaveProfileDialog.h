#pragma once

#include "ui/DialogWindow.h"

#include <QString>

namespace velmo {

class Button;
class TextField;

/// Asks under which name the settings are to be kept. Main thread; it never blocks. Goes by itself when it is closed.
class SaveProfileDialog final : public DialogWindow {
    Q_OBJECT
public:
    explicit SaveProfileDialog(QWidget* parent = nullptr);

signals:
    void saved(const QString& name);

private:
    void save();

    TextField* name_;
    Button* save_;
};

} // namespace velmo
