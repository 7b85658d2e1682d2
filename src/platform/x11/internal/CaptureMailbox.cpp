#include "platform/x11/internal/CaptureMailbox.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <utility>

namespace velmo::x11 {
namespace {

void answer(const std::vector<CaptureMailbox::Completion>& completions) {
    for (const auto& completion : completions) {
        if (completion) {
            completion({});
        }
    }
}

} // namespace

CaptureMailbox::CaptureMailbox() : wakeFile_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

CaptureMailbox::~CaptureMailbox() {
    close(wakeFile_);
}

void CaptureMailbox::wake() const {
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = write(wakeFile_, &one, sizeof one);
}

void CaptureMailbox::requestStop(Completion completion) {
    {
        const std::lock_guard guard(lock_);
        stopRequested_ = true;
        if (!finished_) {
            stopAnswers_.push_back(std::move(completion));
            wake();
            return;
        }
    }
    answer({std::move(completion)});
}

void CaptureMailbox::requestUpdate(const StreamConfiguration& configuration, Completion completion) {
    {
        const std::lock_guard guard(lock_);
        if (!finished_) {
            update_ = configuration;
            updateAnswers_.push_back(std::move(completion));
            wake();
            return;
        }
    }
    answer({std::move(completion)});
}

bool CaptureMailbox::stopRequested() const {
    const std::lock_guard guard(lock_);
    return stopRequested_;
}

bool CaptureMailbox::isOver() const {
    const std::lock_guard guard(lock_);
    return stopRequested_ || finished_;
}

std::optional<StreamConfiguration> CaptureMailbox::takeUpdate(std::vector<Completion>& answers) {
    std::uint64_t count = 0;
    [[maybe_unused]] const auto got = read(wakeFile_, &count, sizeof count);
    const std::lock_guard guard(lock_);
    answers.swap(updateAnswers_);
    return std::exchange(update_, std::nullopt);
}

void CaptureMailbox::finish() {
    std::vector<Completion> updates;
    std::vector<Completion> stops;
    {
        const std::lock_guard guard(lock_);
        finished_ = true;
        updates.swap(updateAnswers_);
        stops.swap(stopAnswers_);
    }
    answer(updates);
    answer(stops);
}

} // namespace velmo::x11
