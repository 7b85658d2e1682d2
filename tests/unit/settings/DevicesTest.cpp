#include "settings/Devices.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using testing::IsEmpty;

class TwoCameras final : public CameraDevices {
public:
    std::vector<CameraDevice> cameras() const override {
        return {{"front", "Frontal"}, {"usb", "USB"}, {"usb", "USB otra vez"}};
    }
    std::optional<CameraDevice> defaultCamera() const override { return CameraDevice{"front", "Frontal"}; }
};

class NoCamera final : public CameraDevices {
public:
    std::vector<CameraDevice> cameras() const override { return {}; }
    std::optional<CameraDevice> defaultCamera() const override { return std::nullopt; }
};

class TwoMicrophones final : public AudioInputService {
public:
    std::vector<AudioDevice> microphones() const override { return {{"internal", "Interno"}, {"desk", "De mesa"}}; }
    std::optional<AudioDevice> defaultMicrophone() const override { return AudioDevice{"internal", "Interno"}; }
    Result<std::unique_ptr<AudioInput>> openMicrophone(const std::string&, SerialQueue&, Handler) override {
        return Error{"test", 1, "not opened here"};
    }
    Result<std::unique_ptr<AudioInput>> openSystemAudio(SerialQueue&, Handler) override {
        return Error{"test", 1, "not opened here"};
    }
};

class DevicesTest : public testing::Test {
protected:
    TwoCameras cameras;
    TwoMicrophones microphones;
    Devices devices{&cameras, &microphones};
};

TEST_F(DevicesTest, TheEmptyIdIsTheDefaultDevice) {
    EXPECT_EQ(devices.camera(QString())->uniqueID, "front");
    EXPECT_EQ(devices.microphone(QString())->uniqueID, "internal");
}

TEST_F(DevicesTest, TheWordNoneIsNoDevice) {
    EXPECT_EQ(devices.camera(QStringLiteral("none")), std::nullopt);
    EXPECT_EQ(devices.microphone(QStringLiteral("none")), std::nullopt);
}

TEST_F(DevicesTest, AKnownIdIsItsFirstDevice) {
    EXPECT_EQ(devices.camera(QStringLiteral("usb"))->name, "USB");
    EXPECT_EQ(devices.microphone(QStringLiteral("desk"))->name, "De mesa");
}

TEST_F(DevicesTest, AnUnpluggedDeviceFallsBackOnTheDefault) {
    EXPECT_EQ(devices.camera(QStringLiteral("gone"))->uniqueID, "front");
    EXPECT_EQ(devices.microphone(QStringLiteral("gone"))->uniqueID, "internal");
}

TEST_F(DevicesTest, ListsWhatThereIs) {
    EXPECT_EQ(devices.cameras().size(), 3u);
    EXPECT_EQ(devices.microphones().size(), 2u);
}

TEST(Devices, WithoutACameraThereIsNoDefaultEither) {
    const NoCamera none;
    EXPECT_EQ(Devices(&none, nullptr).camera(QStringLiteral("front")), std::nullopt);
}

TEST(Devices, WithoutTheServicesThereAreNoDevices) {
    const Devices devices(nullptr, nullptr);
    EXPECT_THAT(devices.cameras(), IsEmpty());
    EXPECT_THAT(devices.microphones(), IsEmpty());
    EXPECT_EQ(devices.camera(QString()), std::nullopt);
    EXPECT_EQ(devices.microphone(QString()), std::nullopt);
}

} // namespace
} // namespace velmo
