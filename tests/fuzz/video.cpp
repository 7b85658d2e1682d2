// A file with a video's name in the library's folder: its length, its picture, and the samples that mixing reads.

#include "Fuzz.h"
#include "MemoryFile.h"
#include "platform/ffmpeg/FfmpegAssetInspector.h"
#include "platform/ffmpeg/FfmpegAssetReaderFactory.h"

using namespace velmo;

namespace {

constexpr int kMostSteps = 40; // a small file can tell of hours of silence

void readAll(AssetReader& reader) {
    EncodedSample sample;
    for (int i = 0; i < kMostSteps && reader.nextVideoSample(sample) == ReadStep::sample; ++i) {
        fuzz::require(sample.bytes.empty() || sample.bytes.data() != nullptr);
    }
    AudioRef sound;
    for (int i = 0; i < kMostSteps && reader.nextMixedAudio(sound) == ReadStep::sample; ++i) {
        fuzz::require(static_cast<bool>(sound));
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const FfmpegAssetInspector inspector;
    static const FfmpegAssetReaderFactory readers;
    const fuzz::MemoryFile file(std::as_bytes(std::span(data, size)));
    if (const auto duration = inspector.duration(file.path())) {
        fuzz::require(duration.value() > 0);
    }
    for (const double seconds : {0.0, 1.0}) {
        if (const auto image = inspector.image(file.path(), seconds, 720)) {
            fuzz::require(static_cast<bool>(image.value()));
        }
    }
    if (const auto reader = readers.openReader(file.path())) {
        readAll(*reader.value());
    }
    return 0;
}
