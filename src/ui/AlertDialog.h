#pragma once

#include "ui/DialogWindow.h"

#include <QString>
#include <QStringList>

#include <vector>

class QHBoxLayout;
class QVBoxLayout;

namespace velmo {

class Button;

/// A message with buttons. Main thread; it never blocks: `chosen` comes once, also when the user closes it.
///
///     auto* dialog = new AlertDialog({AlertDialog::Icon::information, message, informative, {"Aceptar"}});
///     connect(dialog, &AlertDialog::chosen, ...);
///     dialog->present();
///
/// Nobody keeps it: with `Qt::WA_DeleteOnClose`, set by default, it goes by itself after `chosen`.
class AlertDialog final : public DialogWindow {
    Q_OBJECT
public:
    enum class Icon {
        information,
        warning,
        loss, ///< something would be thrown away
    };
    enum class First {
        isDefault,     ///< Return chooses the first button
        isDestructive, ///< it is red and never has the focus; the last button has
    };
    struct Content {
        Icon icon = Icon::information;
        QString message;
        QString informative; ///< plain, or rich text with links; may be empty
        QStringList buttons; ///< from first to last; the first stands at the right
        First first = First::isDefault;
    };

    explicit AlertDialog(const Content& content, QWidget* parent = nullptr);

    /// What closing without a button means: the last one, which keeps the work.
    int answerOnClose() const { return static_cast<int>(buttons_.size()) - 1; }

    /// Escape and the window manager's close.
    void reject() override;

signals:
    /// Index of the button.
    void chosen(int button);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void addText(const Content& content, QVBoxLayout& column);
    void addButtons(const Content& content, QVBoxLayout& column);
    void answer(int button);

    std::vector<Button*> buttons_;
    First first_;
    bool answered_ = false;
};

} // namespace velmo
