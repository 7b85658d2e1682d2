#pragma once

#include "media/PassthroughWriter.h"
#include "platform/ffmpeg/internal/AacEncoder.h"
#include "platform/ffmpeg/internal/Mp4File.h"
#include "platform/ffmpeg/internal/VideoTrackFormat.h"

#include <memory>
#include <vector>

namespace velmo::internal {

/// The `PassthroughWriter` of this room.
class PassthroughFile final : public PassthroughWriter {
public:
    static Result<std::unique_ptr<PassthroughWriter>> create(const std::filesystem::path& path,
                                                             const VideoTrackFormat& video, const AudioSettings& audio);
    ~PassthroughFile() override;

    bool appendVideo(const EncodedSample& sample) override;
    bool appendAudio(const AudioRef& sound) override;
    Result<void> finish() override;

private:
    PassthroughFile() = default;
    void put(AVPacket& packet, int track, AVRational timeBase);

    std::unique_ptr<Mp4File> file_;
    std::unique_ptr<AacEncoder> encoder_;
    AudioFormat audioFormat_;
    AVRational videoTimeBase_{1, 1};
    int videoTrack_ = -1;
    int audioTrack_ = -1;
    PacketPtr packet_;
    std::vector<float> floats_;
    Result<void> state_; // the first failure
    bool finished_ = false;
};

} // namespace velmo::internal
