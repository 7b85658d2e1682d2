#pragma once

#include "session/RecorderController.h"

#include <QString>

#include <span>

namespace velmo {

/// What the bar's buttons look like in one moment.
struct BarState {
    /// The class material.
    enum class Material { none, hidden, shown };

    RecorderController::State state = RecorderController::State::idle;
    Material material = Material::none;
    bool drawing = false; ///< the mouse draws on the screen

    bool paused() const { return state == RecorderController::State::paused; }
    friend bool operator==(const BarState&, const BarState&) = default;
};

/// One button of the bar. A further button is one more row of the table in BarControls.cpp.
struct BarControl {
    struct Face {
        QString symbol;
        QString help; ///< tooltip, and without the key in brackets the accessible name
        bool lit = false;
        friend bool operator==(const Face&, const Face&) = default;
    };
    enum class Weight { normal, subdued };

    int group; ///< a line stands between two groups
    Weight weight;
    bool (*shown)(const BarState&);
    Face (*face)(const BarState&);
    void (RecorderController::*action)();
};

/// From left to right.
std::span<const BarControl> barControls();

/// `help` without a trailing "(⌃P)".
QString nameOfHelp(const QString& help);

} // namespace velmo
