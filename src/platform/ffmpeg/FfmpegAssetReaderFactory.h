#pragma once

#include "media/AssetReader.h"

namespace velmo {

/// Readers through libavformat; each track has a demuxer of its own, so that none waits for another.
class FfmpegAssetReaderFactory final : public AssetReaderFactory {
public:
    FfmpegAssetReaderFactory();
    Result<std::unique_ptr<AssetReader>> openReader(const std::filesystem::path& file) const override;
};

} // namespace velmo
