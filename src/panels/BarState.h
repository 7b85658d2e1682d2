#pragma once

#include "session/RecorderController.h"
#include "settings/RecordMode.h"

namespace velmo {

/// What the bar shows and neither the session nor the settings know.
struct BarSurroundings {
    /// The class material.
    enum class Material { none, hidden, shown };

    bool hasVideo = false;        ///< a camera gives pictures
    bool hasSecondBubble = false; ///< on the screen or put away
    bool isDrawing = false;
    bool hasBoard = false;
    bool hasPhone = false; ///< this system can mirror one
    bool phoneVisible = false;
    bool scriptVisible = false;
    Material material = Material::none;
    friend bool operator==(const BarSurroundings&, const BarSurroundings&) = default;
};

/// What the bar's controls look like in one moment.
struct BarState {
    RecorderController::State state = RecorderController::State::idle;
    RecordMode mode = RecordMode::screen;
    Scene scene = Scene::screen;
    bool zoomOn = false;
    bool zoomFollowing = true;
    bool regionOn = false;
    bool spotlightOn = false;
    bool hasScript = false;
    BarSurroundings around{};

    bool paused() const { return state == RecorderController::State::paused; }
    friend bool operator==(const BarState&, const BarState&) = default;
};

} // namespace velmo
