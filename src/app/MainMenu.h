#pragma once

#include "app/ShellAction.h"
#include "app/ShellActions.h"

#include <QKeySequence>
#include <QString>

#include <optional>
#include <vector>

class QMenuBar;

namespace velmo {

/// One entry of the main menu; a separator has no action.
struct MainMenuEntry {
    QString title;
    QKeySequence key; ///< with Control, as this desktop expects it
    std::optional<ShellAction> action;
};

struct MainMenuSection {
    QString title;
    std::vector<MainMenuEntry> entries;
};

/// The main menu as data, in its order. The first section is the application's own.
std::vector<MainMenuSection> mainMenu();

/// Fills `bar`. Each entry calls `actions`, which is borrowed and must outlive the bar.
void buildMainMenu(QMenuBar& bar, const ShellActions& actions);

} // namespace velmo
