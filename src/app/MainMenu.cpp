#include "app/MainMenu.h"

#include "app/Credit.h"
#include "ui/ActionItem.h"

#include <QMenu>
#include <QMenuBar>

namespace velmo {
namespace {

MainMenuEntry entry(const char* title, ShellAction action, const QKeySequence& key = {}) {
    return {QString::fromUtf8(title), key, action};
}

MainMenuEntry separator() {
    return {};
}

} // namespace

std::vector<MainMenuSection> mainMenu() {
    using Action = ShellAction;
    return {
        {QStringLiteral("Velmo Studio"),
         {entry("Acerca de Velmo Studio", Action::about), separator(),
          entry("Ocultar Velmo Studio", Action::hide, Qt::CTRL | Qt::Key_H), separator(),
          entry("Salir de Velmo Studio", Action::quit, Qt::CTRL | Qt::Key_Q)}},
        {QStringLiteral("Archivo"),
         {entry("Nueva grabación…", Action::openSetup, Qt::CTRL | Qt::Key_N),
          entry("Biblioteca", Action::openLibrary, Qt::CTRL | Qt::Key_L),
          entry("Abrir carpeta de videos", Action::openFolder), separator(),
          entry("Velmo Quadrel", Action::openQuadrel, Qt::CTRL | Qt::SHIFT | Qt::Key_P)}},
        {QStringLiteral("Edición"),
         {entry("Deshacer", Action::undo, Qt::CTRL | Qt::Key_Z), separator(),
          entry("Cortar", Action::cut, Qt::CTRL | Qt::Key_X), entry("Copiar", Action::copy, Qt::CTRL | Qt::Key_C),
          entry("Pegar", Action::paste, Qt::CTRL | Qt::Key_V),
          entry("Seleccionar todo", Action::selectAll, Qt::CTRL | Qt::Key_A)}},
        {QStringLiteral("Ventana"),
         {entry("Minimizar", Action::minimize, Qt::CTRL | Qt::Key_M),
          entry("Cerrar", Action::close, Qt::CTRL | Qt::Key_W)}},
        {QStringLiteral("Ayuda"),
         {entry("Revisar permisos…", Action::reviewPermissions), entry("Atajos de teclado", Action::showShortcuts),
          separator(), entry("Licencias de terceros", Action::openNotices), entry(Credit::site, Action::openSite)}},
    };
}

void buildMainMenu(QMenuBar& bar, const ShellActions& actions) {
    for (const MainMenuSection& section : mainMenu()) {
        QMenu* menu = bar.addMenu(section.title);
        for (const MainMenuEntry& item : section.entries) {
            if (!item.action) {
                menu->addSeparator();
                continue;
            }
            ShellActions::Callback callback;
            if (actions.has(*item.action)) {
                callback = [&actions, action = *item.action] { actions.perform(action); };
            }
            menu->addAction(new ActionItem(item.title, item.key, std::move(callback), menu)); // the menu owns it
        }
    }
}

} // namespace velmo
