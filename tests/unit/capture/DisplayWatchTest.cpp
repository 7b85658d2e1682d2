#include "capture/DisplayWatch.h"

#include "support/ManualDelayedCalls.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>

namespace velmo {
namespace {

class FakeReconfiguration final : public DisplayReconfiguration {
public:
    void registerCallback(Callback callback) override {
        ++registrations;
        callback_ = std::move(callback);
    }
    void change(std::uint32_t flags) { callback_(7, flags); }

    int registrations = 0;

private:
    Callback callback_;
};

class DisplayWatchTest : public testing::Test {
protected:
    static constexpr std::uint32_t kAdded = 16;

    FakeReconfiguration displays;
    test::ManualDelayedCalls calls;
    std::optional<DisplayWatch> watch{std::in_place, displays, calls};
    int notices = 0;
    DisplayWatch::Observation observation = watch->observe([this] { ++notices; });
};

TEST_F(DisplayWatchTest, HasItsName) {
    EXPECT_EQ(std::string(velmoDisplaysChanged), "velmo.pantallasCambiaron");
}

TEST_F(DisplayWatchTest, StartingTwiceRegistersOnce) {
    EXPECT_EQ(displays.registrations, 0);
    watch->start();
    watch->start();
    EXPECT_EQ(displays.registrations, 1);
}

TEST_F(DisplayWatchTest, ABurstOfChangesIsToldOnceSixTenthsOfASecondAfterTheFirst) {
    watch->start();
    for (int i = 0; i < 10; ++i) {
        displays.change(kAdded);
        calls.advance(0.05);
    }
    EXPECT_EQ(notices, 0);
    calls.advance(0.0999);
    EXPECT_EQ(notices, 0);
    calls.advance(0.0002);
    EXPECT_EQ(notices, 1);
    calls.advance(5);
    EXPECT_EQ(notices, 1);
}

TEST_F(DisplayWatchTest, AChangeAfterTheNoticeIsToldAgain) {
    watch->start();
    displays.change(kAdded);
    calls.advance(0.6);
    displays.change(kAdded);
    calls.advance(0.6);
    EXPECT_EQ(notices, 2);
}

TEST_F(DisplayWatchTest, TheBeginningOfAChangeIsNotTold) {
    watch->start();
    displays.change(kDisplayBeginConfiguration);
    displays.change(kDisplayBeginConfiguration | kAdded);
    calls.advance(5);
    EXPECT_EQ(notices, 0);
}

TEST_F(DisplayWatchTest, EveryObserverIsToldUntilItsObservationEnds) {
    watch->start();
    int others = 0;
    auto other = watch->observe([&others] { ++others; });
    displays.change(kAdded);
    calls.advance(0.6);
    observation.reset();
    displays.change(kAdded);
    calls.advance(0.6);
    EXPECT_EQ(notices, 1);
    EXPECT_EQ(others, 2);
}

TEST_F(DisplayWatchTest, AnObserverMayEndItsOwnObservation) {
    watch->start();
    DisplayWatch::Observation once;
    int calledOnce = 0;
    once = watch->observe([&] {
        ++calledOnce;
        once.reset();
    });
    displays.change(kAdded);
    calls.advance(0.6);
    displays.change(kAdded);
    calls.advance(0.6);
    EXPECT_EQ(calledOnce, 1);
    EXPECT_EQ(notices, 2);
}

TEST_F(DisplayWatchTest, ChangesAfterItsEndAreIgnored) {
    watch->start();
    displays.change(kAdded);
    watch.reset();
    displays.change(kAdded);
    calls.advance(5);
    EXPECT_EQ(notices, 0);
}

} // namespace
} // namespace velmo
