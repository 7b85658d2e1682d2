#pragma once

#include "media/Sample.h"

#include <cstddef>
#include <vector>

namespace velmo::internal {

/// Sound that waits for its input, oldest first: room for `kLimit` samples and one that has just come.
/// All its memory is taken at the start.
class AudioLine {
public:
    static constexpr std::size_t kLimit = 400;

    AudioLine() : slots_(kLimit + 1) {}

    bool isEmpty() const { return count_ == 0; }
    std::size_t size() const { return count_; }

    /// Only while `size()` is not above `kLimit`.
    void push(Sample sample) { slots_[(first_ + count_++) % slots_.size()] = std::move(sample); }

    /// Only while not empty.
    Sample pop() {
        Sample sample = std::move(slots_[first_]);
        first_ = (first_ + 1) % slots_.size();
        --count_;
        return sample;
    }

    /// Gives the oldest samples up until `most` are left. How many went.
    int dropDownTo(std::size_t most) {
        int dropped = 0;
        for (; count_ > most; ++dropped) {
            pop();
        }
        return dropped;
    }

private:
    std::vector<Sample> slots_;
    std::size_t first_ = 0;
    std::size_t count_ = 0;
};

} // namespace velmo::internal
