#include "platform/ffmpeg/FfmpegAssetReaderFactory.h"

#include "platform/ffmpeg/internal/Errors.h"
#include "platform/ffmpeg/internal/FileReader.h"

namespace velmo {

FfmpegAssetReaderFactory::FfmpegAssetReaderFactory() {
    internal::silenceLibraries();
}

Result<std::unique_ptr<AssetReader>> FfmpegAssetReaderFactory::openReader(const std::filesystem::path& file) const {
    return internal::FileReader::open(file);
}

} // namespace velmo
