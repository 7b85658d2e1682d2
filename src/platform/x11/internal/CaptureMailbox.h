#pragma once

#include "platform/ScreenCapture.h"

#include <mutex>
#include <optional>
#include <vector>

namespace velmo::x11 {

/// What a stream's owner asks of its thread, and the answers. Any thread.
class CaptureMailbox {
public:
    using Completion = CaptureStream::Completion;

    CaptureMailbox();
    ~CaptureMailbox();
    CaptureMailbox(const CaptureMailbox&) = delete;
    CaptureMailbox& operator=(const CaptureMailbox&) = delete;

    /// `completion` is called when the thread has stopped, at once if it has already.
    void requestStop(Completion completion);
    /// `completion` is called when the thread has taken the configuration over.
    void requestUpdate(const StreamConfiguration& configuration, Completion completion);

    /// Readable while something waits for the thread.
    int wakeFile() const { return wakeFile_; }
    bool stopRequested() const;
    /// Nothing more is to be expected of the thread, whether it was asked to stop or ended by itself.
    bool isOver() const;
    /// The latest configuration asked for, if there is a new one; `answers` takes what is to be called then.
    std::optional<StreamConfiguration> takeUpdate(std::vector<Completion>& answers);
    /// The thread does nothing more: calls all that wait, and all that come later at once.
    void finish();

private:
    void wake() const;

    int wakeFile_ = -1;
    mutable std::mutex lock_;
    // protected by lock_
    bool stopRequested_ = false;
    bool finished_ = false;
    std::optional<StreamConfiguration> update_;
    std::vector<Completion> updateAnswers_;
    std::vector<Completion> stopAnswers_;
};

} // namespace velmo::x11
