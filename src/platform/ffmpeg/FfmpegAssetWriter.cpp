#include "platform/ffmpeg/FfmpegAssetWriter.h"

#include "base/SerialQueue.h"
#include "platform/ffmpeg/internal/AacEncoder.h"
#include "platform/ffmpeg/internal/AudioTrack.h"
#include "platform/ffmpeg/internal/Errors.h"
#include "platform/ffmpeg/internal/H264Encoder.h"
#include "platform/ffmpeg/internal/JournaledFile.h"
#include "platform/ffmpeg/internal/VideoTrack.h"

#include <atomic>
#include <mutex>
#include <optional>
#include <vector>

namespace velmo {

using internal::JournaledFile;
using internal::PacketPtr;

namespace {

constexpr std::int64_t kBacklogLimit = 32 << 20; // bytes that wait for the disk: tens of seconds

} // namespace

struct FfmpegAssetWriter::Core final : internal::PacketSink {
    Core(std::filesystem::path output, FfmpegWriterOptions settings)
        : path(std::move(output)), options(std::move(settings)) {}

    // PacketSink
    bool isOpen() const override { return open.load(std::memory_order_acquire); }
    bool hasRoom() const override { return backlog.load(std::memory_order_relaxed) < kBacklogLimit; }
    void put(PacketPtr packet, int track) override;
    void trackEnded() override { partEnded(); }
    void trackFailed(const Error& reason) override {
        fileQueue.async([this, reason = Error(reason)] { interrupt(reason); });
    }
    void reached(MediaTime time) override;

    Result<void> start();
    Result<void> openTracks();
    Result<void> addTracks();
    template <typename Note>
    void noteInJournal(Note note);
    void markAllAsFinished();
    void partEnded();
    void interrupt(const Error& reason);
    void closeFile();
    Result<void> finishFile();
    void discardFile();
    void fail(const Error& reason);

    const std::filesystem::path path;
    const FfmpegWriterOptions options;
    std::function<void(const Error&)> onInterruption;
    std::function<void()> completion;
    bool finishing = false;

    std::atomic<WriterStatus> status{WriterStatus::unknown};
    std::atomic<bool> open{false};
    std::atomic<std::int64_t> backlog{0}; // bytes
    std::atomic<int> partsLeft{0};        // tracks that have not ended, and the call to finish

    mutable std::mutex lock;
    // protected by lock
    std::optional<Error> error;

    // On the file queue, once writing.
    std::unique_ptr<JournaledFile> file;
    std::optional<Error> interruption;

    // The tracks end first, then the queue that they hand their packets to.
    ThreadQueue fileQueue{"velmo.writer.file"};
    std::vector<std::unique_ptr<internal::AudioTrack>> audio;
    std::unique_ptr<internal::VideoTrack> video;
};

void FfmpegAssetWriter::Core::put(PacketPtr packet, int track) {
    if (!isOpen()) {
        return;
    }
    backlog.fetch_add(packet->size, std::memory_order_relaxed);
    fileQueue.async([this, packet = std::move(packet), track] {
        const std::int64_t size = packet->size;
        if (file != nullptr && !interruption) {
            if (const Result<void> written = file->write(*packet, track); !written) {
                interrupt(written.error());
            }
        }
        backlog.fetch_sub(size, std::memory_order_relaxed);
    });
}

void FfmpegAssetWriter::Core::reached(MediaTime time) {
    for (const auto& track : audio) {
        track->keepUpWith(time);
    }
}

Result<void> FfmpegAssetWriter::Core::start() {
    if (Result<void> opened = openTracks(); !opened) {
        return opened;
    }
    auto created = JournaledFile::create(path, options.minimumFreeBytes);
    if (!created) {
        return created.error();
    }
    file = std::move(created).value();
    if (Result<void> added = addTracks(); !added) {
        discardFile();
        return added;
    }
    return {};
}

Result<void> FfmpegAssetWriter::Core::addTracks() {
    const auto add = [this](auto& track, AVRational timeBase) {
        const internal::CodecParameters parameters(avcodec_parameters_alloc());
        avcodec_parameters_from_context(parameters.get(), &track.context());
        const Result<int> number = file->addTrack(*parameters, timeBase);
        track.setNumber(number ? number.value() : -1);
        return number ? Result<void>() : Result<void>(number.error());
    };
    if (video != nullptr) {
        if (Result<void> added = add(*video, internal::kVideoTimeBase); !added) {
            return added;
        }
    }
    for (const auto& track : audio) {
        if (Result<void> added = add(*track, track->timeBase()); !added) {
            return added;
        }
    }
    return {};
}

// Marks and progress are small and rare: they wait for the disk behind the packets.
template <typename Note>
void FfmpegAssetWriter::Core::noteInJournal(Note note) {
    if (!isOpen()) {
        return;
    }
    fileQueue.async([this, note = std::make_unique<Note>(std::move(note))] {
        if (file == nullptr || interruption) {
            return;
        }
        if (const Result<void> noted = file->note(*note); !noted) {
            interrupt(noted.error());
        }
    });
}

Result<void> FfmpegAssetWriter::Core::openTracks() {
    if (video != nullptr) {
        if (Result<void> opened = video->open(); !opened) {
            return opened;
        }
    }
    for (const auto& track : audio) {
        if (Result<void> opened = track->open(); !opened) {
            return opened;
        }
    }
    return {};
}

void FfmpegAssetWriter::Core::markAllAsFinished() {
    if (video != nullptr) {
        video->markAsFinished();
    }
    for (const auto& track : audio) {
        track->markAsFinished();
    }
}

void FfmpegAssetWriter::Core::partEnded() {
    if (partsLeft.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        fileQueue.async([this] { closeFile(); });
    }
}

// On the file queue.
void FfmpegAssetWriter::Core::interrupt(const Error& reason) {
    if (interruption || file == nullptr) {
        return;
    }
    interruption = reason;
    open.store(false, std::memory_order_release);
    if (onInterruption) {
        onInterruption(reason);
    }
}

// On the file queue, when all tracks have ended and the caller is done.
void FfmpegAssetWriter::Core::closeFile() {
    open.store(false, std::memory_order_release);
    if (file != nullptr) {
        if (const Result<void> finished = finishFile(); finished) {
            status.store(WriterStatus::completed, std::memory_order_release);
        } else {
            fail(finished.error());
        }
    }
    if (completion) {
        completion();
    }
}

/// A file without a picture is no recording, and nobody could play it.
Result<void> FfmpegAssetWriter::Core::finishFile() {
    if (!file->hasPictures()) {
        discardFile();
        return interruption.value_or(internal::mediaError(internal::MediaError::nothingRecorded));
    }
    Result<void> finished =
        file->finish(options.keepsJournal ? JournaledFile::Journal::kept : JournaledFile::Journal::removed);
    file.reset();
    return finished;
}

void FfmpegAssetWriter::Core::discardFile() {
    if (file != nullptr) {
        file->remove();
        file.reset();
    }
}

void FfmpegAssetWriter::Core::fail(const Error& reason) {
    {
        const std::lock_guard guard(lock);
        error = reason;
    }
    status.store(WriterStatus::failed, std::memory_order_release);
}

FfmpegAssetWriter::FfmpegAssetWriter(std::filesystem::path path, FfmpegWriterOptions options)
    : core_(std::make_unique<Core>(std::move(path), std::move(options))) {
    internal::silenceLibraries();
}

FfmpegAssetWriter::~FfmpegAssetWriter() {
    if (status() == WriterStatus::writing) {
        finishWriting({});
    }
}

AssetWriterInput* FfmpegAssetWriter::addVideoInput(const VideoSettings& settings) {
    if (status() != WriterStatus::unknown || core_->video != nullptr || !internal::canEncode(settings)) {
        return nullptr;
    }
    core_->video = std::make_unique<internal::VideoTrack>(settings, core_->options, *core_);
    return core_->video.get();
}

AssetWriterInput* FfmpegAssetWriter::addAudioInput(const AudioSettings& settings) {
    if (status() != WriterStatus::unknown || !internal::canEncode(settings)) {
        return nullptr;
    }
    core_->audio.push_back(std::make_unique<internal::AudioTrack>(settings, *core_));
    return core_->audio.back().get();
}

void FfmpegAssetWriter::setOnInterruption(std::function<void(const Error&)> interrupted) {
    core_->onInterruption = std::move(interrupted);
}

Result<void> FfmpegAssetWriter::startWriting() {
    if (status() != WriterStatus::unknown) {
        return internal::mediaError(internal::MediaError::encoder);
    }
    if (Result<void> started = core_->start(); !started) {
        core_->fail(started.error());
        return started;
    }
    core_->partsLeft.store(static_cast<int>(core_->audio.size()) + (core_->video != nullptr ? 2 : 1));
    core_->open.store(true, std::memory_order_release);
    core_->status.store(WriterStatus::writing, std::memory_order_release);
    return {};
}

void FfmpegAssetWriter::startSession(MediaTime sourceTime) {
    if (core_->video != nullptr) {
        core_->video->startSession(sourceTime);
    }
    for (const auto& track : core_->audio) {
        track->startSession(sourceTime);
    }
}

WriterStatus FfmpegAssetWriter::status() const {
    return core_->status.load(std::memory_order_acquire);
}

std::optional<Error> FfmpegAssetWriter::error() const {
    const std::lock_guard guard(core_->lock);
    return core_->error;
}

void FfmpegAssetWriter::cancelWriting() {
    if (status() == WriterStatus::completed) {
        return;
    }
    core_->open.store(false, std::memory_order_release);
    const auto discard = [core = core_.get()] { core->discardFile(); };
    if (core_->fileQueue.isCurrent()) {
        discard();
    } else {
        core_->fileQueue.sync(discard);
    }
    if (status() != WriterStatus::completed) {
        core_->status.store(WriterStatus::cancelled, std::memory_order_release);
    }
}

void FfmpegAssetWriter::finishWriting(std::function<void()> completion) {
    if (status() != WriterStatus::writing || core_->finishing) {
        core_->fileQueue.async([completion = std::move(completion)] {
            if (completion) {
                completion();
            }
        });
        return;
    }
    core_->finishing = true;
    core_->completion = std::move(completion);
    core_->markAllAsFinished();
    core_->partEnded();
}

void FfmpegAssetWriter::noteMark(const RecordingMark& mark) {
    core_->noteInJournal(mark);
}

void FfmpegAssetWriter::noteProgress(MediaTime time) {
    core_->noteInJournal(JournalProgress{time.convertedTo(1'000'000)});
}

const std::filesystem::path& FfmpegAssetWriter::outputPath() const {
    return core_->path;
}

} // namespace velmo
