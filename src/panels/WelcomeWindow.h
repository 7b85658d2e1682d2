#pragma once

#include "panels/welcome/Permissions.h"
#include "settings/Prefs.h"
#include "ui/DialogWindow.h"

#include <QPixmap>

#include <functional>

namespace velmo {

/// The window of the first run, made once: explains what the program needs and gets it given. Main thread.
class WelcomeWindow final : public DialogWindow {
    Q_OBJECT
public:
    /// `prefs` and what `services` refers to are borrowed. `onDone` is called when the user begins.
    WelcomeWindow(Permissions::Services services, Prefs& prefs, std::function<void()> onDone = {});
    ~WelcomeWindow() override;

    Permissions& permissions() { return permissions_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QSize cardSize() const;

    Permissions permissions_;
    class Button* close_;
};

} // namespace velmo
