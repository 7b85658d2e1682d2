#include "platform/pulse/SoundDevices.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

SoundDevices devices() {
    SoundDevices all;
    all.sources = {{"speakers.monitor", "Monitor of Speakers", "speakers"},
                   {"usb", "Micrófono USB", std::nullopt},
                   {"hdmi.monitor", "Monitor of HDMI", "hdmi"},
                   {"internal", "", std::nullopt}};
    all.defaultSource = "internal";
    all.defaultSink = "hdmi";
    return all;
}

TEST(SoundDevices, ListsMicrophonesInTheServersOrderWithoutMonitors) {
    EXPECT_THAT(devices().microphones(),
                testing::ElementsAre(AudioDevice{"usb", "Micrófono USB"}, AudioDevice{"internal", "internal"}));
}

TEST(SoundDevices, TheDefaultMicrophoneIsTheServersOrTheFirstOne) {
    SoundDevices all = devices();
    EXPECT_EQ(all.defaultMicrophone()->uniqueID, "internal");
    all.defaultSource = "speakers.monitor";
    EXPECT_EQ(all.defaultMicrophone()->uniqueID, "usb");
    EXPECT_FALSE(SoundDevices{}.defaultMicrophone());
}

TEST(SoundDevices, SystemAudioIsTheMonitorOfTheDefaultSink) {
    SoundDevices all = devices();
    EXPECT_EQ(all.systemMonitor(), "hdmi.monitor");
    all.defaultSink = "gone";
    EXPECT_FALSE(all.systemMonitor());
    EXPECT_FALSE(SoundDevices{}.systemMonitor());
}

} // namespace
} // namespace velmo
