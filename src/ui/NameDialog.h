#pragma once

#include "ui/DialogWindow.h"

#include <QString>

class QVBoxLayout;

namespace velmo {

class Button;
class TextField;

/// Asks for a name, which is not of blanks alone. Main thread; it never blocks. Goes by itself when it is closed.
class NameDialog final : public DialogWindow {
    Q_OBJECT
public:
    struct Content {
        QString title;
        QString explanation{}; ///< below the title; may be empty
        QString placeholder{};
        QString name{}; ///< to begin with, all of it selected
        int mostText;   ///< characters
    };

    explicit NameDialog(const Content& content, QWidget* parent = nullptr);

signals:
    /// The user wants this name, as it was typed; nothing is said about whether it can be had.
    void saved(const QString& name);

private:
    void addText(const Content& content, QVBoxLayout& column);
    void save();

    TextField* name_;
    Button* save_;
};

} // namespace velmo
