#include "media/Mp4Index.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace velmo {

using internal::Mp4Boxes;
using internal::SampleTable;

namespace {

constexpr std::string_view kIdentityMark = "VELMOREC";
constexpr std::size_t kFileTypeBytes = 32;
constexpr std::size_t kIdentityAt = kFileTypeBytes + 8;
constexpr std::int64_t kMovieScale = 1000; // ticks a second of what is not a track's own time
constexpr std::uint32_t kUndeterminedLanguage = 0x55C4;
constexpr std::int64_t kMicroseconds = 1'000'000;
constexpr std::int64_t kFarthest = std::int64_t{1} << 42; // microseconds: beyond that a journal is damaged

using Kind = JournalTrack::Kind;

std::int64_t scaled(std::int64_t ticks, std::int64_t from, std::int64_t to) {
    return ticks / from * to + ticks % from * to / from;
}

std::uint64_t fitting32(std::int64_t value) {
    return static_cast<std::uint64_t>(std::clamp<std::int64_t>(value, 0, 0xFFFFFFFF));
}

/// From the file's zero to the end of its last sample, in movie ticks: rounded up, since players cut what lies behind.
std::int64_t movieEnd(const JournalTrack& format, const SampleTable& samples) {
    const std::int64_t end = std::max<std::int64_t>(samples.end(), 0);
    const std::int64_t whole = scaled(end, format.timescale, kMovieScale);
    return scaled(whole, kMovieScale, format.timescale) < end ? whole + 1 : whole;
}

void matrix(Mp4Boxes& boxes) {
    for (const std::uint32_t value : {0x10000U, 0U, 0U, 0U, 0x10000U, 0U, 0U, 0U, 0x40000000U}) {
        boxes.u32(value);
    }
}

void movieHeader(Mp4Boxes& boxes, std::int64_t duration, std::uint32_t nextTrack) {
    const auto box = boxes.fullBox("mvhd", 0, 0);
    boxes.zeros(8); // no dates: they would be the encoder's, not the class's
    boxes.u32(kMovieScale);
    boxes.u32(fitting32(duration));
    boxes.u32(0x10000); // speed
    boxes.u16(0x100);   // loudness
    boxes.zeros(10);
    matrix(boxes);
    boxes.zeros(24);
    boxes.u32(nextTrack);
}

void trackHeader(Mp4Boxes& boxes, const JournalTrack& format, std::int64_t duration, std::uint32_t number) {
    const auto box = boxes.fullBox("tkhd", 0, 3); // switched on, part of the movie
    boxes.zeros(8);
    boxes.u32(number);
    boxes.zeros(4);
    boxes.u32(fitting32(duration));
    boxes.zeros(12);
    boxes.u16(format.kind == Kind::audio ? 0x100 : 0);
    boxes.zeros(2);
    matrix(boxes);
    boxes.u32(std::uint64_t{format.width} << 16);
    boxes.u32(std::uint64_t{format.height} << 16);
}

/// Where the track's samples lie on the file's time: after a while, or from their middle on.
void editList(Mp4Boxes& boxes, const JournalTrack& format, const SampleTable& samples) {
    const auto box = boxes.box("edts");
    const auto list = boxes.fullBox("elst", 0, 0);
    const std::int64_t late = scaled(std::max<std::int64_t>(samples.begin(), 0), format.timescale, kMovieScale);
    boxes.u32(late > 0 ? 2 : 1);
    if (late > 0) {
        boxes.u32(fitting32(late));
        boxes.u32(0xFFFFFFFF); // nothing
        boxes.u32(0x10000);
    }
    boxes.u32(fitting32(movieEnd(format, samples) - late));
    boxes.u32(fitting32(std::max<std::int64_t>(-samples.begin(), 0)));
    boxes.u32(0x10000);
}

void mediaHeader(Mp4Boxes& boxes, const JournalTrack& format, const SampleTable& samples) {
    const std::int64_t duration = samples.end() - samples.begin();
    const bool isLong = duration > 0xFFFFFFFF;
    const auto box = boxes.fullBox("mdhd", isLong ? 1 : 0, 0);
    boxes.zeros(isLong ? 16 : 8);
    boxes.u32(format.timescale);
    isLong ? boxes.u64(static_cast<std::uint64_t>(duration)) : boxes.u32(static_cast<std::uint64_t>(duration));
    boxes.u16(kUndeterminedLanguage);
    boxes.u16(0);
}

void handler(Mp4Boxes& boxes, Kind kind) {
    const auto box = boxes.fullBox("hdlr", 0, 0);
    boxes.u32(0);
    boxes.text(kind == Kind::video ? "vide" : "soun");
    boxes.zeros(12);
    boxes.text(kind == Kind::video ? "VideoHandler" : "SoundHandler");
    boxes.u8(0);
}

void pictureFormat(Mp4Boxes& boxes, const JournalTrack& format) {
    const auto box = boxes.box("avc1");
    boxes.zeros(6);
    boxes.u16(1); // where the data is: this file
    boxes.zeros(16);
    boxes.u16(format.width);
    boxes.u16(format.height);
    boxes.u32(0x480000); // 72 dots an inch, both ways
    boxes.u32(0x480000);
    boxes.zeros(4);
    boxes.u16(1); // picture a sample
    boxes.zeros(32);
    boxes.u16(24);
    boxes.u16(0xFFFF);
    {
        const auto decoder = boxes.box("avcC");
        boxes.raw(format.config);
    }
    {
        const auto colour = boxes.box("colr"); // Rec. 709, video range
        boxes.text("nclx");
        boxes.u16(1);
        boxes.u16(1);
        boxes.u16(1);
        boxes.u8(0);
    }
    const auto aspect = boxes.box("pasp");
    boxes.u32(1);
    boxes.u32(1);
}

void descriptor(Mp4Boxes& boxes, std::uint8_t tag, std::size_t length) {
    boxes.u8(tag);
    for (int shift = 21; shift > 0; shift -= 7) {
        boxes.u8(0x80 | (length >> shift & 0x7F));
    }
    boxes.u8(length & 0x7F);
}

void soundFormat(Mp4Boxes& boxes, const JournalTrack& format) {
    constexpr std::size_t kHead = 5; // of a descriptor
    const auto box = boxes.box("mp4a");
    boxes.zeros(6);
    boxes.u16(1);
    boxes.zeros(8);
    boxes.u16(format.channels);
    boxes.u16(16);
    boxes.zeros(4);
    boxes.u32(std::uint64_t{format.timescale} << 16);
    const auto stream = boxes.fullBox("esds", 0, 0);
    descriptor(boxes, 3, 3 + kHead + 13 + kHead + format.config.size() + kHead + 1);
    boxes.u16(0);
    boxes.u8(0);
    descriptor(boxes, 4, 13 + kHead + format.config.size());
    boxes.u8(0x40); // AAC
    boxes.u8(0x15); // sound
    boxes.u24(0);
    boxes.u32(format.bitRate);
    boxes.u32(format.bitRate);
    descriptor(boxes, 5, format.config.size());
    boxes.raw(format.config);
    descriptor(boxes, 6, 1);
    boxes.u8(2);
}

void dataPlace(Mp4Boxes& boxes) {
    const auto information = boxes.box("dinf");
    const auto references = boxes.fullBox("dref", 0, 0);
    boxes.u32(1);
    const auto here = boxes.fullBox("url ", 0, 1); // this file
}

void media(Mp4Boxes& boxes, const JournalTrack& format, const SampleTable& samples) {
    const auto box = boxes.box("mdia");
    mediaHeader(boxes, format, samples);
    handler(boxes, format.kind);
    const auto information = boxes.box("minf");
    if (format.kind == Kind::video) {
        const auto video = boxes.fullBox("vmhd", 0, 1);
        boxes.zeros(8);
    } else {
        const auto sound = boxes.fullBox("smhd", 0, 0);
        boxes.zeros(4);
    }
    dataPlace(boxes);
    const auto table = boxes.box("stbl");
    {
        const auto description = boxes.fullBox("stsd", 0, 0);
        boxes.u32(1);
        format.kind == Kind::video ? pictureFormat(boxes, format) : soundFormat(boxes, format);
    }
    samples.write(boxes);
}

} // namespace

std::array<std::byte, kVideoHeadBytes> videoHead(const RecordingId& id) {
    Mp4Boxes boxes;
    {
        const auto type = boxes.box("ftyp");
        boxes.text("isom");
        boxes.u32(0x200);
        boxes.text("isomiso2avc1mp41");
    }
    {
        const auto identity = boxes.box("free");
        boxes.text(kIdentityMark);
        boxes.raw(std::as_bytes(std::span(id)));
    }
    { const auto room = boxes.box("free"); } // for a size of 64 bits
    boxes.u32(0);                            // up to the end of the file
    boxes.text("mdat");
    std::array<std::byte, kVideoHeadBytes> head{};
    std::copy_n(boxes.bytes().begin(), head.size(), head.begin());
    return head;
}

bool isHeadOf(std::span<const std::byte> head, const RecordingId& id) {
    const auto expected = videoHead(id);
    constexpr std::size_t kCompared = kIdentityMark.size() + std::tuple_size_v<RecordingId>;
    return head.size() >= kDataHeadAt &&
           std::memcmp(head.data() + kIdentityAt, expected.data() + kIdentityAt, kCompared) == 0;
}

std::array<std::byte, kDataHeadBytes> closedDataHead(std::int64_t end) {
    Mp4Boxes boxes;
    boxes.u32(1);
    boxes.text("mdat");
    boxes.u64(static_cast<std::uint64_t>(end) - kDataHeadAt);
    std::array<std::byte, kDataHeadBytes> head{};
    std::copy(boxes.bytes().begin(), boxes.bytes().end(), head.begin());
    return head;
}

void Mp4Index::addTrack(JournalTrack track) {
    tracks_.push_back({std::move(track), {}});
}

bool Mp4Index::add(const JournalSample& sample) {
    if (sample.track >= tracks_.size() || sample.size == 0) {
        return false;
    }
    const bool startsChunk = sample.track != lastTrack_ || sample.offset != dataEnd_;
    if (!tracks_[sample.track].samples.add(sample, startsChunk)) {
        return false;
    }
    lastTrack_ = sample.track;
    dataEnd_ = sample.offset + sample.size;
    return true;
}

void Mp4Index::holdPictureUntil(std::int64_t microseconds) {
    microseconds = std::max(std::min(microseconds, kFarthest), duration());
    for (Track& track : tracks_) {
        if (track.format.kind == Kind::video && !track.samples.isEmpty()) {
            track.samples.lastUntil(scaled(microseconds, kMicroseconds, track.format.timescale));
        }
    }
}

bool Mp4Index::hasPictures() const {
    return std::any_of(tracks_.begin(), tracks_.end(),
                       [](const Track& track) { return track.format.kind == Kind::video && !track.samples.isEmpty(); });
}

std::int64_t Mp4Index::duration() const {
    std::int64_t longest = 0;
    for (const Track& track : tracks_) {
        if (!track.samples.isEmpty()) {
            longest = std::max(longest, scaled(track.samples.end(), track.format.timescale, kMicroseconds));
        }
    }
    return longest;
}

std::vector<std::byte> Mp4Index::build() const {
    Mp4Boxes boxes;
    {
        const auto movie = boxes.box("moov");
        movieHeader(boxes, scaled(duration() + kMicroseconds / kMovieScale - 1, kMicroseconds, kMovieScale),
                    static_cast<std::uint32_t>(tracks_.size()) + 1);
        std::uint32_t number = 0;
        for (const Track& track : tracks_) {
            ++number;
            if (track.samples.isEmpty()) {
                continue;
            }
            const auto box = boxes.box("trak");
            trackHeader(boxes, track.format, movieEnd(track.format, track.samples), number);
            editList(boxes, track.format, track.samples);
            media(boxes, track.format, track.samples);
        }
    }
    return boxes.take();
}

} // namespace velmo
