#include "media/JournalReader.h"
#include "media/JournalWriter.h"
#include "support/LeftRecording.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <cstring>
#include <fcntl.h>

namespace velmo {
namespace {

using test::bytesOf;
using test::writeBytes;

constexpr std::size_t kHeader = 32;

class RecordingJournal : public testing::Test {
protected:
    std::vector<JournalRecord> someRecords() {
        return {JournalTrack{JournalTrack::Kind::video, 90000, 1920, 1080, 0, 9'000'000, {std::byte{1}, std::byte{2}}},
                JournalSample{0, true, 5000, -3, 3000, 80, 0xDEADBEEF},
                RecordingMark{12.5, "Capítulo «uno»", "https://example.org/ñ"},
                RecordingMark{0, "", std::nullopt},
                JournalProgress{12'345'678},
                JournalSynced{1LL << 40},
                JournalSample{1, false, 0xFFFFFFFF, (1LL << 40), 1, 1LL << 41, 1},
                JournalFinished{99}};
    }
    void write(const std::vector<JournalRecord>& records) {
        const auto writer = std::move(JournalWriter::create(video_, RecordingId{1, 2, 3})).value();
        for (const JournalRecord& record : records) {
            ASSERT_TRUE(writer->add(record));
        }
    }
    std::vector<JournalRecord> read() { return readFrom(journal_); }
    static std::vector<JournalRecord> readFrom(const std::filesystem::path& file) {
        const FileDescriptor open(::open(file.c_str(), O_RDONLY));
        JournalReader reader(open.number());
        std::vector<JournalRecord> records;
        while (auto record = reader.next()) {
            records.push_back(std::move(*record));
        }
        return records;
    }
    JournalReader::State state() {
        const FileDescriptor open(::open(journal_.c_str(), O_RDONLY));
        return JournalReader(open.number()).state();
    }

    test::TemporaryFolder folder_;
    std::filesystem::path video_ = folder_ / "Clase 1.mp4";
    std::filesystem::path journal_ = folder_ / ".Clase 1.mp4.velmo-journal";
};

TEST_F(RecordingJournal, EveryRecordComesBackAsItWasWritten) {
    write(someRecords());
    EXPECT_EQ(read(), someRecords());
    const FileDescriptor open(::open(journal_.c_str(), O_RDONLY));
    JournalReader reader(open.number());
    EXPECT_EQ(reader.id(), (RecordingId{1, 2, 3}));
    while (reader.next()) {
    }
    reader.rewind();
    EXPECT_EQ(reader.next(), someRecords().front()) << "and once more from the beginning";
}

TEST_F(RecordingJournal, ATornLastRecordIsPassedOverWhereverItIsTorn) {
    write(someRecords());
    const std::string whole = bytesOf(journal_);
    std::vector<JournalRecord> expected = someRecords();
    expected.pop_back();
    const std::size_t lastRecord = 4 + 8 + 4;
    for (std::size_t cut = 1; cut < lastRecord; ++cut) {
        writeBytes(journal_, whole.substr(0, whole.size() - cut));
        EXPECT_EQ(read(), expected) << cut;
    }
}

TEST_F(RecordingJournal, ABitThatFlippedCostsNoMoreThanItsRecord) {
    write(someRecords());
    const std::string whole = bytesOf(journal_);
    for (std::size_t at = kHeader; at < whole.size(); ++at) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(damaged[at] ^ (1 << (at % 8)));
        writeBytes(journal_, damaged);
        EXPECT_EQ(read().size(), someRecords().size() - 1) << at;
    }
}

TEST_F(RecordingJournal, GarbageBetweenRecordsIsPassedOver) {
    write(someRecords());
    const std::string whole = bytesOf(journal_);
    writeBytes(journal_, whole.substr(0, kHeader) + std::string(200'000, '\xA7') + whole.substr(kHeader) +
                             std::string(70'000, '\0'));
    EXPECT_EQ(read(), someRecords());
}

TEST_F(RecordingJournal, ManyRecordsAreReadInSmallMemory) {
    std::vector<JournalRecord> many;
    for (std::uint32_t i = 0; i < 20'000; ++i) {
        many.emplace_back(JournalSample{0, i % 60 == 0, 1000 + i, i * 3000LL, 3000, 80 + i * 1000LL, i});
    }
    write(many);
    EXPECT_EQ(read(), many);
}

TEST_F(RecordingJournal, AVersionThatIsNotKnownIsToldFromDamage) {
    write({});
    std::string header = bytesOf(journal_);
    header[8] = 2;
    writeBytes(journal_, header);
    EXPECT_EQ(state(), JournalReader::State::unusable) << "its sum is wrong";
    const std::uint32_t sum = checksum(std::as_bytes(std::span(header)).first(28));
    std::memcpy(header.data() + 28, &sum, sizeof sum);
    writeBytes(journal_, header);
    EXPECT_EQ(state(), JournalReader::State::newer);
    writeBytes(journal_, header.substr(0, 31));
    EXPECT_EQ(state(), JournalReader::State::torn);
    writeBytes(journal_, "");
    EXPECT_EQ(state(), JournalReader::State::torn);
}

TEST_F(RecordingJournal, TextsTooLongAreCutBetweenCharacters) {
    std::string longTitle;
    for (int i = 0; i < 40'000; ++i) {
        longTitle += "ñ";
    }
    write({RecordingMark{1, "x" + longTitle, longTitle}});
    const auto records = read();
    ASSERT_EQ(records.size(), 1U);
    const auto& mark = std::get<RecordingMark>(records[0]);
    EXPECT_EQ(mark.title.size() % 2, 1U);
    EXPECT_GT(mark.title.size(), 28'000U);
    EXPECT_EQ(mark.location->size() % 2, 0U);
}

TEST_F(RecordingJournal, IsLockedUntilItIsRemovedAlsoWhenItsWriterHasGone) {
    write(someRecords());
    EXPECT_EQ(openAndLockJournal(journal_), nullptr);
    unlockJournal(video_);
    EXPECT_NE(openAndLockJournal(journal_), nullptr);
    removeJournal(video_);
    EXPECT_FALSE(std::filesystem::exists(journal_));
    removeJournal(video_); // nothing happens
}

TEST_F(RecordingJournal, IsNotMadeInPlaceOfAnotherOne) {
    write(someRecords());
    unlockJournal(video_);
    const auto another = JournalWriter::create(video_, RecordingId{4, 5, 6});
    ASSERT_FALSE(another);
    EXPECT_EQ(another.error().code, EEXIST);
    EXPECT_EQ(read(), someRecords());
}

TEST_F(RecordingJournal, IsAbsentOnlyWhenItIsCertainlyNotThere) {
    EXPECT_FALSE(hasJournal(video_));
    EXPECT_FALSE(hasJournal(folder_ / "no such folder" / "Clase.mp4"));
    writeBytes(video_, "x");
    EXPECT_FALSE(hasJournal(video_ / "Clase.mp4")) << "a file is no folder";
    write({});
    EXPECT_TRUE(hasJournal(video_));

    std::filesystem::create_symlink("round", folder_ / "round");
    EXPECT_TRUE(hasJournal(folder_ / "round" / "Clase.mp4")) << "nobody can tell";
    EXPECT_TRUE(hasJournal(folder_ / std::string(400, 'x')));
}

TEST_F(RecordingJournal, TellsWhetherSomebodyWorksOnTheRecording) {
    EXPECT_FALSE(isWorkedOn(video_)) << "there is none";
    write(someRecords());
    EXPECT_TRUE(isWorkedOn(video_)) << "written, or saved";
    unlockJournal(video_);
    EXPECT_FALSE(isWorkedOn(video_)) << "left behind";
    {
        const auto recovery = openAndLockJournal(journal_);
        EXPECT_TRUE(isWorkedOn(video_)) << "recovered";
    }
    EXPECT_FALSE(isWorkedOn(video_));
    EXPECT_NE(openAndLockJournal(journal_), nullptr) << "to ask keeps nobody out";
}

TEST_F(RecordingJournal, IsHiddenBesideItsVideoAndTellsItsName) {
    EXPECT_EQ(journalOf("/a/b.mp4"), "/a/.b.mp4.velmo-journal");
    EXPECT_EQ(videoOfJournal("/a/.b.mp4.velmo-journal"), std::filesystem::path("/a/b.mp4"));
    EXPECT_EQ(videoOfJournal("/a/b.mp4.velmo-journal"), std::nullopt);
    EXPECT_EQ(videoOfJournal("/a/..velmo-journal"), std::nullopt);
    EXPECT_EQ(videoOfJournal("/a/.b.mp4"), std::nullopt);
}

} // namespace
} // namespace velmo
