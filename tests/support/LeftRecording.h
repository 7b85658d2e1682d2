#pragma once

#include "base/Checksum.h"
#include "media/JournalWriter.h"
#include "media/Mp4Index.h"

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace velmo::test {

inline std::string bytesOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

inline void writeBytes(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
}

/// A recording as a process leaves it that is killed while it writes. Its samples are no pictures, only bytes.
class LeftRecording {
public:
    static constexpr std::uint32_t kTicks = 90000;

    explicit LeftRecording(std::filesystem::path video, std::uint8_t id = 7) : video_(std::move(video)) {
        id_.fill(id);
        journal_ = std::move(JournalWriter::create(video_, id_)).value();
        const auto head = videoHead(id_);
        data_.assign(reinterpret_cast<const char*>(head.data()), head.size());
        JournalTrack picture{JournalTrack::Kind::video, kTicks, 320, 180, 0, 1'000'000, {}};
        picture.config.resize(20, std::byte{1});
        JournalTrack sound{JournalTrack::Kind::audio, 48000, 0, 0, 2, 160'000, {}};
        sound.config.resize(2, std::byte{0x11});
        add(picture);
        add(sound);
    }

    void add(const JournalRecord& record) { static_cast<void>(journal_->add(record)); }

    /// A picture at so many thirtieths of a second.
    JournalSample picture(int number, bool isKey) { return sample(0, number * 3000, 3000, 400, isKey); }
    /// The sound of 1024 frames.
    JournalSample sound(int number) { return sample(1, number * 1024, 1024, 60, true); }

    /// A key picture every ten, and sound beside them.
    void record(int pictures) {
        int sounds = 0;
        for (int i = 0; i < pictures; ++i) {
            picture(i, i % 10 == 0);
            for (; sounds * 1024 < i * 1600; ++sounds) {
                sound(sounds);
            }
        }
    }

    /// The process is gone: what it wrote is in the files, and nobody holds the journal.
    void die() {
        writeBytes(video_, data_);
        journal_.reset();
        unlockJournal(video_);
    }

    const std::filesystem::path& video() const { return video_; }
    std::filesystem::path journal() const { return journalOf(video_); }
    std::string& data() { return data_; }
    std::int64_t end() const { return static_cast<std::int64_t>(data_.size()); }

private:
    JournalSample sample(std::uint8_t track, std::int64_t time, std::uint32_t duration, std::uint32_t size,
                         bool isKey) {
        std::string bytes(size, '\0');
        for (char& byte : bytes) {
            byte = static_cast<char>(seed_ = seed_ * 1103515245 + 12345);
        }
        const JournalSample made{track, isKey, size, time, duration, end(), checksum(std::as_bytes(std::span(bytes)))};
        data_ += bytes;
        add(made);
        return made;
    }

    const std::filesystem::path video_;
    RecordingId id_{};
    std::unique_ptr<JournalWriter> journal_;
    std::string data_;
    unsigned seed_ = 1;
};

} // namespace velmo::test
