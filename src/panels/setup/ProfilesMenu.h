#pragma once

#include <QPointer>
#include <QWidget>

namespace velmo {

class NameDialog;
class PopupMenu;
class SettingsProfiles;

/// The button that keeps the panel under a name and brings it back. Main thread.
class ProfilesMenu final : public QWidget {
    Q_OBJECT
public:
    /// Borrowed.
    explicit ProfilesMenu(SettingsProfiles& profiles, QWidget* parent = nullptr);

    /// The menu as it would open now; the caller owns it.
    PopupMenu* makeMenu();

private:
    void open();
    void askForName();
    void refresh();

    SettingsProfiles& profiles_;
    class Opener;
    Opener* opener_;
    QPointer<NameDialog> question_; ///< goes by itself
};

} // namespace velmo
