#include "media/JournalReader.h"

#include "media/internal/JournalFormat.h"

#include <cerrno>
#include <unistd.h>

namespace velmo {

namespace {

constexpr std::size_t kBlock = 128 << 10; // more than the largest record

} // namespace

JournalReader::JournalReader(int descriptor) : descriptor_(descriptor) {
    const bool whole = fill(internal::kJournalHeaderBytes);
    if (state_ == State::failed) {
        return;
    }
    if (!whole) {
        state_ = State::torn;
        return;
    }
    switch (internal::readJournalHeader(buffer_, id_)) {
    case internal::HeaderState::good:
        state_ = State::good;
        at_ = internal::kJournalHeaderBytes;
        break;
    case internal::HeaderState::newer:
        state_ = State::newer;
        break;
    case internal::HeaderState::bad:
        break;
    }
}

std::optional<JournalRecord> JournalReader::next() {
    while (state_ == State::good) {
        fill(internal::kLargestRecord);
        if (left() == 0) {
            return std::nullopt;
        }
        internal::DecodedRecord decoded = internal::decodeRecord(std::span(buffer_).subspan(at_));
        if (decoded.state != internal::RecordState::good) {
            ++at_; // to where the next whole record begins
            continue;
        }
        at_ += decoded.bytes;
        if (decoded.record) {
            return std::move(decoded.record);
        }
    }
    return std::nullopt;
}

void JournalReader::rewind() {
    if (state_ == State::good) {
        buffer_.clear();
        at_ = 0;
        offset_ = internal::kJournalHeaderBytes;
        atEnd_ = false;
    }
}

/// Sees to it that so many bytes are there; false when the file has fewer.
bool JournalReader::fill(std::size_t wanted) {
    if (left() >= wanted || atEnd_) {
        return left() >= wanted;
    }
    buffer_.erase(buffer_.begin(), buffer_.begin() + static_cast<std::ptrdiff_t>(at_));
    at_ = 0;
    while (buffer_.size() < wanted && !atEnd_) {
        const std::size_t had = buffer_.size();
        buffer_.resize(had + kBlock);
        const ssize_t count = ::pread(descriptor_, buffer_.data() + had, kBlock, offset_);
        buffer_.resize(had + (count > 0 ? static_cast<std::size_t>(count) : 0));
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            state_ = State::failed;
        }
        atEnd_ = count <= 0;
        offset_ += count > 0 ? count : 0;
    }
    return buffer_.size() >= wanted;
}

} // namespace velmo
