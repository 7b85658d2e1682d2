#pragma once

#include "media/AssetInspector.h"

namespace velmo {

/// Through libavformat, libavcodec and libswscale. No state: any thread, also several at once. A call gives up with an
/// error after 10 seconds.
class FfmpegAssetInspector final : public AssetInspector {
public:
    FfmpegAssetInspector();
    Result<double> duration(const std::filesystem::path& file) const override;
    Result<FrameRef> image(const std::filesystem::path& file, double seconds, int maximumSide) const override;
};

} // namespace velmo
