#include "app/RecoveryNotice.h"

#include "support/FakeAssetInspector.h"
#include "support/FakeFileActions.h"
#include "support/LeftRecording.h"
#include "support/ManualQueue.h"
#include "support/TemporaryFolder.h"
#include "unit/session/World.h"

namespace velmo {
namespace {

using test::settle;
using testing::ElementsAre;
using testing::IsEmpty;

const char* const kNotYet = "Quedó una grabación sin terminar que todavía no se pudo recuperar; se intentará otra vez "
                            "al volver a abrir Velmo Studio.";

/// A launch after recordings were left behind.
class RecoveryNoticeTest : public test::World {
protected:
    RecoveryNoticeTest() { alerts.answers = {0, 0}; }

    void leave(const std::string& name, std::uint8_t id) {
        test::LeftRecording left(folder_ / name, id);
        left.record(30);
        left.die();
    }
    /// One whose video cannot be read.
    void leaveUnreadable(const std::string& name, std::uint8_t id) {
        leave(name, id);
        std::filesystem::remove(folder_ / name);
        std::filesystem::create_directory(folder_ / name);
    }
    void recover() {
        recovery_.start({}, false);
        worker_->run();
        settle();
    }

    test::TemporaryFolder folder_;
    test::FakeFileActions files_;
    test::FakeAssetInspector inspector_;
    Library library_{folder_,
                     {files_, inspector_, std::make_unique<test::ManualQueue>(), [] { return Library::WallTime(); }}};
    test::ManualQueue* worker_ = new test::ManualQueue;
    Recovery recovery_{
        library_,
        {std::unique_ptr<SerialQueue>(worker_), [](const std::filesystem::path&) {}, [](const std::string&) {}}};
    RecoveryNotice notice_{recovery_, *controller, libraryWindow, alerts};
};

TEST_F(RecoveryNoticeTest, WithNothingLeftBehindNothingIsTold) {
    recover();
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(RecoveryNoticeTest, ARecoveredRecordingIsShownAndToldOnce) {
    leave("Clase.mp4", 1);
    recover();
    const std::vector<std::string> told{"libraryWindow.show " + (folder_ / "Clase.mp4").string(),
                                        "inform Grabación recuperada | Se recuperó «Clase», una grabación que había "
                                        "quedado sin terminar."};
    EXPECT_EQ(calls, told);
    calls.clear();
    controller->openSetup();
    controller->closeSetup();
    settle();
    EXPECT_EQ(std::count_if(calls.begin(), calls.end(), [](const auto& call) { return call.starts_with("inform"); }),
              0);
}

TEST_F(RecoveryNoticeTest, DuringASessionItWaitsForItsEnd) {
    leave("Clase.mp4", 1);
    controller->openSetup();
    settle();
    calls.clear();
    recover();
    EXPECT_THAT(calls, IsEmpty());
    controller->closeSetup();
    settle();
    EXPECT_THAT(calls.back(), testing::StartsWith("inform Grabación recuperada | "));
}

TEST_F(RecoveryNoticeTest, WhatCouldNotBeRecoveredIsToldAlsoBesideWhatCould) {
    leave("a.mp4", 1);
    leaveUnreadable("b.mp4", 2);
    recover();
    ASSERT_EQ(recovery_.failures(), 1);
    EXPECT_EQ(calls.back(), std::string("inform Grabación recuperada | Se recuperó «a», una grabación que había "
                                        "quedado sin terminar. ") +
                                kNotYet);
}

TEST_F(RecoveryNoticeTest, WhereNothingCouldBeRecoveredOnlyThatIsTold) {
    leaveUnreadable("a.mp4", 1);
    recover();
    EXPECT_THAT(calls, ElementsAre(std::string("inform Grabación sin terminar | ") + kNotYet));
}

TEST(RecoveryNoticeText, NamesOneCountsManyAndLeavesNoFailureOut) {
    EXPECT_EQ(RecoveryNotice::text(0, {}, 0), std::nullopt);
    EXPECT_EQ(RecoveryNotice::text(1, "Clase", 0),
              "Se recuperó «Clase», una grabación que había quedado sin terminar.");
    EXPECT_EQ(RecoveryNotice::text(3, "Clase", 0), "Se recuperaron 3 grabaciones que habían quedado sin terminar.");
    EXPECT_EQ(RecoveryNotice::text(0, {}, 1), kNotYet);
    EXPECT_EQ(RecoveryNotice::text(3, "Clase", 2),
              "Se recuperaron 3 grabaciones que habían quedado sin terminar. Quedaron 2 grabaciones sin terminar que "
              "todavía no se pudieron recuperar; se intentará otra vez al volver a abrir Velmo Studio.");
}

} // namespace
} // namespace velmo
