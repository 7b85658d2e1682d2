#pragma once

#include "base/Result.h"
#include "media/PixelBuffer.h"

#include <filesystem>

namespace velmo {

/// Looks into finished video files. Both calls block on disk and decoding: never on the main thread.
class AssetInspector {
public:
    virtual ~AssetInspector() = default;

    /// In seconds. An error for a file that is no video.
    virtual Result<double> duration(const std::filesystem::path& file) const = 0;

    /// The picture shown at `seconds`, as BGRA, upright, scaled down to fit `maximumSide` pixels on its longer
    /// side (never up). An error when there is no picture at that time.
    virtual Result<FrameRef> image(const std::filesystem::path& file, double seconds, int maximumSide) const = 0;
};

} // namespace velmo
