#pragma once

#include "base/MediaTime.h"
#include "base/Result.h"
#include "media/RecordingMark.h"
#include "media/Sample.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

namespace velmo {

/// Domain of errors of media files. Codes below the first own one are the system's numbers: what the disk did.
inline constexpr const char* kMediaErrorDomain = "velmo.media";
inline constexpr int kFirstMediaError = 1001;

/// H.264 High, no frame reordering, Rec. 709 tags. Sizes in pixels, rates per second.
struct VideoSettings {
    int width = 0;
    int height = 0;
    int averageBitRate = 0; ///< bits a second
    int expectedSourceFrameRate = 30;
    int maxKeyFrameInterval = 60; ///< in frames
};

/// AAC. Input samples are interleaved float of the same rate and channel count.
struct AudioSettings {
    int sampleRate = 48000;
    int channels = 2;
    int bitRate = 160000; ///< bits a second
};

enum class WriterStatus { unknown, writing, completed, failed, cancelled };

/// One track of the file being written. All calls come from one thread at a time; none blocks on encoding or disk.
class AssetWriterInput {
public:
    virtual ~AssetWriterInput() = default;
    /// False while the encoder behind it is busy. A refused sample is the caller's to drop or to keep.
    virtual bool isReadyForMoreMediaData() const = 0;
    /// Times must be after the session's start and strictly increasing per input. False when it was not taken.
    virtual bool append(const Sample& sample) = 0;
    /// No more samples follow. Calling it again changes nothing.
    virtual void markAsFinished() = 0;
};

/// Writes one file. Inputs are added first, then `startWriting`, `startSession`, samples, `finishWriting`.
/// The file grows as samples come and can be made whole at any moment; finishing does not copy it. The destructor ends
/// all threads of the writer; it may run on any thread but the writer's own, and leaves the file of an unfinished
/// recording where it is.
class AssetWriter {
public:
    virtual ~AssetWriter() = default;

    /// The new input, owned by the writer, or null when these settings are refused.
    virtual AssetWriterInput* addVideoInput(const VideoSettings& settings) = 0;
    virtual AssetWriterInput* addAudioInput(const AudioSettings& settings) = 0;

    /// Before `startWriting`. `interrupted` is called at most once, on any thread, when the writer can take no more by
    /// itself. While what it has can still be finished (the disk is full) the status stays `writing`, no input is
    /// ready again, and `finishWriting` completes the file; otherwise the status is already `failed`. Never called
    /// after `cancelWriting` returned, after the completion of `finishWriting`, or after the destructor.
    virtual void setOnInterruption(std::function<void(const Error&)> interrupted) = 0;
    /// Opens file and encoders.
    virtual Result<void> startWriting() = 0;
    /// The time of the samples that becomes zero in the file.
    virtual void startSession(MediaTime sourceTime) = 0;
    /// Any thread.
    virtual WriterStatus status() const = 0;
    /// Any thread. Present once the status is `failed`.
    virtual std::optional<Error> error() const = 0;
    /// Ends without a usable file and removes what was written.
    virtual void cancelWriting() = 0;
    /// Encodes what is left and closes the file; `completion` is called once, on a thread of the writer's.
    /// The status is then `completed` or `failed`. Where no picture has reached the file it fails, with the reason of
    /// the interruption if there was one, and leaves no file.
    virtual void finishWriting(std::function<void()> completion) = 0;
    /// For the case that this process does not live to finish the file: a mark that was made, and how long the
    /// recording is by now, counted from the session's start, also when no sample came for a while. While writing, on
    /// the thread that appends; returns at once.
    virtual void noteMark(const RecordingMark& mark) = 0;
    virtual void noteProgress(MediaTime time) = 0;
    virtual const std::filesystem::path& outputPath() const = 0;
};

/// Makes the writer for an MP4 at a path. The one place where a backend is chosen is the composition root.
class AssetWriterFactory {
public:
    virtual ~AssetWriterFactory() = default;
    virtual Result<std::unique_ptr<AssetWriter>> makeWriter(const std::filesystem::path& path) = 0;
};

} // namespace velmo
