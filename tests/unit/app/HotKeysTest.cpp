#include "app/HotKeys.h"

#include "FakeHotKeyService.h"

#include <gmock/gmock.h>

#include <deque>
#include <memory>

namespace velmo {
namespace {

using test::FakeHotKeyService;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class HotKeysTest : public testing::Test {
protected:
    HotKeysTest() { keys_->install(); }

    HotKeys::Action note(const char* what) {
        return [this, what] { done_.emplace_back(what); };
    }
    void runMainQueue() {
        while (!queue_.empty()) {
            const auto work = std::move(queue_.front());
            queue_.pop_front();
            work();
        }
    }
    void press(std::uint32_t id) {
        service_.handler(id);
        runMainQueue();
    }

    FakeHotKeyService service_;
    std::vector<std::string> done_;
    std::vector<std::string> log_;
    std::deque<std::function<void()>> queue_;
    std::unique_ptr<HotKeys> keys_ = std::make_unique<HotKeys>(
        service_,
        std::vector<HotKeys::RecordingKey>{
            {2, 35, note("pause")}, {11, 3, note("spotlight")}, {23, 21, note("column")}},
        [this](std::function<void()> work) { queue_.push_back(std::move(work)); },
        [this](const std::string& line) { log_.push_back(line); });
};

TEST_F(HotKeysTest, ThereIsOneHandlerForAllKeys) {
    EXPECT_EQ(service_.handlersInstalled, 1);
}

TEST_F(HotKeysTest, APressRunsItsCallbackLaterOnTheMainQueue) {
    keys_->registerKey(1, 5, kControlModifier, note("toggle"));
    service_.handler(1);
    EXPECT_THAT(done_, IsEmpty());
    runMainQueue();
    EXPECT_THAT(done_, ElementsAre("toggle"));
}

TEST_F(HotKeysTest, APressOfAnIdWithoutACallbackDoesNothing) {
    press(19);
    EXPECT_THAT(done_, IsEmpty());
}

TEST_F(HotKeysTest, RecordingKeysGoByControlAlone) {
    keys_->setRecordingKeys(true);
    ASSERT_THAT(service_.registered, SizeIs(3));
    EXPECT_EQ(service_.registered[2].keyCode, 35);
    EXPECT_EQ(service_.registered[11].keyCode, 3);
    EXPECT_EQ(service_.registered[23].keyCode, 21);
    for (const auto& [id, key] : service_.registered) {
        EXPECT_EQ(key.modifiers, 4096U) << id;
    }
}

TEST_F(HotKeysTest, RecordingKeysAreRegisteredInTheOrderOfTheirTable) {
    keys_->setRecordingKeys(true);
    EXPECT_THAT(service_.calls, ElementsAre("register 2", "register 11", "register 23"));
}

TEST_F(HotKeysTest, SwitchingTheRecordingKeysOnTwiceLeavesEachRegisteredOnce) {
    keys_->setRecordingKeys(true);
    keys_->setRecordingKeys(true);
    EXPECT_THAT(service_.registered, SizeIs(3));
    EXPECT_EQ(service_.doubleRegistrations, 0);
    EXPECT_THAT(service_.calls, ElementsAre("register 2", "register 11", "register 23", "unregister 2", "register 2",
                                            "unregister 11", "register 11", "unregister 23", "register 23"));
}

TEST_F(HotKeysTest, SwitchingTheRecordingKeysOffLeavesOnlyThePermanentOne) {
    keys_->registerKey(1, 5, kControlModifier, note("toggle"));
    keys_->setRecordingKeys(true);
    keys_->setRecordingKeys(false);
    ASSERT_THAT(service_.registered, SizeIs(1));
    EXPECT_EQ(service_.registered.begin()->first, 1U);
    press(2);
    EXPECT_THAT(done_, IsEmpty());
}

TEST_F(HotKeysTest, SwitchingThemOffBeforeTheyWereOnAsksTheSystemNothing) {
    keys_->setRecordingKeys(false);
    EXPECT_THAT(service_.calls, IsEmpty());
}

TEST_F(HotKeysTest, AKeyThatAnotherProgramHoldsIsLoggedWithItsStatusAndTheOthersWork) {
    service_.takenKeyCodes[3] = 10;
    keys_->setRecordingKeys(true);
    EXPECT_THAT(log_, ElementsAre("atajo 11 no disponible (10)"));
    press(2);
    press(23);
    EXPECT_THAT(done_, ElementsAre("pause", "column"));
}

TEST_F(HotKeysTest, AKeyThatCouldNotBeHadIsNotReleasedEither) {
    service_.takenKeyCodes[3] = 10;
    keys_->setRecordingKeys(true);
    service_.calls.clear();
    keys_->setRecordingKeys(false);
    EXPECT_THAT(service_.calls, ElementsAre("unregister 2", "unregister 23"));
}

TEST_F(HotKeysTest, AKeyThatBecameFreeIsHadTheNextTime) {
    service_.takenKeyCodes[3] = 10;
    keys_->setRecordingKeys(true);
    keys_->setRecordingKeys(false);
    service_.takenKeyCodes.clear();
    keys_->setRecordingKeys(true);
    EXPECT_THAT(service_.registered, SizeIs(3));
    EXPECT_THAT(log_, SizeIs(1));
}

TEST_F(HotKeysTest, RegisteringAnIdAgainReplacesItsCallback) {
    keys_->registerKey(1, 5, kControlModifier, note("old"));
    keys_->registerKey(1, 7, kControlModifier, note("new"));
    press(1);
    EXPECT_THAT(done_, ElementsAre("new"));
    EXPECT_EQ(service_.registered[1].keyCode, 7);
    EXPECT_EQ(service_.doubleRegistrations, 0);
}

TEST_F(HotKeysTest, APressOnItsWayWhenItsKeyIsReleasedDoesNothing) {
    keys_->setRecordingKeys(true);
    service_.handler(2);
    keys_->setRecordingKeys(false);
    runMainQueue();
    EXPECT_THAT(done_, IsEmpty());
}

TEST_F(HotKeysTest, ACallbackMayReleaseItsOwnKey) {
    keys_->registerKey(1, 5, kControlModifier, [this, alive = std::make_shared<int>(1)] {
        keys_->unregister(1);
        done_.push_back(std::to_string(*alive));
    });
    press(1);
    EXPECT_THAT(done_, ElementsAre("1"));
}

TEST_F(HotKeysTest, AnotherModifierHoldsAtOnceForEveryKey) {
    keys_->registerKey(1, 5, keys_->modifiers(), note("toggle"));
    keys_->setRecordingKeys(true);
    service_.calls.clear();
    keys_->setModifiers(256);
    EXPECT_THAT(service_.calls, ElementsAre("unregister 1", "unregister 2", "unregister 11", "unregister 23",
                                            "register 1", "register 2", "register 11", "register 23"));
    ASSERT_THAT(service_.registered, SizeIs(4));
    for (const auto& [id, key] : service_.registered) {
        EXPECT_EQ(key.modifiers, 256U) << id;
    }
    press(1);
    press(11);
    EXPECT_THAT(done_, ElementsAre("toggle", "spotlight"));
}

TEST_F(HotKeysTest, AModifierThatWasChosenBeforeARecordingIsThatOfItsKeys) {
    keys_->setModifiers(4096 + 2048);
    EXPECT_THAT(service_.calls, IsEmpty());
    keys_->setRecordingKeys(true);
    EXPECT_EQ(service_.registered[11].modifiers, 4096U + 2048U);
}

TEST_F(HotKeysTest, AKeyThatWasTakenMayBeFreeWithAnotherModifier) {
    service_.takenKeyCodes[3] = 10;
    keys_->setRecordingKeys(true);
    EXPECT_THAT(keys_->taken(), ElementsAre(11));
    service_.takenKeyCodes.clear();
    keys_->setModifiers(256);
    EXPECT_THAT(keys_->taken(), IsEmpty());
    press(11);
    EXPECT_THAT(done_, ElementsAre("spotlight"));
}

TEST_F(HotKeysTest, WithoutARecordingItsKeysAreTriedAndGivenBack) {
    service_.takenKeyCodes[35] = 10;
    service_.takenKeyCodes[5] = 10;
    keys_->registerKey(1, 5, kControlModifier, note("toggle"));
    EXPECT_THAT(keys_->taken(), ElementsAre(1, 2));
    EXPECT_THAT(service_.registered, IsEmpty());
    EXPECT_THAT(log_, ElementsAre("atajo 1 no disponible (10)")) << "only what was asked for is logged";
    press(11);
    EXPECT_THAT(done_, IsEmpty());
}

TEST_F(HotKeysTest, AKeyThatBecameFreeIsHadWhenItIsLookedAt) {
    service_.takenKeyCodes[5] = 10;
    keys_->registerKey(1, 5, kControlModifier, note("toggle"));
    service_.takenKeyCodes.clear();
    EXPECT_THAT(keys_->taken(), IsEmpty());
    press(1);
    EXPECT_THAT(done_, ElementsAre("toggle"));
}

TEST_F(HotKeysTest, NothingIsHeldAndNothingFiresWhenTheyAreGone) {
    keys_->registerKey(1, 5, kControlModifier, note("toggle"));
    keys_->setRecordingKeys(true);
    service_.handler(1);
    keys_.reset();
    EXPECT_THAT(service_.registered, IsEmpty());
    runMainQueue();
    EXPECT_THAT(done_, IsEmpty());
}

} // namespace
} // namespace velmo
