#include "app/StatusItemModel.h"

#include "app/Credit.h"
#include "settings/Format.h"

namespace velmo {
namespace {

using State = StatusItemModel::State;

bool isActive(State state) {
    return state == State::recording || state == State::paused;
}

StatusMenuEntry entry(const char* title, std::optional<ShellAction> action) {
    return {QString::fromUtf8(title), action};
}

std::vector<StatusMenuEntry> activeMenu(State state) {
    return {entry("Terminar y guardar", ShellAction::stopAndSave),
            entry(state == State::paused ? "Reanudar" : "Pausar", ShellAction::togglePause),
            entry("Agregar marcador", ShellAction::addMarker),
            {},
            entry("Empezar de nuevo", ShellAction::restart),
            entry("Descartar", ShellAction::discard)};
}

std::vector<StatusMenuEntry> restingMenu(bool quadrelAvailable, ShortcutModifier modifier) {
    std::vector<StatusMenuEntry> menu{
        entry("Nueva grabación…", ShellAction::openSetup),
        {shortcutText(QStringLiteral("Grabar ahora  ⌃G"), modifier), ShellAction::startNow},
        {},
        entry("Abrir biblioteca", ShellAction::openLibrary)};
    if (quadrelAvailable) {
        menu.push_back(entry("Abrir Velmo Quadrel", ShellAction::openQuadrel));
    }
    menu.insert(menu.end(), {entry("Abrir carpeta de videos", ShellAction::openFolder),
                             {},
                             entry(Credit::text, std::nullopt),
                             entry(Credit::site, ShellAction::openSite),
                             {},
                             entry("Salir de Velmo Studio", ShellAction::quit)});
    return menu;
}

} // namespace

StatusItemModel::Update StatusItemModel::update(State state, double elapsed, bool quadrelAvailable,
                                                ShortcutModifier modifier) {
    Update update{look(state, elapsed), std::nullopt};
    if (const auto now = std::pair(state, modifier); menuState_ != now) {
        menuState_ = now;
        update.menu = menu(state, quadrelAvailable, modifier);
    }
    return update;
}

StatusItemLook StatusItemModel::look(State state, double elapsed) {
    if (!isActive(state)) {
        return {QStringLiteral("record.circle"), QStringLiteral("Velmo Studio"), StatusTint::none, QString(),
                StatusImagePosition::imageOnly};
    }
    const bool paused = state == State::paused;
    return {paused ? QStringLiteral("pause.circle.fill") : QStringLiteral("record.circle.fill"),
            QStringLiteral("Grabando"), paused ? StatusTint::orange : StatusTint::red,
            QStringLiteral(" ") + Format::duration(elapsed), StatusImagePosition::leading};
}

std::vector<StatusMenuEntry> StatusItemModel::menu(State state, bool quadrelAvailable, ShortcutModifier modifier) {
    return isActive(state) ? activeMenu(state) : restingMenu(quadrelAvailable, modifier);
}

} // namespace velmo
