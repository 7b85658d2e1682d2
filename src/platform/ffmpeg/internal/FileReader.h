#pragma once

#include "media/AssetReader.h"
#include "platform/ffmpeg/internal/AudioTrackReader.h"
#include "platform/ffmpeg/internal/Demuxer.h"
#include "platform/ffmpeg/internal/VideoTrackFormat.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

namespace velmo::internal {

/// The `AssetReader` of this room: one demuxer for the pictures, one for each audio track, opened at its first use.
class FileReader final : public AssetReader {
public:
    static Result<std::unique_ptr<AssetReader>> open(const std::filesystem::path& path);

    int videoTrackCount() const override { return videoTracks_; }
    int audioTrackCount() const override { return audioTracks_; }
    const TrackFormat* videoFormat() const override { return format_ ? &*format_ : nullptr; }
    ReadStep nextVideoSample(EncodedSample& sample) override;
    ReadStep nextMixedAudio(AudioRef& sound) override;

private:
    explicit FileReader(std::filesystem::path path) : path_(std::move(path)) {}
    bool openAudio();

    std::filesystem::path path_;
    std::unique_ptr<Demuxer> demuxer_;
    std::optional<VideoTrackFormat> format_;
    PacketPtr packet_;
    int videoTracks_ = 0;
    int audioTracks_ = 0;
    std::vector<std::unique_ptr<AudioTrackReader>> audio_;
};

} // namespace velmo::internal
