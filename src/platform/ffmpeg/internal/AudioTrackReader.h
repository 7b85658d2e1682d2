#pragma once

#include "media/AssetReader.h"
#include "platform/ffmpeg/internal/Demuxer.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <vector>

namespace velmo::internal {

/// Decodes one audio track to 48 kHz stereo float as a stream that begins at the file's zero and has no gaps.
/// One thread at a time; blocks on disk and decoding.
class AudioTrackReader {
public:
    static constexpr int kSampleRate = 48000;
    static constexpr int kChannels = 2;

    /// `index` counts the file's audio tracks.
    static Result<std::unique_ptr<AudioTrackReader>> open(const std::filesystem::path& path, std::size_t index);

    /// Adds the stream's next frames onto `interleaved`, as many as it takes; fewer frames are there only at the end of
    /// the track. `frames` says how many.
    ReadStep addNext(std::span<float> interleaved, std::size_t& frames);

private:
    AudioTrackReader() = default;
    ReadStep decodeMore();
    bool convert(AVFrame* frame);
    bool prepareResampler(AVFrame& frame);
    void place(const AVFrame& frame);
    std::size_t giveOut(std::span<float> interleaved);

    std::unique_ptr<Demuxer> demuxer_;
    AVStream* stream_ = nullptr;
    CodecContext decoder_;
    Resampler resampler_;
    PacketPtr packet_;
    FramePtr frame_;
    std::vector<float> ready_; // interleaved
    std::size_t used_ = 0;     // floats of `ready_` that were given out
    std::int64_t silence_ = 0; // frames to give out before `ready_`
    std::int64_t end_ = 0;     // frames of the stream so far, those to give out included
    std::int64_t skip_ = 0;    // frames to come that lie before `end_`
    bool draining_ = false;
    bool ended_ = false;
};

} // namespace velmo::internal
