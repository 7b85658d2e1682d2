#include "app/MainMenu.h"
#include "ui/ActionItem.h"

#include "app/Credit.h"

#include <QMenu>
#include <QMenuBar>

#include <gmock/gmock.h>

namespace velmo {
namespace {

using Action = ShellAction;

QStringList lines(const MainMenuSection& section) {
    QStringList all;
    for (const MainMenuEntry& entry : section.entries) {
        const QString key = entry.key.toString(QKeySequence::PortableText);
        all << (entry.action ? entry.title + (key.isEmpty() ? QString() : " [" + key + "]") : QStringLiteral("-"));
    }
    return all;
}

TEST(MainMenu, HasItsMenusAndEntriesInOrderWithTheirKeys) {
    const auto menu = mainMenu();
    ASSERT_EQ(menu.size(), 5U);
    EXPECT_EQ(menu[0].title, "Velmo Studio");
    EXPECT_EQ(lines(menu[0]), QStringList({"Acerca de Velmo Studio", "-", "Ocultar Velmo Studio [Ctrl+H]", "-",
                                           "Salir de Velmo Studio [Ctrl+Q]"}));
    EXPECT_EQ(menu[1].title, "Archivo");
    EXPECT_EQ(lines(menu[1]), QStringList({"Nueva grabación… [Ctrl+N]", "Biblioteca [Ctrl+L]",
                                           "Abrir carpeta de videos", "-", "Velmo Quadrel [Ctrl+Shift+P]"}));
    EXPECT_EQ(menu[2].title, "Edición");
    EXPECT_EQ(lines(menu[2]), QStringList({"Deshacer [Ctrl+Z]", "-", "Cortar [Ctrl+X]", "Copiar [Ctrl+C]",
                                           "Pegar [Ctrl+V]", "Seleccionar todo [Ctrl+A]"}));
    EXPECT_EQ(menu[3].title, "Ventana");
    EXPECT_EQ(lines(menu[3]), QStringList({"Minimizar [Ctrl+M]", "Cerrar [Ctrl+W]"}));
    EXPECT_EQ(menu[4].title, "Ayuda");
    EXPECT_EQ(lines(menu[4]), QStringList({"Revisar permisos…", "Atajos de teclado", "-", "Licencias de terceros",
                                           QString::fromUtf8(Credit::site)}));
}

TEST(MainMenu, EachEntryCallsItsOwnAction) {
    const std::vector<std::vector<Action>> expected{
        {Action::about, Action::hide, Action::quit},
        {Action::openSetup, Action::openLibrary, Action::openFolder, Action::openQuadrel},
        {Action::undo, Action::cut, Action::copy, Action::paste, Action::selectAll},
        {Action::minimize, Action::close},
        {Action::reviewPermissions, Action::showShortcuts, Action::openNotices, Action::openSite}};
    ShellActions actions;
    std::vector<Action> called;
    for (std::size_t action = 0; action < static_cast<std::size_t>(Action::count); ++action) {
        actions.set(static_cast<Action>(action), [&called, action] { called.push_back(static_cast<Action>(action)); });
    }
    QMenuBar bar;
    buildMainMenu(bar, actions);
    ASSERT_EQ(bar.actions().size(), 5);
    for (int section = 0; section < 5; ++section) {
        called.clear();
        for (QAction* item : bar.actions()[section]->menu()->actions()) {
            item->trigger();
        }
        EXPECT_EQ(called, expected[static_cast<std::size_t>(section)]);
    }
}

TEST(MainMenu, AnEntryOfAPartThatIsNotThereIsDisabled) {
    ShellActions actions;
    actions.set(Action::openLibrary, [] {});
    QMenuBar bar;
    buildMainMenu(bar, actions);
    for (QAction* item : bar.actions()[1]->menu()->actions()) {
        if (!item->isSeparator()) {
            EXPECT_EQ(item->isEnabled(), item->text() == "Biblioteca") << item->text().toStdString();
        }
    }
}

TEST(ActionItem, IsItsOwnTarget) {
    int fired = 0;
    ActionItem item(
        "Copiar", Qt::CTRL | Qt::Key_C, [&fired] { ++fired; }, nullptr);
    item.trigger();
    item.fire();
    EXPECT_EQ(fired, 2);
    EXPECT_EQ(item.shortcut(), QKeySequence(Qt::CTRL | Qt::Key_C));
}

} // namespace
} // namespace velmo
