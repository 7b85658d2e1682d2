#pragma once

#include "media/AssetWriter.h"

#include <atomic>
#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace velmo::test {

/// One track of a fake file: what went in, and how its input behaves.
struct FakeTrack {
    std::atomic<bool> ready = true; ///< what `isReadyForMoreMediaData` says
    std::atomic<bool> takes = true; ///< what `append` says
    int readyAfter = -1;            ///< from 0 on: becomes ready after being asked so many times
    std::vector<Sample> samples;
    bool finished = false;

    std::vector<double> times() const {
        std::vector<double> seconds;
        for (const Sample& sample : samples) {
            seconds.push_back(sample.presentation().seconds());
        }
        return seconds;
    }
};

/// A fake file. Outlives its writer, so that a test can look at it afterwards.
struct FakeFile {
    std::filesystem::path path;
    VideoSettings video;
    std::vector<AudioSettings> audio;
    FakeTrack videoTrack;
    std::deque<FakeTrack> audioTracks; ///< in the order in which they were added
    std::vector<MediaTime> sessions;
    std::vector<RecordingMark> marks;
    std::vector<MediaTime> progress;
    std::atomic<WriterStatus> status = WriterStatus::unknown;
    std::optional<Error> error;
    std::function<void(const Error&)> interrupted;
    std::function<void()> heldFinish; ///< of a writer that was told to take its time
    bool cancelled = false;
    bool writerIsAlive = true;
};

/// Accepts everything until the factory's script says otherwise.
class FakeAssetWriterFactory final : public AssetWriterFactory {
public:
    // The script of the next writer.
    std::optional<Error> makeError;
    bool refusesVideo = false;
    bool refusesAudio = false;
    std::optional<Error> startError;
    std::optional<Error> finishError; ///< the file is failed when it should be finished
    bool holdsFinish = false;         ///< `finishWriting` completes when the test calls `heldFinish`
    std::size_t reservedSamples = 0;  ///< room for each track and the progress, for tests that count allocations

    std::vector<std::shared_ptr<FakeFile>> files;

    FakeFile& file() { return *files.back(); }
    Result<std::unique_ptr<AssetWriter>> makeWriter(const std::filesystem::path& path) override;
};

class FakeInput final : public AssetWriterInput {
public:
    explicit FakeInput(FakeTrack& track) : track_(track) {}
    bool isReadyForMoreMediaData() const override {
        if (track_.readyAfter > 0 && --track_.readyAfter == 0) {
            track_.ready = true;
        }
        return track_.ready;
    }
    bool append(const Sample& sample) override {
        if (!track_.takes) {
            return false;
        }
        track_.samples.push_back(sample);
        return true;
    }
    void markAsFinished() override { track_.finished = true; }

private:
    FakeTrack& track_;
};

class FakeAssetWriter final : public AssetWriter {
public:
    FakeAssetWriter(FakeAssetWriterFactory& script, std::shared_ptr<FakeFile> file)
        : script_(script), file_(std::move(file)) {}
    ~FakeAssetWriter() override { file_->writerIsAlive = false; }

    AssetWriterInput* addVideoInput(const VideoSettings& settings) override {
        if (script_.refusesVideo) {
            return nullptr;
        }
        file_->video = settings;
        return input(file_->videoTrack);
    }
    AssetWriterInput* addAudioInput(const AudioSettings& settings) override {
        if (script_.refusesAudio) {
            return nullptr;
        }
        file_->audio.push_back(settings);
        return input(file_->audioTracks.emplace_back());
    }
    void setOnInterruption(std::function<void(const Error&)> interrupted) override {
        file_->interrupted = std::move(interrupted);
    }
    Result<void> startWriting() override {
        if (script_.startError) {
            file_->status = WriterStatus::failed;
            return *script_.startError;
        }
        file_->status = WriterStatus::writing;
        return {};
    }
    void startSession(MediaTime sourceTime) override { file_->sessions.push_back(sourceTime); }
    WriterStatus status() const override { return file_->status; }
    std::optional<Error> error() const override { return file_->error; }
    void cancelWriting() override {
        file_->cancelled = true;
        file_->status = WriterStatus::cancelled;
    }
    void finishWriting(std::function<void()> completion) override {
        auto finish = [this, completion = std::move(completion)] {
            file_->error = script_.finishError;
            file_->status = script_.finishError ? WriterStatus::failed : WriterStatus::completed;
            completion();
        };
        if (script_.holdsFinish) {
            file_->heldFinish = finish;
        } else {
            finish();
        }
    }
    void noteMark(const RecordingMark& mark) override { file_->marks.push_back(mark); }
    void noteProgress(MediaTime time) override { file_->progress.push_back(time); }
    const std::filesystem::path& outputPath() const override { return file_->path; }

private:
    AssetWriterInput* input(FakeTrack& track) {
        track.samples.reserve(script_.reservedSamples);
        file_->progress.reserve(script_.reservedSamples);
        return inputs_.emplace_back(std::make_unique<FakeInput>(track)).get();
    }

    FakeAssetWriterFactory& script_;
    std::shared_ptr<FakeFile> file_;
    std::vector<std::unique_ptr<FakeInput>> inputs_;
};

inline Result<std::unique_ptr<AssetWriter>> FakeAssetWriterFactory::makeWriter(const std::filesystem::path& path) {
    if (makeError) {
        return *makeError;
    }
    files.push_back(std::make_shared<FakeFile>());
    file().path = path;
    file().progress.reserve(reservedSamples);
    return std::unique_ptr<AssetWriter>(std::make_unique<FakeAssetWriter>(*this, files.back()));
}

} // namespace velmo::test
