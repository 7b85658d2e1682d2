#pragma once

#include "media/AssetWriter.h"
#include "platform/ffmpeg/FfmpegWriterOptions.h"

namespace velmo {

/// Writers that encode with libx264 and AAC through libavcodec.
class FfmpegAssetWriterFactory final : public AssetWriterFactory {
public:
    explicit FfmpegAssetWriterFactory(FfmpegWriterOptions options = {});
    Result<std::unique_ptr<AssetWriter>> makeWriter(const std::filesystem::path& path) override;

private:
    FfmpegWriterOptions options_;
};

} // namespace velmo
