#include "panels/MicrophoneMonitor.h"

#include "unit/session/World.h"

#include <cmath>
#include <vector>

namespace velmo {
namespace {

std::vector<float> tone(double decibels) {
    return std::vector<float>(960, static_cast<float>(std::pow(10, decibels / 20)));
}

TEST(MicrophoneLevelLaw, RunsFromMinusFiftyToMinusEightDecibels) {
    EXPECT_EQ(MicrophoneMonitor::levelOf(tone(-8)), 1);
    EXPECT_EQ(MicrophoneMonitor::levelOf(tone(0)), 1);
    EXPECT_EQ(MicrophoneMonitor::levelOf(tone(-60)), 0);
    EXPECT_NEAR(MicrophoneMonitor::levelOf(tone(-29)), 0.5, 1e-3);
    EXPECT_NEAR(MicrophoneMonitor::levelOf(tone(-50)), 0, 1e-3);
    EXPECT_EQ(MicrophoneMonitor::levelOf(std::vector<float>(960, 0.0F)), 0);
    EXPECT_EQ(MicrophoneMonitor::levelOf({}), 0);
}

TEST(MicrophoneLevelLaw, HearsTheFirstChannelOnly) {
    std::vector<float> right(960, 0.0F);
    for (std::size_t i = 1; i < right.size(); i += 2) {
        right[i] = 1;
    }
    EXPECT_EQ(MicrophoneMonitor::levelOf(right), 0);
}

/// Opens inputs that only count.
class CountingInputs final : public AudioInputService {
public:
    std::vector<AudioDevice> microphones() const override { return {{"a", "A"}, {"b", "B"}}; }
    std::optional<AudioDevice> defaultMicrophone() const override { return microphones().front(); }
    Result<std::unique_ptr<AudioInput>> openMicrophone(const std::string& id, SerialQueue&, Handler) override {
        opened.push_back(id);
        return std::unique_ptr<AudioInput>(std::make_unique<Input>(running));
    }
    Result<std::unique_ptr<AudioInput>> openSystemAudio(SerialQueue&, Handler) override { return Error{}; }

    std::vector<std::string> opened;
    int running = 0;

private:
    struct Input final : AudioInput {
        explicit Input(int& count) : running_(count) { ++running_; }
        ~Input() override { --running_; }
        int& running_;
    };
};

class MicrophoneMonitorTest : public test::World {
protected:
    CountingInputs inputs;
    Devices real{nullptr, &inputs};
};

TEST_F(MicrophoneMonitorTest, ListensOnlyFromPreparationToTheEndOfTheRecording) {
    MicrophoneMonitor monitor(*controller, prefs, real, inputs);
    EXPECT_EQ(inputs.running, 0);
    controller->openSetup();
    EXPECT_EQ(inputs.running, 1);
    EXPECT_THAT(inputs.opened, testing::ElementsAre("a"));
    controller->closeSetup();
    EXPECT_EQ(inputs.running, 0);
}

TEST_F(MicrophoneMonitorTest, FollowsTheChosenMicrophone) {
    MicrophoneMonitor monitor(*controller, prefs, real, inputs);
    controller->openSetup();
    prefs.micID = QStringLiteral("b");
    EXPECT_THAT(inputs.opened, testing::ElementsAre("a", "b"));
    EXPECT_EQ(inputs.running, 1);
    prefs.micID = QStringLiteral("none");
    EXPECT_EQ(inputs.running, 0);
    EXPECT_EQ(monitor.level(), 0);
}

} // namespace
} // namespace velmo
