#include "base/Clock.h"
#include "integration/pulse/Beeper.h"
#include "integration/pulse/Listener.h"
#include "integration/pulse/SoundServer.h"
#include "platform/pulse/PulseAudioInputService.h"

#include <gmock/gmock.h>

#include <cmath>
#include <optional>
#include <thread>

namespace velmo {
namespace {

constexpr std::int64_t kSecond = 48000;

std::unique_ptr<AudioInput> open(PulseAudioInputService& service, Listener& listener, const char* microphone) {
    auto input = microphone != nullptr ? service.openMicrophone(microphone, listener.queue(), listener.handler())
                                       : service.openSystemAudio(listener.queue(), listener.handler());
    EXPECT_TRUE(input.ok()) << (input.ok() ? "" : input.error().text);
    return input.ok() ? std::move(input).value() : nullptr;
}

constexpr double kBeepEvery = 0.7; // the beeper's buffer is half a second, and a torn beep shows only after it

/// Seconds from `expected` to the beep that was heard nearest to it; absent when none came in time.
std::optional<double> errorOf(double expected, const Listener& listener) {
    std::optional<double> error;
    for (const double heard : listener.beeps()) {
        if (std::abs(heard - expected) < std::abs(error.value_or(kBeepEvery / 2))) {
            error = heard - expected;
        }
    }
    return error;
}

/// Plays until `count` beeps came through whole; those that a starved beeper tore say nothing.
void expectBeepsAtTheirTimes(Beeper& beeper, Listener& listener, int count) {
    int whole = 0;
    for (int played = 0; whole < count && played < 4 * count; ++played) {
        const int before = beeper.underflows();
        const double expected = beeper.beep();
        std::optional<double> error;
        EXPECT_TRUE(Listener::waitUntil([&] { return (error = errorOf(expected, listener)).has_value(); }, 3) ||
                    beeper.underflows() != before);
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        if (beeper.underflows() != before) {
            continue;
        }
        ++whole;
        ASSERT_TRUE(error);
        std::printf("beep %d: %+.1f ms\n", played, *error * 1000);
        EXPECT_NEAR(*error, 0, 0.020) << "beep " << played;
    }
    EXPECT_EQ(whole, count);
}

TEST(Pulse, ListsTheMicrophoneOfTheDeskWithoutTheMonitorsOfOutputs) {
    PulseAudioInputService service(HostClock::shared());
    ASSERT_EQ(service.microphones().size(), 1u);
    EXPECT_EQ(service.microphones().front().uniqueID, "mic");
    EXPECT_FALSE(service.microphones().front().name.empty());
    EXPECT_EQ(service.defaultMicrophone(), service.microphones().front());
}

TEST(Pulse, BeepsOfTheMicrophoneArriveWithTheirTimes) {
    PulseAudioInputService service(HostClock::shared());
    Beeper beeper("micfeed");
    Listener listener;
    const auto input = open(service, listener, "mic");
    ASSERT_TRUE(listener.waitForFrames(kSecond));
    expectBeepsAtTheirTimes(beeper, listener, 10);
    EXPECT_FALSE(listener.wentBack());
}

TEST(Pulse, BeepsOfTheComputerArriveWithTheirTimes) {
    SoundServer server;
    ASSERT_TRUE(server.pactl("set-default-sink speakers"));
    PulseAudioInputService service(HostClock::shared());
    Beeper beeper("speakers");
    Listener listener;
    const auto input = open(service, listener, nullptr);
    ASSERT_TRUE(listener.waitForFrames(kSecond));
    expectBeepsAtTheirTimes(beeper, listener, 10);
    EXPECT_FALSE(listener.wentBack());
}

TEST(Pulse, SystemAudioFollowsAChangedDefaultSink) {
    SoundServer server;
    ASSERT_TRUE(server.pactl("set-default-sink speakers"));
    PulseAudioInputService service(HostClock::shared());
    Beeper beeper("other");
    Listener listener;
    const auto input = open(service, listener, nullptr);
    ASSERT_TRUE(listener.waitForFrames(kSecond / 2));
    beeper.beep();
    ASSERT_TRUE(listener.waitForFrames(kSecond / 2));
    EXPECT_TRUE(listener.beeps().empty());

    ASSERT_TRUE(server.pactl("set-default-sink other"));
    ASSERT_TRUE(Listener::waitUntil([&] {
        beeper.beep();
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        return !listener.beeps().empty();
    }));
    ASSERT_TRUE(listener.waitForFrames(kSecond)); // the last of these beeps has been heard as well
    expectBeepsAtTheirTimes(beeper, listener, 3);
    EXPECT_FALSE(listener.wentBack());
}

TEST(Pulse, AMicrophoneIsSilentWhileItsServerIsGoneAndHeardAgainAfterwards) {
    SoundServer server;
    PulseAudioInputService service(HostClock::shared());
    Listener listener;
    const auto input = open(service, listener, "mic");
    ASSERT_TRUE(listener.waitForFrames(kSecond / 2));

    server.kill();
    ASSERT_TRUE(Listener::waitUntil([&] { return service.microphones().empty(); }));
    listener.queue().sync([] {});
    const std::int64_t before = listener.frames();
    std::this_thread::sleep_for(std::chrono::milliseconds(400));
    EXPECT_EQ(listener.frames(), before);

    server.start();
    ASSERT_TRUE(listener.waitForFrames(kSecond / 2));
    Beeper beeper("micfeed");
    ASSERT_TRUE(listener.waitForFrames(2 * kSecond));
    expectBeepsAtTheirTimes(beeper, listener, 3);
    EXPECT_FALSE(listener.wentBack());
    EXPECT_EQ(service.microphones().size(), 1u);
}

TEST(Pulse, AnUnpluggedMicrophoneIsSilentAndHeardAgainWhenItIsPluggedIn) {
    SoundServer server;
    PulseAudioInputService service(HostClock::shared());
    Listener listener;
    const auto input = open(service, listener, "mic");
    ASSERT_TRUE(listener.waitForFrames(kSecond / 2));

    ASSERT_TRUE(server.pactl("unload-module module-remap-source"));
    ASSERT_TRUE(Listener::waitUntil([&] { return service.microphones().empty(); }));
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    const std::int64_t before = listener.frames();
    std::this_thread::sleep_for(std::chrono::milliseconds(800));
    EXPECT_EQ(listener.frames(), before);

    ASSERT_TRUE(server.pactl("load-module module-remap-source source_name=mic master=micfeed.monitor remix=no"));
    ASSERT_TRUE(listener.waitForFrames(kSecond / 2));
    EXPECT_FALSE(listener.wentBack());
}

TEST(Pulse, WhatIsOpenedWithoutASoundServerIsHeardAsSoonAsThereIsOne) {
    SoundServer server;
    server.kill();
    PulseAudioInputService service(HostClock::shared());
    EXPECT_TRUE(service.microphones().empty());
    EXPECT_FALSE(service.defaultMicrophone());
    Listener voice;
    Listener computer;
    const auto microphone = open(service, voice, "mic");
    const auto system = open(service, computer, nullptr);
    ASSERT_TRUE(microphone && system);

    server.start();
    ASSERT_TRUE(server.pactl("set-default-sink speakers"));
    ASSERT_TRUE(voice.waitForFrames(kSecond / 2));
    ASSERT_TRUE(computer.waitForFrames(kSecond / 2));
    EXPECT_FALSE(voice.wentBack());
    EXPECT_FALSE(computer.wentBack());
}

TEST(Pulse, AMicrophoneThatIsPluggedInAfterItWasOpenedIsHeard) {
    SoundServer server;
    ASSERT_TRUE(server.pactl("unload-module module-remap-source"));
    PulseAudioInputService service(HostClock::shared());
    EXPECT_TRUE(service.microphones().empty());
    Listener listener;
    const auto input = open(service, listener, "mic");
    ASSERT_TRUE(input);
    ASSERT_TRUE(server.pactl("load-module module-remap-source source_name=mic master=micfeed.monitor remix=no"));
    EXPECT_TRUE(listener.waitForFrames(kSecond / 2));
}

TEST(Pulse, OpeningAndClosingDoNotWaitForTheServer) {
    PulseAudioInputService service(HostClock::shared());
    ASSERT_FALSE(service.microphones().empty());
    Listener listener;
    double best = 1;
    for (int i = 0; i < 10; ++i) {
        const double start = HostClock::shared().now().seconds();
        open(service, listener, "mic").reset();
        best = std::min(best, HostClock::shared().now().seconds() - start);
    }
    EXPECT_LT(best, 0.005);
}

TEST(Pulse, NothingIsHeardAfterTheInputWasDestroyed) {
    PulseAudioInputService service(HostClock::shared());
    for (int i = 0; i < 20; ++i) {
        Listener listener;
        auto input = open(service, listener, "mic");
        ASSERT_TRUE(listener.waitForFrames(1));
        input.reset();
        const std::int64_t before = listener.frames();
        listener.queue().sync([] {});
        EXPECT_EQ(listener.frames(), before);
    }
}

} // namespace
} // namespace velmo
