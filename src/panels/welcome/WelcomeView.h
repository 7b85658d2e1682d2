#pragma once

#include <QTimer>
#include <QWidget>

#include <functional>

namespace velmo {

class Permissions;
class PermissionRow;

/// The first thing that a new user sees: what the program needs and whether it has it. The rows follow what changes
/// while the view is seen. Main thread.
class WelcomeView final : public QWidget {
    Q_OBJECT
public:
    /// `permissions` is borrowed. `onDone` is "Empezar".
    WelcomeView(Permissions& permissions, std::function<void()> onDone, QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QWidget* makeRows();
    void showStates();

    Permissions& permissions_;
    PermissionRow* screen_;
    PermissionRow* camera_;
    PermissionRow* microphone_;
    QTimer plugged_; ///< devices that come are seen without a click
};

} // namespace velmo
