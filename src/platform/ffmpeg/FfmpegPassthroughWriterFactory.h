#pragma once

#include "media/PassthroughWriter.h"

namespace velmo {

/// Takes the track formats of `FfmpegAssetReaderFactory`'s readers.
class FfmpegPassthroughWriterFactory final : public PassthroughWriterFactory {
public:
    FfmpegPassthroughWriterFactory();
    Result<std::unique_ptr<PassthroughWriter>> makePassthroughWriter(const std::filesystem::path& file,
                                                                     const TrackFormat& video,
                                                                     const AudioSettings& audio) const override;
};

} // namespace velmo
