#include "platform/ffmpeg/FfmpegAssetWriterFactory.h"

#include "platform/ffmpeg/FfmpegAssetWriter.h"
#include "platform/ffmpeg/internal/Errors.h"

namespace velmo {

FfmpegAssetWriterFactory::FfmpegAssetWriterFactory(FfmpegWriterOptions options) : options_(std::move(options)) {
    internal::silenceLibraries();
}

Result<std::unique_ptr<AssetWriter>> FfmpegAssetWriterFactory::makeWriter(const std::filesystem::path& path) {
    return std::unique_ptr<AssetWriter>(std::make_unique<FfmpegAssetWriter>(path, options_));
}

} // namespace velmo
