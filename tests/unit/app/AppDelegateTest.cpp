#include "app/AppDelegate.h"

#include "FakeHotKeyService.h"
#include "app/RecordingKeys.h"
#include "unit/session/World.h"

#include <QMenuBar>
#include <QMetaObject>
#include <QWidget>

namespace velmo {
namespace {

using test::settle;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

class AppDelegateTest : public test::World {
protected:
    std::function<void()> note(const char* call) {
        return [this, call] { calls.emplace_back(call); };
    }
    Shell shell() {
        return {*controller,
                *hotKeys_,
                libraryWindow,
                alerts,
                application,
                note("displays.start"),
                note("phone.enableScreenDevices"),
                [this](const ShellActions&) { calls.emplace_back("mainMenu"); },
                [this] { return isOnboarded_; },
                note("welcome.show"),
                note("about.show"),
                note("shortcuts.show"),
                note("library.openFolder"),
                [this] { return isQuadrelAvailable_; },
                note("quadrel.open"),
                note("quadrel.stop"),
                note("notices.open"),
                note("site.open"),
                note("quit"),
                [this] { return modifier_; }};
    }
    void launch() {
        hotKeys_ = std::make_unique<HotKeys>(
            service_, recordingKeys(*controller),
            [this](std::function<void()> work) {
                QMetaObject::invokeMethod(controller.get(), std::move(work), Qt::QueuedConnection);
            },
            [this](const std::string& line) { lines.push_back(line); });
        delegate_ = std::make_unique<AppDelegate>(shell());
        delegate_->applicationDidFinishLaunching();
    }
    void press(std::uint32_t id) {
        service_.handler(id);
        settle();
        advance(0.25);
        settle();
    }

    test::FakeHotKeyService service_;
    std::unique_ptr<HotKeys> hotKeys_;
    std::unique_ptr<AppDelegate> delegate_;
    ShortcutModifier modifier_ = ShortcutModifier::control;
    bool isOnboarded_ = true;
    bool isQuadrelAvailable_ = false;
};

TEST_F(AppDelegateTest, LaunchGoesInItsOrderAndEndsWithTheLibrary) {
    launch();
    EXPECT_THAT(calls,
                ElementsAre("displays.start", "phone.enableScreenDevices", "mainMenu", "libraryWindow.show none"));
    EXPECT_EQ(service_.handlersInstalled, 1);
    EXPECT_THAT(service_.calls, ElementsAre("register 1"));
}

TEST_F(AppDelegateTest, TheFirstLaunchShowsTheWelcomeOverTheLibrary) {
    isOnboarded_ = false;
    launch();
    ASSERT_GE(calls.size(), 2U);
    EXPECT_EQ(calls.back(), "welcome.show");
    EXPECT_EQ(calls[calls.size() - 2], "libraryWindow.show none");
}

TEST_F(AppDelegateTest, ControlGStartsAndEndsARecording) {
    launch();
    press(kToggleKeyID);
    EXPECT_EQ(controller->state(), test::State::recording);
    press(kToggleKeyID);
    EXPECT_EQ(controller->state(), test::State::idle);
    EXPECT_THAT(calls, Contains("library.add /videos/class.mp4"));
}

TEST_F(AppDelegateTest, TheRecordingKeysLiveFromTheStartOfARecordingToItsEndAndThroughPauses) {
    launch();
    EXPECT_THAT(service_.registered, SizeIs(1));
    record();
    settle();
    EXPECT_THAT(service_.registered, SizeIs(18));
    service_.calls.clear();
    controller->togglePause();
    settle();
    controller->togglePause();
    settle();
    EXPECT_THAT(service_.calls, IsEmpty()) << "going between recording and paused changes nothing";
    script.stopIsHeld = true;
    controller->stop();
    settle();
    EXPECT_EQ(controller->state(), test::State::saving);
    EXPECT_THAT(service_.registered, SizeIs(1)) << "while saving only the permanent key is there";
}

TEST_F(AppDelegateTest, TheKeysAreHeldWithTheModifierThatWasChosenBeforeTheLaunch) {
    modifier_ = ShortcutModifier::super;
    launch();
    EXPECT_EQ(service_.registered[1].modifiers, 256U);
    EXPECT_THAT(service_.calls, ElementsAre("register 1"));
}

TEST_F(AppDelegateTest, AnotherModifierWhileRecordingHoldsForAllKeysAtOnce) {
    launch();
    record();
    settle();
    modifier_ = ShortcutModifier::controlAlt;
    delegate_->shortcutModifierChanged();
    EXPECT_THAT(service_.registered, SizeIs(18));
    for (const auto& [id, key] : service_.registered) {
        EXPECT_EQ(key.modifiers, 6144U) << id;
    }
    press(kToggleKeyID);
    EXPECT_EQ(controller->state(), test::State::idle);
}

TEST_F(AppDelegateTest, ATakenKeyIsLoggedAndTheApplicationGoesOn) {
    service_.takenKeyCodes[5] = 10;
    launch();
    EXPECT_THAT(lines, Contains("atajo 1 no disponible (10)"));
    EXPECT_THAT(calls, Contains("libraryWindow.show none"));
}

TEST_F(AppDelegateTest, AReopenShowsTheLibrary) {
    launch();
    calls.clear();
    EXPECT_TRUE(delegate_->applicationShouldHandleReopen());
    EXPECT_THAT(calls, ElementsAre("libraryWindow.show none"));
}

TEST_F(AppDelegateTest, AReopenWhileRecordingDoesNotBringUpTheLibrary) {
    launch();
    record();
    EXPECT_TRUE(delegate_->applicationShouldHandleReopen());
    controller->togglePause();
    EXPECT_TRUE(delegate_->applicationShouldHandleReopen());
    EXPECT_THAT(calls, Not(Contains("libraryWindow.show none")));
}

TEST_F(AppDelegateTest, ClosingTheLastWindowLeavesTheApplicationRunning) {
    launch();
    EXPECT_FALSE(delegate_->applicationShouldTerminateAfterLastWindowClosed());
}

TEST_F(AppDelegateTest, AQuitDuringARecordingIsRefusedWithAMessage) {
    launch();
    record();
    alerts.answers = {0};
    delegate_->terminate();
    settle();
    EXPECT_THAT(calls, ElementsAre("application.toFront",
                                   "inform Estás grabando | Termina o descarta la grabación antes de salir."));
    EXPECT_EQ(controller->state(), test::State::recording);
}

TEST_F(AppDelegateTest, AQuitWhilePausedIsRefusedToo) {
    launch();
    record();
    controller->togglePause();
    calls.clear();
    alerts.answers = {0};
    EXPECT_FALSE(delegate_->applicationShouldTerminate());
    EXPECT_THAT(calls, Not(Contains("quit")));
}

TEST_F(AppDelegateTest, AQuitWithoutARecordingGoesThrough) {
    launch();
    calls.clear();
    delegate_->terminate();
    EXPECT_THAT(calls, ElementsAre("quit"));
}

TEST_F(AppDelegateTest, AQuitWhileSavingGoesThrough) {
    launch();
    record();
    script.stopIsHeld = true;
    controller->stop();
    settle();
    EXPECT_TRUE(delegate_->applicationShouldTerminate());
}

TEST_F(AppDelegateTest, TheWhiteboardsServerDoesNotOutliveTheApplication) {
    launch();
    calls.clear();
    delegate_->applicationWillTerminate();
    EXPECT_THAT(calls, ElementsAre("quadrel.stop"));
}

TEST_F(AppDelegateTest, TheMenusReachTheSession) {
    launch();
    delegate_->actions().perform(ShellAction::openSetup);
    settle();
    EXPECT_EQ(controller->state(), test::State::setup);
    delegate_->actions().perform(ShellAction::startNow);
    advance(0.25);
    settle();
    ASSERT_EQ(controller->state(), test::State::recording);
    delegate_->actions().perform(ShellAction::addMarker);
    EXPECT_THAT(controller->markers(), SizeIs(1));
    delegate_->actions().perform(ShellAction::togglePause);
    EXPECT_EQ(controller->state(), test::State::paused);
    delegate_->actions().perform(ShellAction::stopAndSave);
    settle();
    EXPECT_EQ(controller->state(), test::State::idle);
}

TEST_F(AppDelegateTest, DiscardingFromTheMenuAsksFirst) {
    launch();
    record();
    alerts.answers = {1};
    delegate_->actions().perform(ShellAction::discard);
    settle();
    EXPECT_THAT(calls, Contains(testing::StartsWith("ask ¿Descartar esta grabación?")));
    EXPECT_EQ(controller->state(), test::State::recording);
}

TEST_F(AppDelegateTest, EveryActionOfTheMenusIsThereWhenAllPartsAre) {
    launch();
    for (std::size_t action = 0; action < static_cast<std::size_t>(ShellAction::count); ++action) {
        EXPECT_TRUE(delegate_->actions().has(static_cast<ShellAction>(action))) << action;
    }
}

} // namespace
} // namespace velmo
