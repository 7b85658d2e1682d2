#pragma once

#include "base/SerialQueue.h"
#include "platform/AudioInput.h"
#include "platform/CameraCapture.h"
#include "session/Collaborators.h"
#include "session/MainTimers.h"
#include "session/MicrophoneLevel.h"
#include "surfaces/CameraFeed.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace velmo {

class Clock;
namespace internal {
class CameraSession;
class FrameTap;
} // namespace internal

/// The camera behind the bubble, and the chosen microphone as a level source; what is recorded of the microphone does
/// not come from here. Feeds the bubble's preview (`feed`), the meters (`level`) and, while a column scene runs, the
/// compositor (`startFrames`).
///
/// Main thread; news on the main thread. Devices are opened and closed on "velmo.camera", since that may block; sound
/// is measured on "velmo.camera.audio"; pictures pass on "velmo.camera.cuadros".
class CameraManager final : public MicrophoneLevel, public CameraPort {
    Q_OBJECT
public:
    /// All borrowed; they outlive the manager.
    struct Services {
        CameraService& cameras;
        AudioInputService& inputs;
        const Clock& clock;
        MainTimers& timers;
        MakeQueue makeQueue = &makeThreadQueue;
    };

    explicit CameraManager(Services services);
    ~CameraManager() override;

    /// The one of the program, as the composition root has registered it.
    static CameraManager& shared();
    static void setShared(CameraManager* manager);

    /// Pictures of the camera; empty without one.
    CameraFeed& feed() { return feed_; }

    /// Ends when the devices are as asked for and `hasVideo` tells of it. A device that cannot be opened is left out
    /// without a word; a camera is tried again until another request comes.
    QCoro::Task<void> configure(std::optional<std::string> camera, std::optional<std::string> microphone) override;
    /// Takes effect in the background; `hasVideo` and `level` are down at once.
    void stop() override;
    bool hasVideo() const override { return hasVideo_; }
    /// 0 while nothing comes from the microphone, as when it is unplugged.
    double level() const override { return level_; }
    /// Holds until `stopFrames`, `stop` or a `configure` that changes a device.
    void startFrames(bool mirrored, std::function<void(FrameRef)> onFrame) override;
    void stopFrames() override;

signals:
    void hasVideoChanged();

private:
    static constexpr double kBetweenLevels = 0.05; // s: at most 20 levels a second reach the main thread
    static constexpr double kSilence = 0.5;        // s without sound: the microphone is gone, and loud no more

    bool setDevices(std::uint64_t turn, const std::optional<std::string>& camera,
                    const std::optional<std::string>& microphone);
    void listenTo(const std::optional<std::string>& microphone);
    void hear(const Sample& sample);
    void publishVideo(std::uint64_t turn, bool hasVideo);
    void setHasVideo(bool hasVideo);
    void setLevel(double level);
    void setListens(bool listens);

    AudioInputService& inputs_;
    const Clock& clock_;
    MainTimers& timers_;
    CameraFeed feed_;

    // Main thread.
    bool hasVideo_ = false;
    double level_ = 0;
    bool listens_ = false;
    bool heard_ = false; // since the last look
    std::unique_ptr<MainTimer> silenceLook_;
    std::uint64_t turn_ = 0; // counts requests: news of an earlier one is not published

    double lastLevel_;                              // on the audio queue
    const std::unique_ptr<internal::FrameTap> tap_; // on the frame queue

    // On the queue.
    std::uint64_t turnOnQueue_ = 0;
    std::optional<std::string> audioID_;
    std::unique_ptr<AudioInput> microphone_;
    std::unique_ptr<internal::CameraSession> session_;

    // Last, so that they go first and nothing that they still run is gone.
    std::unique_ptr<SerialQueue> audioQueue_;
    std::unique_ptr<SerialQueue> frameQueue_;
    std::unique_ptr<SerialQueue> queue_;
};

} // namespace velmo
