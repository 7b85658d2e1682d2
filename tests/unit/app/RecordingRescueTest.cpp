#include "app/RecordingRescue.h"

#include "unit/session/World.h"

#include <thread>

namespace velmo {
namespace {

using test::settle;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class RecordingRescueTest : public test::World {
protected:
    RecordingRescueTest() {
        SessionServices given = services();
        SessionSurfaces around = surfaces();
        around.libraryWindow = &rescue_.libraryWindow();
        controller = std::make_unique<RecorderController>(
            SessionServices{given.prefs, given.clock, given.timers, rescue_.alerts(), given.application, given.screens,
                            given.power, given.disk, given.capture, given.recorders, given.devices, given.permissions,
                            given.library, given.mixer, given.log, given.processID},
            around);
        rescue_.watch(*controller);
    }
    ~RecordingRescueTest() override { rescue_.forget(); }

    bool hasLeft() {
        settle();
        return left_;
    }
    void leave() {
        rescue_.leave([this] { left_ = true; });
    }

    std::vector<std::string> log_;
    RecordingRescue rescue_{libraryWindow, alerts, [this](const std::string& line) { log_.push_back(line); }};
    bool left_ = false;
};

TEST_F(RecordingRescueTest, WithoutARecordingTheProgramLeavesAtOnce) {
    leave();
    EXPECT_TRUE(left_);
}

TEST_F(RecordingRescueTest, ARunningRecordingIsStoppedAndSavedBeforeTheProgramLeaves) {
    record();
    script.stopIsHeld = true;
    leave();
    EXPECT_FALSE(hasLeft());
    EXPECT_EQ(controller->state(), test::State::saving);
    script.heldStop(std::filesystem::path("/videos/class.mp4"));
    EXPECT_TRUE(hasLeft());
    EXPECT_THAT(calls, Contains("library.add /videos/class.mp4"));
}

TEST_F(RecordingRescueTest, APausedRecordingIsSavedToo) {
    record();
    controller->togglePause();
    leave();
    EXPECT_TRUE(hasLeft());
    EXPECT_THAT(calls, Contains("library.add /videos/class.mp4"));
}

TEST_F(RecordingRescueTest, ARecordingThatIsBeingSavedIsWaitedFor) {
    record();
    script.stopIsHeld = true;
    controller->stop();
    settle();
    leave();
    EXPECT_FALSE(hasLeft());
    script.heldStop(std::filesystem::path("/videos/class.mp4"));
    EXPECT_TRUE(hasLeft());
}

TEST_F(RecordingRescueTest, TheNextRecordingIsSeenHomeThoughTheOneBeforeItArrivesMeanwhile) {
    record();
    classKit.isHeld = true;
    controller->stop();
    settle();
    record(); // the folder of the first is still being written
    classKit.held();
    settle();
    EXPECT_TRUE(rescue_.isPending());
    classKit.isHeld = false;
    leave();
    EXPECT_TRUE(hasLeft());
    EXPECT_FALSE(rescue_.isPending());
}

TEST_F(RecordingRescueTest, ARestartThatIsDeclinedAtAWarningLeavesNothingPending) {
    record();
    disk.bytes = 10'000'000;
    alerts.answers = {0, 1};
    controller->restart();
    settle();
    EXPECT_FALSE(rescue_.isPending());
    leave();
    EXPECT_TRUE(hasLeft());
}

TEST_F(RecordingRescueTest, TheLibraryWindowDoesNotComeUpWhileTheProgramLeaves) {
    record();
    leave();
    ASSERT_TRUE(hasLeft());
    EXPECT_THAT(calls, Not(Contains(testing::StartsWith("libraryWindow"))));
}

TEST_F(RecordingRescueTest, ARecordingThatCannotBeSavedKeepsNobodyWaitingForAnAnswer) {
    record();
    script.stopError = Error{"test", 1, "El disco falló."};
    leave();
    EXPECT_TRUE(hasLeft());
    EXPECT_THAT(log_, ElementsAre("No se pudo guardar la grabación: El disco falló."));
}

TEST_F(RecordingRescueTest, AfterASavedRecordingThereIsNothingToWaitFor) {
    record();
    EXPECT_TRUE(rescue_.isPending());
    controller->stop();
    settle();
    EXPECT_FALSE(rescue_.isPending());
    leave();
    EXPECT_TRUE(left_);
}

TEST_F(RecordingRescueTest, ADiscardedRecordingIsNotWaitedFor) {
    record();
    alerts.answers = {0};
    controller->cancel();
    settle();
    EXPECT_FALSE(rescue_.isPending());
}

TEST_F(RecordingRescueTest, WithoutAnEventLoopItWaitsOnTheSpotForWhatComesFromOtherThreads) {
    record();
    script.stopIsHeld = true;
    controller->stop();
    settle();
    ASSERT_TRUE(script.heldStop);
    std::thread writer([this] { script.heldStop(std::filesystem::path("/videos/class.mp4")); });
    EXPECT_TRUE(rescue_.leaveNow(std::chrono::seconds(20)));
    writer.join();
    EXPECT_THAT(calls, Contains("library.add /videos/class.mp4"));
}

TEST_F(RecordingRescueTest, WithoutAnEventLoopItGivesUpInTheEnd) {
    record();
    script.stopIsHeld = true;
    EXPECT_FALSE(rescue_.leaveNow(std::chrono::milliseconds(0)));
}

} // namespace
} // namespace velmo
