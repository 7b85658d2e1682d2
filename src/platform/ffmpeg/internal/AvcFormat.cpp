#include "platform/ffmpeg/internal/AvcFormat.h"

#include <cstdint>
#include <cstring>

namespace velmo::internal {

namespace {

using Bytes = std::span<const std::byte>;

constexpr unsigned kSequenceSet = 7;
constexpr unsigned kPictureSet = 8;
constexpr unsigned kHighProfile = 100;

unsigned at(Bytes bytes, std::size_t i) {
    return std::to_integer<unsigned>(bytes[i]);
}

/// Where the next 00 00 01 begins, from `from` on; the end without one.
std::size_t findStart(Bytes stream, std::size_t from) {
    while (from + 3 <= stream.size()) {
        const void* found = std::memchr(stream.data() + from + 2, 1, stream.size() - from - 2);
        if (found == nullptr) {
            break;
        }
        const auto one = static_cast<std::size_t>(static_cast<const std::byte*>(found) - stream.data());
        if (at(stream, one - 1) == 0 && at(stream, one - 2) == 0) {
            return one - 2;
        }
        from = one - 1;
    }
    return stream.size();
}

void append(std::vector<std::byte>& out, std::size_t number, int bytes) {
    for (int i = bytes - 1; i >= 0; --i) {
        out.push_back(static_cast<std::byte>(number >> (8 * i) & 0xFF));
    }
}

} // namespace

void forEachUnit(Bytes stream, const std::function<void(Bytes)>& unit) {
    std::size_t start = findStart(stream, 0);
    while (start < stream.size()) {
        const std::size_t begin = start + 3;
        const std::size_t next = findStart(stream, begin);
        std::size_t end = next;
        while (end > begin && at(stream, end - 1) == 0) {
            --end; // the longer start code of the next one, or padding
        }
        if (end > begin) {
            unit(stream.subspan(begin, end - begin));
        }
        start = next;
    }
}

std::optional<std::vector<std::byte>> decoderConfig(Bytes headers) {
    Bytes sequence;
    Bytes picture;
    forEachUnit(headers, [&](Bytes unit) {
        const unsigned type = at(unit, 0) & 0x1F;
        if (type == kSequenceSet) {
            sequence = unit;
        } else if (type == kPictureSet) {
            picture = unit;
        }
    });
    if (sequence.size() < 4 || picture.empty()) {
        return std::nullopt;
    }
    std::vector<std::byte> config;
    append(config, 1, 1);
    config.insert(config.end(), sequence.begin() + 1, sequence.begin() + 4); // profile, constraints, level
    append(config, 0xFF, 1);                                                 // lengths of four bytes
    append(config, 0xE1, 1);
    append(config, sequence.size(), 2);
    config.insert(config.end(), sequence.begin(), sequence.end());
    append(config, 1, 1);
    append(config, picture.size(), 2);
    config.insert(config.end(), picture.begin(), picture.end());
    if (at(sequence, 1) >= kHighProfile) {
        append(config, 0xFDF8F800, 4); // 4:2:0, eight bits, no more sets
    }
    return config;
}

void unitsWithLengths(Bytes stream, std::vector<std::byte>& sample) {
    sample.clear();
    forEachUnit(stream, [&sample](Bytes unit) {
        append(sample, unit.size(), 4);
        sample.insert(sample.end(), unit.begin(), unit.end());
    });
}

} // namespace velmo::internal
