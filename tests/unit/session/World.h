#pragma once

#include "FakeMonitors.h"
#include "FakeRecorders.h"
#include "FakeServices.h"
#include "FakeSurfaces.h"
#include "ManualTimers.h"
#include "session/RecorderController.h"

#include <gmock/gmock.h>

namespace velmo::test {

using State = RecorderController::State;

inline constexpr int kOwnProcess = 77;

/// A session with everything around it faked. The mode is `screen`, without countdown; the clock stands at 1000 s.
/// Surfaces that a test does not want are taken out with `controller->attach`.
class World : public testing::Test {
protected:
    World() {
        prefs.mode = RecordMode::screen;
        prefs.countdown = false;
        capture.content.displays = {{1, {0, 0, 1920, 1080}, 1920, 1080}, {2, {1920, 0, 1280, 720}, 1280, 720}};
        capture.content.applications = {{kOwnProcess, "velmo"}, {5, "editor"}};
        for (const WindowId id : {13u, 14u, 15u, 16u}) {
            addWindow(id, {0, 0, 100, 100});
        }
        capture.content.windows.push_back({90, {0, 0, 800, 600}, 5, "slides"});
        makeController();
    }

    /// Waits that a test left standing end before what they wait for goes.
    ~World() override {
        controller.reset();
        alerts.drop();
        countdown.held = {};
        camera.held = {};
        permissions.held = {};
        classKit.held = {};
        script.heldStart = {};
        script.heldStop = {};
        settle();
    }

    void makeController() { controller = std::make_unique<RecorderController>(services(), surfaces()); }

    SessionServices services() {
        const auto log = [this](std::string_view line) { lines.emplace_back(line); };
        return {prefs,   clock,     timers,  alerts,      application, screens, power, disk,
                capture, recorders, devices, permissions, library,     mixer,   log,   kOwnProcess};
    }
    SessionSurfaces surfaces() {
        return {&setupPanel,   &controlBar,   &libraryWindow, &countdown, &camera,    &secondCamera, &bubble,
                &secondBubble, &phone,        &drawing,       &board,     &spotlight, &presenter,    &kitPanel,
                &classKit,     &teleprompter, &regionPicker,  &pointer,   &monitors};
    }

    void addWindow(WindowId id, Rect frame) { capture.content.windows.push_back({id, frame, kOwnProcess, ""}); }

    void advance(double seconds) { timers.advance(seconds); }

    /// Up to the first recorded moment, with an empty list of calls.
    void record() {
        controller->start();
        advance(0.25);
        settle();
        ASSERT_EQ(controller->state(), State::recording);
        calls.clear();
    }
    Calls taken() { return std::exchange(calls, {}); }
    int count(const std::string& call) const { return int(std::count(calls.begin(), calls.end(), call)); }

    Calls calls;
    std::vector<std::string> lines; ///< of the log
    MemoryDefaults store;
    Prefs prefs{store};
    ManualClock clock{1000};
    ManualTimers timers{clock};
    FakeAlerts alerts{calls};
    FakeApplication application{calls};
    FakeScreens screens;
    FakePower power;
    FakeDisk disk;
    FakeCapture capture{calls};
    RecorderScript script;
    FakeRecorders recorders{calls, script};
    FakeCameras cameras;
    FakeMicrophones microphones;
    Devices devices{&cameras, &microphones};
    FakePermissions permissions{calls};
    FakeLibrary library{calls};
    FakeMixer mixer{calls};

    FakeSetupPanel setupPanel{calls, "setupPanel"};
    FakeControlBar controlBar{calls, "controlBar"};
    FakeLibraryWindow libraryWindow{calls, "libraryWindow"};
    FakeCountdown countdown{calls, "countdown"};
    FakeCamera camera{calls, "camera"};
    FakeSecondCamera secondCamera{calls, "secondCamera"};
    FakeBubble bubble{calls, "bubble"};
    FakeSecondBubble secondBubble{calls, "secondBubble"};
    FakePhone phone{calls, "phone"};
    FakeDrawing drawing{calls, "drawing"};
    FakeBoard board{calls, "board"};
    FakeSpotlight spotlight{calls, "spotlight"};
    FakePresenter presenter{calls, "presenter"};
    FakeKitPanel kitPanel{calls, "kitPanel"};
    FakeClassKit classKit{calls, "classKit"};
    FakeTeleprompter teleprompter{calls, "teleprompter"};
    FakeRegionPicker regionPicker{calls, "regionPicker"};
    FakePointer pointer;
    FakeMonitors monitors;

    std::unique_ptr<RecorderController> controller;
};

} // namespace velmo::test
