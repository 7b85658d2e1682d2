#include "platform/x11/X11ScreenCapture.h"

#include "StreamProbe.h"
#include "support/XTestClient.h"
#include "support/XTestServer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>

namespace velmo::test {
namespace {

constexpr int kWidth = 640;
constexpr int kHeight = 360;
constexpr int kBits = 10;
constexpr int kCell = 16;

/// Receives pictures, reads the number painted in them and lets them go.
class NumberReader final : public StreamOutputHandler {
public:
    void streamDidOutput(CaptureStream&, const Sample& sample, StreamOutput) override {
        const PlaneView luma = sample.image->plane(0);
        int number = 0;
        for (int bit = 0; bit < kBits; ++bit) {
            number |= (luma.row(kCell / 2)[bit * kCell + kCell / 2] > 128 ? 1 : 0) << bit;
        }
        const std::lock_guard guard(lock_);
        numbers_.push_back(number);
        times_.push_back(sample.presentation().seconds());
    }
    std::vector<int> numbers() {
        const std::lock_guard guard(lock_);
        return numbers_;
    }
    std::vector<double> times() {
        const std::lock_guard guard(lock_);
        return times_;
    }

private:
    std::mutex lock_;
    std::vector<int> numbers_;
    std::vector<double> times_;
};

using SteadyClock = std::chrono::steady_clock;

SteadyClock::duration seconds(double value) {
    return std::chrono::duration_cast<SteadyClock::duration>(std::chrono::duration<double>(value));
}

/// Notes when this machine let a thread or the X server wait for long: what is missed then is not the capture's doing.
class StallWatch {
public:
    explicit StallWatch(const std::string& display) : client_(display), thread_([this] { watch(); }) {}
    ~StallWatch() {
        ending_ = true;
        thread_.join();
    }
    bool stalledBetween(SteadyClock::time_point from, SteadyClock::time_point to) {
        const std::lock_guard guard(lock_);
        return std::any_of(stalls_.begin(), stalls_.end(),
                           [&](const auto& stall) { return stall.first < to && stall.second > from; });
    }

private:
    void watch() {
        while (!ending_) {
            const auto before = SteadyClock::now();
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
            client_.sync();
            if (const auto after = SteadyClock::now(); after - before > std::chrono::milliseconds(8)) {
                const std::lock_guard guard(lock_);
                stalls_.emplace_back(before, after);
            }
        }
    }

    XTestClient client_;
    std::atomic<bool> ending_ = false;
    std::mutex lock_;
    std::vector<std::pair<SteadyClock::time_point, SteadyClock::time_point>> stalls_;
    std::thread thread_;
};

/// Paints the whole window anew, the number in its first cells, `count` times at `rate`. Returns when each was
/// painted, by number; 0 is what the window shows before.
std::vector<SteadyClock::time_point> animate(XTestClient& client, xcb_window_t window, int count, double rate) {
    const auto begin = SteadyClock::now();
    std::vector<SteadyClock::time_point> painted{begin};
    for (int n = 1; n <= count; ++n) {
        client.fill(window, {0, 0, kWidth, kHeight}, 0xff000000u | static_cast<std::uint32_t>(n) * 0x010305u);
        for (int bit = 0; bit < kBits; ++bit) {
            client.fill(window, {bit * kCell, 0, kCell, kCell}, (n >> bit & 1) != 0 ? 0xffffffff : 0xff000000);
        }
        xcb_flush(client.xcb());
        painted.push_back(SteadyClock::now());
        std::this_thread::sleep_until(begin + seconds(n / rate));
    }
    painted.push_back(SteadyClock::now());
    return painted;
}

class FullMotion : public testing::Test {
protected:
    std::vector<SteadyClock::time_point> record(int count, double rate) {
        const auto window = client.show({0, 0, kWidth, kHeight}, {.color = 0xff000000});
        client.sync();
        std::promise<Result<ShareableContent>> answer;
        capture.queryShareableContent([&](Result<ShareableContent> content) { answer.set_value(std::move(content)); });
        StreamConfiguration configuration;
        configuration.width = kWidth;
        configuration.height = kHeight;
        const DisplayId display = answer.get_future().get().value().displays.at(0).displayID;
        const auto stream =
            std::move(capture.makeStream(ContentFilter::display(display, {}, {}), configuration, nullptr)).value();
        EXPECT_TRUE(stream->addOutput(reader, StreamOutput::screen, queue).ok());
        EXPECT_TRUE(startAndWait(*stream).ok());
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        auto painted = animate(client, window, count, rate);
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        stopAndWait(*stream);
        return painted;
    }

    XTestServer server{"640x360x24"}; // small, so that a busy machine can paint and take it
    XTestClient client{server.display()};
    ThreadQueue queue{"test.pictures"};
    NumberReader reader;
    X11ScreenCapture capture{server.display(), nullptr, HostClock::shared()};
};

TEST_F(FullMotion, EveryPictureOfAnAnimationAtTheCaptureRateComesOnce) {
    constexpr int kCount = 300;
    StallWatch watch(server.display());
    const auto painted = record(kCount, 30);
    const auto numbers = reader.numbers();
    EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
    EXPECT_EQ(std::adjacent_find(numbers.begin(), numbers.end()), numbers.end()) << "a picture came twice";
    for (int n = 0; n <= kCount; ++n) {
        const auto shown = painted[static_cast<std::size_t>(n)];
        const auto gone = painted[static_cast<std::size_t>(n) + 1];
        const bool wasShownLong = gone - shown > std::chrono::milliseconds(25);
        if (wasShownLong && !watch.stalledBetween(shown - std::chrono::milliseconds(40), gone)) {
            EXPECT_TRUE(std::binary_search(numbers.begin(), numbers.end(), n)) << "picture " << n << " was missed";
        }
    }
    EXPECT_GT(numbers.size(), kCount * 3u / 4);
}

TEST_F(FullMotion, AFasterAnimationIsTakenAtTheCaptureRateWithoutRepeats) {
    record(300, 60);
    const auto numbers = reader.numbers();
    EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
    EXPECT_EQ(std::adjacent_find(numbers.begin(), numbers.end()), numbers.end());
    EXPECT_LE(numbers.size(), 5u * 30 + 4); // 5 s at 30, what was saved, and the one before the animation
    EXPECT_GT(numbers.size(), 5u * 30 * 3 / 4);
}

} // namespace
} // namespace velmo::test
