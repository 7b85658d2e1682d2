#pragma once

#include "app/Composition.h"
#include "capture/DisplayWatch.h"
#include "classkit/views/KitPanel.h"
#include "panels/ControlBar.h"
#include "panels/CountdownWindow.h"
#include "panels/SetupPanel.h"
#include "panels/WelcomeWindow.h"
#include "surfaces/BubbleController.h"
#include "surfaces/CameraManager.h"
#include "surfaces/PresenterWindow.h"
#include "surfaces/RegionPicker.h"
#include "surfaces/ScreenDrawing.h"
#include "surfaces/SecondBubbleController.h"
#include "surfaces/SecondCameraManager.h"
#include "surfaces/SpotlightOverlay.h"
#include "surfaces/Teleprompter.h"

namespace velmo {

class ClassKit;

/// What stands around a recording on the screen. Its two camera managers are the shared ones.
struct Composition::Surfaces {
    Surfaces(Platform& platform, Stores& stores, Session& session);
    ~Surfaces();

    BarSurroundings around() const;
    void dressBubbles();
    void bringBubblesToFront();
    void tieBubbles(DisplayWatch& displays);
    void tieBar();

    const ClassKit& classKit;

    CameraManager camera;
    SecondCameraManager secondCamera;
    BubbleController bubble;
    SecondBubbleController secondBubble;
    PresenterWindow presenter;
    CountdownWindow countdown;
    KitPanel kitPanel;
    Teleprompter teleprompter;
    SetupPanel setupPanel;
    WelcomeWindow welcome;
    SpotlightOverlay spotlight;
    RegionPicker regionPicker;
    ScreenDrawing drawing;
    ControlBar controlBar; // asks all of them how they stand: the last to come and the first to go
    DisplayWatch::Observation displaysChange;
};

} // namespace velmo
