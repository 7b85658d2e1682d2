#include "app/DeviceAccess.h"

#include "support/ManualQueue.h"
#include "unit/session/FakeServices.h"
#include "unit/session/ManualTimers.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

using Media = DevicePermissions::Media;

/// Opens or refuses as told, and speaks when the test says so.
class OneMicrophone final : public AudioInputService {
public:
    std::vector<AudioDevice> microphones() const override { return list; }
    std::optional<AudioDevice> defaultMicrophone() const override {
        return list.empty() ? std::nullopt : std::optional(list.front());
    }
    Result<std::unique_ptr<AudioInput>> openMicrophone(const std::string&, SerialQueue&, Handler handler) override {
        ++opened;
        if (refuses) {
            return Error{"test", 1, "no"};
        }
        speak = std::move(handler);
        return std::unique_ptr<AudioInput>(std::make_unique<Input>(listening));
    }
    Result<std::unique_ptr<AudioInput>> openSystemAudio(SerialQueue&, Handler) override { return Error{}; }

    std::vector<AudioDevice> list{{"mic", "Micrófono"}};
    bool refuses = false;
    int opened = 0;
    int listening = 0;
    Handler speak;

private:
    struct Input final : AudioInput {
        explicit Input(int& now) : count(now) { ++count; }
        ~Input() override { --count; }
        int& count;
    };
};

class DeviceAccessTest : public testing::Test {
protected:
    DeviceAccessTest() { cameras.list.clear(); }

    std::unique_ptr<DeviceAccess> make(std::function<void(std::function<void(bool)>)> ask = {}) {
        auto own = std::make_unique<test::ManualQueue>();
        queue = own.get();
        return std::make_unique<DeviceAccess>(DeviceAccess::Services{devices, microphone, timers, std::move(own),
                                                                     [this] { return nodes; }, std::move(ask)});
    }
    void settle() {
        queue->run();
        test::settle();
    }

    test::ManualClock clock{1000};
    test::ManualTimers timers{clock};
    test::FakeCameras cameras;
    OneMicrophone microphone;
    Devices devices{&cameras, &microphone};
    test::ManualQueue* queue = nullptr;
    DeviceFinding nodes = DeviceFinding::granted;
};

TEST_F(DeviceAccessTest, NothingIsKnownBeforeItIsTried) {
    const auto access = make();
    EXPECT_EQ(access->status(Media::video), 0);
    EXPECT_EQ(access->status(Media::audio), 0);
}

TEST_F(DeviceAccessTest, ACameraThatOpensIsAuthorizedAndOneThatIsRefusedIsDenied) {
    const auto access = make();
    int found = 0;
    access->look([&found] { ++found; });
    settle();
    EXPECT_EQ(access->status(Media::video), 3);
    nodes = DeviceFinding::refused;
    access->look([] {});
    settle();
    EXPECT_EQ(access->status(Media::video), 2);
}

TEST_F(DeviceAccessTest, ACameraWithoutANodeCounts) {
    nodes = DeviceFinding::absent;
    const auto access = make();
    access->look([] {});
    settle();
    EXPECT_EQ(access->finding(Media::video), DeviceFinding::absent);
    EXPECT_EQ(access->status(Media::video), 0) << "looked for again when it is wanted";
    cameras.list = {{"synthetic", "Cámara"}};
    access->look([] {});
    settle();
    EXPECT_EQ(access->status(Media::video), 3);
}

TEST_F(DeviceAccessTest, AMicrophoneIsThereOnceItGivesSamplesAndIsLetGoOf) {
    const auto access = make();
    int found = 0;
    access->look([&found] { ++found; });
    settle();
    EXPECT_EQ(found, 0);
    EXPECT_EQ(microphone.listening, 1);
    microphone.speak(Sample{});
    settle();
    EXPECT_EQ(found, 1);
    EXPECT_EQ(access->finding(Media::audio), DeviceFinding::granted);
    EXPECT_EQ(microphone.listening, 0);
    access->look([] {});
    settle();
    EXPECT_EQ(microphone.opened, 1) << "one that works is not opened again and again";
}

TEST_F(DeviceAccessTest, ASilentMicrophoneIsToldOfAndYetRecorded) {
    const auto access = make();
    access->look([] {});
    timers.advance(2.1);
    settle();
    EXPECT_EQ(access->finding(Media::audio), DeviceFinding::silent);
    EXPECT_EQ(access->status(Media::audio), 3);
    EXPECT_EQ(microphone.listening, 0);
}

TEST_F(DeviceAccessTest, WithoutAMicrophoneOrWithOneThatIsRefusedNobodyWaits) {
    microphone.list.clear();
    const auto access = make();
    access->look([] {});
    settle();
    EXPECT_EQ(access->finding(Media::audio), DeviceFinding::absent);
    microphone.list = {{"mic", "Micrófono"}};
    microphone.refuses = true;
    access->look([] {});
    settle();
    EXPECT_EQ(access->status(Media::audio), 2);
}

TEST_F(DeviceAccessTest, AllWhoAskMeanwhileGetTheOneAnswer) {
    const auto access = make();
    int found = 0;
    for (int i = 0; i < 3; ++i) {
        access->look([&found] { ++found; });
    }
    microphone.speak(Sample{});
    settle();
    EXPECT_EQ(found, 3);
    EXPECT_EQ(microphone.opened, 1);
}

TEST_F(DeviceAccessTest, InASandboxTheDesktopIsAskedOnceBeforeAnyCameraIsTried) {
    int asked = 0;
    std::function<void(bool)> answer;
    const auto access = make([&](std::function<void(bool)> answered) {
        ++asked;
        answer = std::move(answered);
    });
    access->look([] {});
    settle();
    EXPECT_EQ(access->finding(Media::video), DeviceFinding::unknown);
    answer(false);
    settle();
    EXPECT_EQ(access->status(Media::video), 2);
    EXPECT_EQ(asked, 1);
}

TEST_F(DeviceAccessTest, WhatAnswersAfterItsEndIsNotHeard) {
    auto access = make();
    access->look([] { FAIL(); });
    access.reset();
    microphone.speak(Sample{});
    timers.advance(3);
    test::settle();
    EXPECT_EQ(microphone.listening, 0);
}

} // namespace
} // namespace velmo
