#pragma once

#include "app/ShellAction.h"
#include "session/RecorderController.h"
#include "settings/ShortcutModifier.h"

#include <QString>

#include <optional>
#include <utility>
#include <vector>

namespace velmo {

enum class StatusTint { none, red, orange };
enum class StatusImagePosition { imageOnly = 1, leading = 7 };

/// What the button of the status item shows.
struct StatusItemLook {
    QString image; ///< symbol name
    QString accessibilityText;
    StatusTint tint = StatusTint::none;
    QString title;
    StatusImagePosition imagePosition = StatusImagePosition::imageOnly;
    friend bool operator==(const StatusItemLook&, const StatusItemLook&) = default;
};

/// One entry of the status menu. Without a title it is a separator, without an action disabled.
struct StatusMenuEntry {
    QString title;
    std::optional<ShellAction> action;

    bool isSeparator() const { return title.isEmpty(); }
    friend bool operator==(const StatusMenuEntry&, const StatusMenuEntry&) = default;
};

/// What the status item shows of the session, and when its menu is built anew: at a change of state or of the
/// keys' modifier, never for the clock. Holds no widget. Main thread.
class StatusItemModel {
public:
    using State = RecorderController::State;

    struct Update {
        StatusItemLook look;
        std::optional<std::vector<StatusMenuEntry>> menu; ///< absent: the menu stays as it is
    };

    /// `elapsed` in seconds. `quadrelAvailable` counts only when the menu is built.
    Update update(State state, double elapsed, bool quadrelAvailable,
                  ShortcutModifier modifier = ShortcutModifier::control);

    static StatusItemLook look(State state, double elapsed);
    static std::vector<StatusMenuEntry> menu(State state, bool quadrelAvailable,
                                             ShortcutModifier modifier = ShortcutModifier::control);

private:
    std::optional<std::pair<State, ShortcutModifier>> menuState_; ///< for which the menu was last built
};

} // namespace velmo
