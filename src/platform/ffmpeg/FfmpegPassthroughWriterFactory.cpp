#include "platform/ffmpeg/FfmpegPassthroughWriterFactory.h"

#include "platform/ffmpeg/internal/Errors.h"
#include "platform/ffmpeg/internal/PassthroughFile.h"

namespace velmo {

FfmpegPassthroughWriterFactory::FfmpegPassthroughWriterFactory() {
    internal::silenceLibraries();
}

Result<std::unique_ptr<PassthroughWriter>>
FfmpegPassthroughWriterFactory::makePassthroughWriter(const std::filesystem::path& file, const TrackFormat& video,
                                                      const AudioSettings& audio) const {
    const auto* format = dynamic_cast<const internal::VideoTrackFormat*>(&video);
    if (format == nullptr) {
        return internal::mediaError(internal::MediaError::encoder);
    }
    return internal::PassthroughFile::create(file, *format, audio);
}

} // namespace velmo
