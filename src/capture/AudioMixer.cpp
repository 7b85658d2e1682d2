#include "capture/AudioMixer.h"

#include <array>
#include <cstdio>
#include <random>
#include <system_error>

namespace velmo {

namespace {

constexpr AudioSettings kMixedAudio{48000, 2, 192000};

// A version 4 UUID in capitals.
std::string newUUID() {
    std::random_device random;
    std::array<unsigned, 8> words{};
    for (unsigned& word : words) {
        word = random() & 0xffffU;
    }
    words[3] = (words[3] & 0x0fffU) | 0x4000U;
    words[4] = (words[4] & 0x3fffU) | 0x8000U;
    std::array<char, 37> text{};
    std::snprintf(text.data(), text.size(), "%04X%04X-%04X-%04X-%04X-%04X%04X%04X", words[0], words[1], words[2],
                  words[3], words[4], words[5], words[6], words[7]);
    return text.data();
}

// Copies both streams side by side: the one that is behind goes next, so that in the new file picture and sound of the
// same moment lie close together. False when reading or writing failed.
bool pump(AssetReader& reader, PassthroughWriter& writer) {
    EncodedSample picture;
    AudioRef sound;
    double videoTime = 0;
    std::int64_t audioFrames = 0;
    ReadStep video = ReadStep::sample;
    ReadStep audio = ReadStep::sample;
    while (video == ReadStep::sample || audio == ReadStep::sample) {
        const double audioTime = static_cast<double>(audioFrames) / kMixedAudio.sampleRate;
        if (video == ReadStep::sample && (audio != ReadStep::sample || videoTime <= audioTime)) {
            video = reader.nextVideoSample(picture);
            if (video == ReadStep::sample) {
                videoTime = (picture.presentation + picture.duration).seconds();
                if (!writer.appendVideo(picture)) {
                    return false;
                }
            }
        } else {
            audio = reader.nextMixedAudio(sound);
            if (audio == ReadStep::sample) {
                audioFrames += sound->frames();
                if (!writer.appendAudio(sound)) {
                    return false;
                }
            }
        }
    }
    return video == ReadStep::end && audio == ReadStep::end;
}

} // namespace

AudioMixer::AudioMixer(const AssetReaderFactory& readers, const PassthroughWriterFactory& writers, SystemLog systemLog)
    : readers_(readers), writers_(writers), systemLog_(std::move(systemLog)) {}

void AudioMixer::mixIfNeeded(const std::filesystem::path& file) const {
    if (const Result<void> mixed = mix(file); !mixed && systemLog_) {
        systemLog_("Velmo Studio: no se pudo mezclar el audio: " + mixed.error().text);
    }
}

Result<void> AudioMixer::mix(const std::filesystem::path& file) const {
    auto reader = readers_.openReader(file);
    if (!reader) {
        return reader.error();
    }
    const TrackFormat* format = reader.value()->videoFormat();
    if (reader.value()->audioTrackCount() < 2 || reader.value()->videoTrackCount() < 1 || format == nullptr) {
        return {};
    }
    const std::filesystem::path temporary = file.parent_path() / (".mezcla-" + newUUID() + ".mp4");
    auto writer = writers_.makePassthroughWriter(temporary, *format, kMixedAudio);
    if (!writer) {
        return writer.error();
    }
    // What fails from here on is silent: the writer takes its file away, and the recording keeps its tracks.
    if (!pump(*reader.value(), *writer.value()) || !writer.value()->finish()) {
        return {};
    }
    std::error_code failed;
    std::filesystem::rename(temporary, file, failed);
    if (failed) {
        std::error_code ignored;
        std::filesystem::remove(temporary, ignored);
        return Error{"velmo.system", failed.value(), failed.message()};
    }
    return {};
}

} // namespace velmo
