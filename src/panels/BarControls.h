#pragma once

#include "panels/BarState.h"
#include "session/Collaborators.h"

#include <QString>

#include <functional>
#include <span>
#include <vector>

namespace velmo {

/// What the bar's controls act on. Borrowed; a surface that does not exist is null, and its control is not shown.
struct BarTargets {
    RecorderController& recorder;
    BubblePort* bubble = nullptr;
    SecondBubblePort* secondBubble = nullptr;
    PhonePort* phone = nullptr;
    TeleprompterPort* teleprompter = nullptr;
};

/// One button of the bar. A further button is one more row of the table in BarControls.cpp.
struct BarControl {
    struct Face {
        QString symbol;
        QString help; ///< tooltip, and without the key in brackets the accessible name
        bool lit = false;
        QString label; ///< beside the icon; empty for an icon alone
        friend bool operator==(const Face&, const Face&) = default;
    };
    struct MenuEntry {
        QString title;
        QString symbol; ///< empty for none
        QString key;    ///< of the keyboard, at the right
        bool current = false;
        std::function<void(const BarTargets&)> action;
    };
    enum class Weight { normal, subdued };
    enum class Place { row, zoomGroup }; ///< in the row, or inside the capsule of the zoom
    enum class Menu { none, onRightClick, onClick };
    using Action = void (*)(const BarTargets&, const BarState&);

    int group; ///< a line stands between two groups
    bool (*shown)(const BarState&);
    Face (*face)(const BarState&);
    Action press;
    Weight weight = Weight::normal;
    Place place = Place::row;
    Action optionPress = nullptr; ///< with the Option key held; null: as `press`
    Menu menu = Menu::none;
    std::vector<MenuEntry> (*entries)(const BarState&) = nullptr;
};

/// From left to right.
std::span<const BarControl> barControls();

/// `help` without what follows the name: the key in brackets and the rest.
QString nameOfHelp(const QString& help);

} // namespace velmo
