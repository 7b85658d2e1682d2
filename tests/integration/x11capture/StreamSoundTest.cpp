#include "platform/x11/X11ScreenCapture.h"

#include "StreamProbe.h"
#include "support/XTestServer.h"

#include <gtest/gtest.h>

namespace velmo::test {
namespace {

/// Sound sources that deliver one buffer as soon as they are opened.
class ScriptedSound final : public AudioInputService {
public:
    struct Input final : AudioInput {
        explicit Input(int& open) : count(open) { ++count; }
        ~Input() override { --count; }
        int& count;
    };

    std::vector<AudioDevice> microphones() const override { return {}; }
    std::optional<AudioDevice> defaultMicrophone() const override { return std::nullopt; }
    Result<std::unique_ptr<AudioInput>> openMicrophone(const std::string& uniqueID, SerialQueue& queue,
                                                       Handler handler) override {
        microphone = uniqueID;
        return open(queue, std::move(handler));
    }
    Result<std::unique_ptr<AudioInput>> openSystemAudio(SerialQueue& queue, Handler handler) override {
        systemOpened = true;
        return open(queue, std::move(handler));
    }

    std::string microphone;
    bool systemOpened = false;
    bool fails = false;
    int openInputs = 0;

private:
    Result<std::unique_ptr<AudioInput>> open(SerialQueue& queue, Handler handler) {
        if (fails) {
            return Error{"test", 1, "no"};
        }
        queue.async([handler = std::make_shared<Handler>(std::move(handler))] {
            Sample sample;
            sample.audio = AudioBuffer::create({}, 480);
            (*handler)(sample);
        });
        return std::unique_ptr<AudioInput>(std::make_unique<Input>(openInputs));
    }
};

class StreamSound : public testing::Test {
protected:
    std::unique_ptr<CaptureStream> start() {
        StreamConfiguration configuration;
        configuration.width = 640;
        configuration.height = 480;
        configuration.capturesAudio = true;
        configuration.microphoneDeviceID = "mic";
        std::promise<DisplayId> display;
        capture.queryShareableContent(
            [&](Result<ShareableContent> content) { display.set_value(content.value().displays.at(0).displayID); });
        auto stream = std::move(capture.makeStream(ContentFilter::display(display.get_future().get(), {}, {}),
                                                   configuration, nullptr))
                          .value();
        for (const auto type : {StreamOutput::screen, StreamOutput::audio, StreamOutput::microphone}) {
            EXPECT_TRUE(stream->addOutput(probe, type, probe.queue).ok());
        }
        EXPECT_TRUE(startAndWait(*stream).ok());
        EXPECT_TRUE(probe.waitForPictures(1));
        return stream;
    }

    XTestServer server{"640x480x24"};
    StreamProbe probe;
    ScriptedSound sound;
    X11ScreenCapture capture{server.display(), &sound, HostClock::shared()};
};

TEST_F(StreamSound, SystemSoundAndMicrophoneComeThroughTheStreamUntilItStops) {
    const auto stream = start();
    probe.queue.sync([] {});
    EXPECT_EQ(probe.sounds().size(), 2u);
    EXPECT_EQ(sound.microphone, "mic");
    EXPECT_TRUE(sound.systemOpened);
    EXPECT_EQ(sound.openInputs, 2);
    stopAndWait(*stream);
    EXPECT_EQ(sound.openInputs, 0);
}

TEST_F(StreamSound, ASourceThatDoesNotOpenLeavesThePictures) {
    sound.fails = true;
    const auto stream = start();
    EXPECT_TRUE(probe.sounds().empty());
    stopAndWait(*stream);
}

} // namespace
} // namespace velmo::test
