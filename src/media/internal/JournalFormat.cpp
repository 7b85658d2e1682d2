#include "media/internal/JournalFormat.h"

#include "base/Checksum.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <string_view>
#include <type_traits>

namespace velmo::internal {

namespace {

constexpr std::string_view kMagic = "VELMOJRN";
constexpr std::uint8_t kRecordMark = 0xA7;
constexpr std::size_t kLongestText = 0x7000; // two of them fit into a record

enum class Type : std::uint8_t { track = 1, sample = 2, mark = 3, progress = 4, synced = 5, finished = 6 };

class Out {
public:
    explicit Out(std::vector<std::byte>& bytes) : bytes_(bytes) {}

    template <typename Number>
    void number(Number value) {
        auto bits = static_cast<std::make_unsigned_t<Number>>(value);
        for (std::size_t i = 0; i < sizeof bits; ++i) {
            bytes_.push_back(static_cast<std::byte>(bits >> (8 * i) & 0xFF));
        }
    }
    void raw(std::span<const std::byte> data) { bytes_.insert(bytes_.end(), data.begin(), data.end()); }
    void text(std::string_view words) {
        std::size_t length = std::min(words.size(), kLongestText);
        while (length < words.size() && length > 0 && (static_cast<unsigned char>(words[length]) & 0xC0U) == 0x80U) {
            --length; // not in the middle of a character
        }
        number(static_cast<std::uint16_t>(length));
        raw(std::as_bytes(std::span(words.data(), length)));
    }

private:
    std::vector<std::byte>& bytes_;
};

/// Reads until the bytes are used up; what is asked for after that is zero, and `ok` says so.
class In {
public:
    explicit In(std::span<const std::byte> bytes) : bytes_(bytes) {}

    template <typename Number>
    Number number() {
        std::make_unsigned_t<Number> bits = 0;
        const auto data = take(sizeof bits);
        for (std::size_t i = 0; i < data.size(); ++i) {
            bits |= static_cast<std::make_unsigned_t<Number>>(
                static_cast<std::make_unsigned_t<Number>>(std::to_integer<std::uint8_t>(data[i])) << (8 * i));
        }
        return static_cast<Number>(bits);
    }
    std::span<const std::byte> take(std::size_t count) {
        ok_ = ok_ && bytes_.size() >= count;
        if (!ok_) {
            return {};
        }
        const auto taken = bytes_.first(count);
        bytes_ = bytes_.subspan(count);
        return taken;
    }
    std::string text() {
        const auto data = take(number<std::uint16_t>());
        return {reinterpret_cast<const char*>(data.data()), data.size()};
    }
    bool ok() const { return ok_; }

private:
    std::span<const std::byte> bytes_;
    bool ok_ = true;
};

void put(Out& out, const JournalTrack& track) {
    out.number(static_cast<std::uint8_t>(track.kind));
    for (const std::uint32_t value : {track.timescale, track.width, track.height, track.channels, track.bitRate}) {
        out.number(value);
    }
    const std::span config(track.config.data(), std::min(track.config.size(), kLongestText));
    out.number(static_cast<std::uint16_t>(config.size()));
    out.raw(config);
}

void put(Out& out, const JournalSample& sample) {
    out.number(sample.track);
    out.number(static_cast<std::uint8_t>(sample.isKey));
    out.number(sample.size);
    out.number(sample.time);
    out.number(sample.duration);
    out.number(sample.offset);
    out.number(sample.checksum);
}

void put(Out& out, const RecordingMark& mark) {
    out.number(std::bit_cast<std::uint64_t>(mark.time));
    out.text(mark.title);
    out.number(static_cast<std::uint8_t>(mark.location.has_value()));
    out.text(mark.location.value_or(""));
}

void put(Out& out, const JournalProgress& progress) {
    out.number(progress.microseconds);
}

void put(Out& out, const JournalSynced& synced) {
    out.number(synced.end);
}

void put(Out& out, const JournalFinished& finished) {
    out.number(finished.microseconds);
}

Type typeOf(const JournalRecord& record) {
    return static_cast<Type>(record.index() + 1);
}

std::optional<JournalRecord> trackFrom(In& in) {
    JournalTrack track;
    track.kind = static_cast<JournalTrack::Kind>(in.number<std::uint8_t>());
    for (std::uint32_t* value : {&track.timescale, &track.width, &track.height, &track.channels, &track.bitRate}) {
        *value = in.number<std::uint32_t>();
    }
    const auto config = in.take(in.number<std::uint16_t>());
    track.config.assign(config.begin(), config.end());
    const bool isKnown = track.kind == JournalTrack::Kind::video || track.kind == JournalTrack::Kind::audio;
    return isKnown && track.timescale > 0 ? std::optional<JournalRecord>(std::move(track)) : std::nullopt;
}

std::optional<JournalRecord> sampleFrom(In& in) {
    JournalSample sample;
    sample.track = in.number<std::uint8_t>();
    sample.isKey = in.number<std::uint8_t>() != 0;
    sample.size = in.number<std::uint32_t>();
    sample.time = in.number<std::int64_t>();
    sample.duration = in.number<std::uint32_t>();
    sample.offset = in.number<std::int64_t>();
    sample.checksum = in.number<std::uint32_t>();
    return sample;
}

std::optional<JournalRecord> markFrom(In& in) {
    RecordingMark mark;
    mark.time = std::bit_cast<double>(in.number<std::uint64_t>());
    mark.title = in.text();
    const bool hasLocation = in.number<std::uint8_t>() != 0;
    std::string location = in.text();
    if (hasLocation) {
        mark.location = std::move(location);
    }
    return std::isfinite(mark.time) ? std::optional<JournalRecord>(std::move(mark)) : std::nullopt;
}

std::optional<JournalRecord> recordFrom(Type type, In& in) {
    switch (type) {
    case Type::track:
        return trackFrom(in);
    case Type::sample:
        return sampleFrom(in);
    case Type::mark:
        return markFrom(in);
    case Type::progress:
        return JournalProgress{in.number<std::int64_t>()};
    case Type::synced:
        return JournalSynced{in.number<std::int64_t>()};
    case Type::finished:
        return JournalFinished{in.number<std::int64_t>()};
    }
    return std::nullopt;
}

std::uint32_t numberAt(std::span<const std::byte> bytes, std::size_t offset) {
    return In(bytes.subspan(offset)).number<std::uint32_t>();
}

} // namespace

std::array<std::byte, kJournalHeaderBytes> journalHeader(const RecordingId& id) {
    std::vector<std::byte> bytes;
    Out out(bytes);
    out.raw(std::as_bytes(std::span(kMagic)));
    out.number(kJournalVersion);
    out.raw(std::as_bytes(std::span(id)));
    out.number(checksum(bytes));
    std::array<std::byte, kJournalHeaderBytes> header{};
    std::copy(bytes.begin(), bytes.end(), header.begin());
    return header;
}

HeaderState readJournalHeader(std::span<const std::byte> bytes, RecordingId& id) {
    constexpr std::size_t kSumAt = kJournalHeaderBytes - 4;
    constexpr std::size_t kIdAt = kMagic.size() + 4;
    if (bytes.size() < kJournalHeaderBytes || std::memcmp(bytes.data(), kMagic.data(), kMagic.size()) != 0 ||
        numberAt(bytes, kSumAt) != checksum(bytes.first(kSumAt))) {
        return HeaderState::bad;
    }
    std::memcpy(id.data(), bytes.data() + kIdAt, id.size());
    return numberAt(bytes, kMagic.size()) == kJournalVersion ? HeaderState::good : HeaderState::newer;
}

void encodeRecord(const JournalRecord& record, std::vector<std::byte>& out) {
    const std::size_t begin = out.size();
    Out to(out);
    to.number(kRecordMark);
    to.number(static_cast<std::uint8_t>(typeOf(record)));
    to.number(std::uint16_t{0});
    std::visit([&to](const auto& value) { put(to, value); }, record);
    const std::size_t length = out.size() - begin - kRecordHeadBytes;
    out[begin + 2] = static_cast<std::byte>(length & 0xFF);
    out[begin + 3] = static_cast<std::byte>(length >> 8);
    to.number(checksum(std::span(out).subspan(begin)));
}

DecodedRecord decodeRecord(std::span<const std::byte> bytes) {
    if (!bytes.empty() && std::to_integer<std::uint8_t>(bytes[0]) != kRecordMark) {
        return {};
    }
    if (bytes.size() < kRecordHeadBytes) {
        return {RecordState::incomplete, 0, std::nullopt};
    }
    const std::size_t length = std::to_integer<std::size_t>(bytes[2]) | std::to_integer<std::size_t>(bytes[3]) << 8;
    const std::size_t summed = kRecordHeadBytes + length;
    if (bytes.size() < summed + kRecordTailBytes) {
        return {RecordState::incomplete, 0, std::nullopt};
    }
    if (numberAt(bytes, summed) != checksum(bytes.first(summed))) {
        return {};
    }
    In in(bytes.subspan(kRecordHeadBytes, length));
    DecodedRecord decoded{RecordState::good, summed + kRecordTailBytes, std::nullopt};
    auto record = recordFrom(static_cast<Type>(bytes[1]), in);
    if (in.ok()) {
        decoded.record = std::move(record);
    }
    return decoded;
}

} // namespace velmo::internal
