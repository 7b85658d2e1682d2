#pragma once

#include "media/Sample.h"

#include <atomic>
#include <mutex>
#include <vector>

namespace velmo {

/// Takes the sound of mouse clicks out of the microphone: the program knows when a button went down or up, and ducks
/// the sound for about a tenth of a second around that moment. No signal analysis, no delay: a buffer is treated when
/// it arrives, against the events known by then.
///
/// `note` on any thread, `process` on the queue of the sound. Nothing fails: what cannot be treated passes unchanged.
class ClickSuppressor {
public:
    ClickSuppressor();

    /// A mouse button moved at `time`, in host seconds. Forgets what is more than 5 s older.
    void note(double time);

    /// The sample itself, or a copy that is quiet around the events. Only 32-bit float sound is treated, and the
    /// sample's own buffer is never written.
    Sample process(const Sample& sample);

    bool enabled() const { return enabled_.load(std::memory_order_relaxed); }
    void setEnabled(bool enabled) { enabled_.store(enabled, std::memory_order_relaxed); }

private:
    /// Copies the events that can touch sound between two host seconds into `picked_`.
    void pick(double start, double end);

    std::mutex lock_;
    std::vector<double> clicks_; // protected by lock_; in order of arrival

    std::atomic<bool> enabled_{true};
    std::vector<double> picked_; // of `process` only, kept for its memory
};

} // namespace velmo
