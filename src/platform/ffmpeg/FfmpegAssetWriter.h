#pragma once

#include "media/AssetWriter.h"
#include "platform/ffmpeg/FfmpegWriterOptions.h"

#include <memory>

namespace velmo {

/// An MP4 in the making. Each track encodes on a thread of its own ("velmo.writer.video", "velmo.writer.audio"), a
/// further one ("velmo.writer.file") puts the packets on disk as they come.
///
/// Limits: 8 frames wait for the video encoder, 64 buffers for each audio encoder, 32 MiB for the disk; at a limit the
/// input is not ready. When the disk runs out or fails, no more samples are taken and `finishWriting` makes what is
/// there a playable file; the interruption is told on the file thread. Until then a journal lies beside the file, see
/// docs/durability.md. A writer destroyed while it writes finishes its file. It must not be destroyed inside one of its
/// own callbacks, nor may these wait for its caller's thread.
class FfmpegAssetWriter final : public AssetWriter {
public:
    FfmpegAssetWriter(std::filesystem::path path, FfmpegWriterOptions options);
    ~FfmpegAssetWriter() override;

    AssetWriterInput* addVideoInput(const VideoSettings& settings) override;
    AssetWriterInput* addAudioInput(const AudioSettings& settings) override;
    void setOnInterruption(std::function<void(const Error&)> interrupted) override;
    Result<void> startWriting() override;
    void startSession(MediaTime sourceTime) override;
    WriterStatus status() const override;
    std::optional<Error> error() const override;
    void cancelWriting() override;
    void finishWriting(std::function<void()> completion) override;
    void noteMark(const RecordingMark& mark) override;
    void noteProgress(MediaTime time) override;
    const std::filesystem::path& outputPath() const override;

private:
    struct Core;
    std::unique_ptr<Core> core_;
};

} // namespace velmo
