#include "platform/x11/X11InputMonitors.h"

#include "integration/inputmonitors/Hands.h"

#include <gmock/gmock.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace velmo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using namespace std::chrono_literals;

constexpr double kClickPlacedWithin = 0.005;

/// What the monitors told, in order.
template <typename T>
class Heard {
public:
    void add(T value) {
        const std::lock_guard guard(lock_);
        values_.push_back(value);
        came_.notify_all();
    }
    /// At least `count`, or what came within a generous limit.
    std::vector<T> atLeast(std::size_t count) {
        std::unique_lock guard(lock_);
        came_.wait_for(guard, 10s, [&] { return values_.size() >= count; });
        return values_;
    }

private:
    std::mutex lock_;
    std::condition_variable came_;
    std::vector<T> values_;
};

struct Span {
    double before;
    double after;
};

double now() {
    return HostClock::shared().now().seconds();
}

class X11InputMonitorsTest : public testing::Test {
protected:
    /// The monitors begin to listen on a thread of their own: a test begins when they do, and has them go on.
    void SetUp() override { listen(); }

    void listen() {
        Heard<double> clicks;
        const auto token = monitors_.addMouseButtons([&](double time) { clicks.add(time); });
        ASSERT_NE(token, nullptr);
        for (int i = 0; i < 1000 && clicks.atLeast(0).empty(); ++i) {
            hands_.press(kThumbButton);
            hands_.release(kThumbButton);
            std::this_thread::sleep_for(10ms);
        }
        ASSERT_FALSE(clicks.atLeast(0).empty());
        keepsListening_ = monitors_.addMouseButtons([](double) {});
        settle();
    }

    /// Until all that the hands have done so far has been told.
    void settle() {
        Heard<int> last;
        const auto token = monitors_.addScrollAndMagnify([&](const InputGesture&) { last.add(0); });
        hands_.press(kWheelUp);
        hands_.release(kWheelUp);
        EXPECT_THAT(last.atLeast(1), SizeIs(1));
    }

    Span timed(void (Hands::*act)(std::uint8_t), std::uint8_t button) {
        const double before = now();
        (hands_.*act)(button);
        return {before, now()};
    }

    X11InputMonitors monitors_{std::nullopt, HostClock::shared()};
    Hands hands_;
    InputMonitors::Token keepsListening_;
};

TEST_F(X11InputMonitorsTest, PressAndReleaseOfEveryButtonHaveTheirTimeOnTheHostClock) {
    Heard<double> times;
    const auto token = monitors_.addMouseButtons([&](double time) { times.add(time); });
    std::vector<Span> spans;
    for (const std::uint8_t button : {kLeftButton, kMiddleButton, kRightButton, kThumbButton}) {
        spans.push_back(timed(&Hands::press, button));
        std::this_thread::sleep_for(30ms);
        spans.push_back(timed(&Hands::release, button));
    }
    const std::vector<double> heard = times.atLeast(spans.size());
    ASSERT_THAT(heard, SizeIs(spans.size()));
    double worst = 0;
    for (std::size_t i = 0; i < spans.size(); ++i) {
        EXPECT_GT(heard[i], spans[i].before - kClickPlacedWithin);
        EXPECT_LT(heard[i], spans[i].after + kClickPlacedWithin);
        worst = std::max({worst, spans[i].before - heard[i], heard[i] - spans[i].after});
    }
    RecordProperty("worst_ms", std::to_string(worst * 1000));
    std::printf("farthest outside its call: %.3f ms\n", worst * 1000);
}

TEST_F(X11InputMonitorsTest, TheWheelIsNoClick) {
    Heard<double> times;
    const auto token = monitors_.addMouseButtons([&](double time) { times.add(time); });
    for (const std::uint8_t button : {kWheelUp, kWheelDown, kWheelLeft}) {
        hands_.press(button);
        hands_.release(button);
    }
    hands_.press(kRightButton);
    hands_.release(kRightButton);
    EXPECT_THAT(times.atLeast(2), SizeIs(2));
}

TEST_F(X11InputMonitorsTest, OnlyTheLeftButtonGoingDownIsALeftMouseDown) {
    Heard<int> presses;
    Heard<double> times;
    const auto left = monitors_.addLeftMouseDown([&] { presses.add(1); });
    const auto any = monitors_.addMouseButtons([&](double time) { times.add(time); });
    for (const std::uint8_t button : {kRightButton, kLeftButton, kMiddleButton}) {
        hands_.press(button);
        hands_.release(button);
    }
    times.atLeast(6);
    EXPECT_THAT(presses.atLeast(1), SizeIs(1));
}

TEST_F(X11InputMonitorsTest, TheWheelScrollsByWholeClicksWithTheStateOfTheOptionKey) {
    Heard<InputGesture> gestures;
    const auto token = monitors_.addScrollAndMagnify([&](const InputGesture& gesture) { gestures.add(gesture); });
    hands_.press(kWheelUp);
    hands_.release(kWheelUp);
    gestures.atLeast(1);
    hands_.holdAlt(true);
    hands_.press(kWheelDown);
    hands_.release(kWheelDown);
    const std::vector<InputGesture> heard = gestures.atLeast(2);
    hands_.holdAlt(false);
    ASSERT_THAT(heard, SizeIs(2));
    EXPECT_EQ(heard[0].scrollingDeltaY, 1);
    EXPECT_EQ(heard[0].modifierFlags & kOptionModifier, 0U);
    EXPECT_EQ(heard[1].scrollingDeltaY, -1);
    EXPECT_NE(heard[1].modifierFlags & kOptionModifier, 0U);
    EXPECT_EQ(heard[1].type, InputGesture::Type::scrollWheel);
    EXPECT_FALSE(heard[1].hasPreciseScrollingDeltas);
}

TEST_F(X11InputMonitorsTest, MovingTheMouseIsNoGesture) {
    Heard<InputGesture> gestures;
    const auto token = monitors_.addScrollAndMagnify([&](const InputGesture& gesture) { gestures.add(gesture); });
    hands_.moveTo(300, 300);
    hands_.moveTo(310, 305);
    hands_.press(kWheelUp);
    hands_.release(kWheelUp);
    EXPECT_THAT(gestures.atLeast(1), SizeIs(1));
}

TEST_F(X11InputMonitorsTest, AClickIsHeardWhileAnotherProgramHoldsThePointer) {
    Heard<int> presses;
    const auto token = monitors_.addLeftMouseDown([&] { presses.add(1); });
    hands_.grabPointer();
    hands_.press(kLeftButton);
    hands_.release(kLeftButton);
    EXPECT_THAT(presses.atLeast(1), SizeIs(1));
    hands_.ungrabPointer();
}

TEST_F(X11InputMonitorsTest, ARemovedMonitorIsSilentAndTheOthersAreNot) {
    Heard<int> removed;
    Heard<double> kept;
    auto token = monitors_.addLeftMouseDown([&] { removed.add(1); });
    const auto other = monitors_.addMouseButtons([&](double time) { kept.add(time); });
    token.reset();
    hands_.press(kLeftButton);
    hands_.release(kLeftButton);
    EXPECT_THAT(kept.atLeast(2), SizeIs(2));
    EXPECT_THAT(removed.atLeast(0), IsEmpty());
}

TEST_F(X11InputMonitorsTest, MonitorsComeAndGoWhileTheOthersAreTold) {
    Heard<double> times;
    const auto token = monitors_.addMouseButtons([&](double time) { times.add(time); });
    constexpr std::size_t kClicks = 300;
    for (std::size_t i = 0; i < kClicks; ++i) {
        hands_.press(kThumbButton);
        const auto passing = monitors_.addMouseButtons([](double) {});
        hands_.release(kThumbButton);
    }
    EXPECT_THAT(times.atLeast(2 * kClicks), SizeIs(2 * kClicks));
}

TEST_F(X11InputMonitorsTest, MonitorsCanBeAddedAgainAfterTheLastHasGone) {
    keepsListening_.reset();
    listen();
}

TEST_F(X11InputMonitorsTest, ATokenMayOutliveTheMonitors) {
    InputMonitors::Token token;
    {
        X11InputMonitors shortLived(std::nullopt, HostClock::shared());
        token = shortLived.addLeftMouseDown([] {});
        EXPECT_NE(token, nullptr);
    }
    token.reset();
}

TEST(X11InputMonitors, WithoutAServerThereIsNoMonitor) {
    X11InputMonitors monitors(":59999", HostClock::shared());
    EXPECT_EQ(monitors.addMouseButtons([](double) {}), nullptr);
    EXPECT_EQ(monitors.addScrollAndMagnify([](const InputGesture&) {}), nullptr);
}

} // namespace
} // namespace velmo
