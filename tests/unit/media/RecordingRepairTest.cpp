#include "media/RecordingRepair.h"

#include "base/PosixError.h"
#include "support/FewFiles.h"
#include "support/LeftRecording.h"
#include "support/SmallDisk.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <cstring>

namespace velmo {
namespace {

using test::bytesOf;
using test::LeftRecording;
using test::writeBytes;

/// A big-endian number of a box.
std::uint64_t numberAt(const std::string& bytes, std::size_t at, int size) {
    std::uint64_t value = 0;
    for (int i = 0; i < size; ++i) {
        value = value << 8 | static_cast<unsigned char>(bytes.at(at + static_cast<std::size_t>(i)));
    }
    return value;
}

/// How many samples the `n`th track's table of sizes has.
std::uint64_t samplesOf(const std::string& file, int n) {
    std::size_t at = file.rfind("moov");
    for (int i = 0; i <= n; ++i) {
        at = file.find("stsz", at + 1);
    }
    return at == std::string::npos ? 0 : numberAt(file, at + 12, 4);
}

class RecordingRepair : public testing::Test {
protected:
    std::optional<RepairedRecording> repair(const std::filesystem::path& journal) {
        auto repaired = repairRecording(journal);
        EXPECT_TRUE(repaired.ok());
        return repaired ? std::move(repaired).value() : std::nullopt;
    }
    std::optional<RepairedRecording> repair() { return repair(journalOf(video_)); }
    bool isThere(const std::filesystem::path& path) { return std::filesystem::exists(path); }

    test::TemporaryFolder folder_;
    std::filesystem::path video_ = folder_ / "Clase.mp4";
};

TEST_F(RecordingRepair, GivesTheVideoItsIndexAndTellsItsMarksAndLength) {
    LeftRecording left(video_);
    left.record(60);
    left.add(RecordingMark{0.5, "Marcador 1", std::nullopt});
    left.add(RecordingMark{1.5, "Lámina", "https://example.org"});
    left.die();
    const auto repaired = repair();
    ASSERT_TRUE(repaired);
    EXPECT_EQ(repaired->video, video_);
    EXPECT_NEAR(repaired->seconds, 2, 0.05);
    EXPECT_THAT(repaired->marks, testing::ElementsAre(RecordingMark{0.5, "Marcador 1", std::nullopt},
                                                      RecordingMark{1.5, "Lámina", "https://example.org"}));
    const std::string file = bytesOf(video_);
    EXPECT_EQ(file.substr(80, left.data().size() - 80), left.data().substr(80)) << "no sample has moved";
    EXPECT_EQ(numberAt(file, 64, 4), 1U);
    EXPECT_EQ(numberAt(file, 72, 8), left.data().size() - 64) << "the data ends where the index begins";
    EXPECT_EQ(file.substr(left.data().size() + 4, 4), "moov");
    EXPECT_EQ(numberAt(file, left.data().size(), 4), file.size() - left.data().size());
    EXPECT_EQ(samplesOf(file, 0), 60U);
    EXPECT_TRUE(isThere(left.journal())) << "until the recording is in the library";
    forget(*repaired);
    EXPECT_FALSE(isThere(left.journal()));
}

TEST_F(RecordingRepair, CutShortAnywhereItIsDoneAgainToTheSameEnd) {
    LeftRecording left(video_);
    left.record(60);
    left.die();
    const std::string journal = bytesOf(left.journal());
    ASSERT_TRUE(repair());
    const std::string whole = bytesOf(video_);
    const std::size_t data = left.data().size();
    const auto again = [&](const std::string& state, const std::string& notes) {
        writeBytes(video_, state);
        writeBytes(left.journal(), notes);
        const auto repaired = repair();
        return repaired && bytesOf(video_) == whole;
    };
    for (std::size_t cut = data; cut <= whole.size(); cut += 37) {
        EXPECT_TRUE(again(left.data() + whole.substr(data, cut - data), journal)) << "killed in the index at " << cut;
    }
    EXPECT_TRUE(again(whole, journal)) << "killed before the journal knew";
    const std::string noted = bytesOf(left.journal());
    EXPECT_TRUE(again(whole, noted)) << "killed before the library knew";
}

TEST_F(RecordingRepair, AVideoCutAnywhereKeepsWhatIsWhole) {
    LeftRecording left(video_);
    left.record(60);
    left.die();
    const std::string journal = bytesOf(left.journal());
    std::uint64_t before = 0;
    for (std::size_t cut = 480; cut <= left.data().size(); cut += 211) {
        writeBytes(video_, left.data().substr(0, cut));
        writeBytes(left.journal(), journal);
        const auto repaired = repair();
        ASSERT_TRUE(repaired) << cut;
        const std::uint64_t samples = samplesOf(bytesOf(video_), 0);
        EXPECT_GE(samples, before);
        EXPECT_GE(samples, 1U);
        before = samples;
    }
    EXPECT_EQ(before, 60U);
}

TEST_F(RecordingRepair, WhatThePowerCutGarbledIsLeftOutAndWhatHadReachedTheDiskIsNot) {
    LeftRecording left(video_);
    left.record(30);
    const std::int64_t synced = left.end();
    left.add(JournalSynced{synced});
    const JournalSample lost = left.picture(30, true);
    left.picture(31, false);
    left.picture(32, false);
    left.picture(33, true);
    left.data().replace(static_cast<std::size_t>(lost.offset), 100, 100, '\0'); // never written
    left.data()[200] = static_cast<char>(left.data()[200] + 1);                 // not looked at any more
    left.die();
    ASSERT_TRUE(repair());
    EXPECT_EQ(samplesOf(bytesOf(video_), 0), 31U) << "without the lost one and those that stand on it";
}

TEST_F(RecordingRepair, AStillScreenLastsAsLongAsTheRecordingWasKnownToLast) {
    LeftRecording left(video_);
    left.picture(0, true);
    left.add(JournalProgress{40'500'000});
    left.die();
    const auto repaired = repair();
    ASSERT_TRUE(repaired);
    EXPECT_NEAR(repaired->seconds, 40.5, 0.001);
}

TEST_F(RecordingRepair, WhereNothingWasRecordedYetNothingStays) {
    LeftRecording left(video_);
    left.sound(0);
    left.die();
    EXPECT_FALSE(repair());
    EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));
}

TEST_F(RecordingRepair, AVideoThatNotEvenHadItsHeadGoesWithItsJournal) {
    LeftRecording left(video_);
    left.data().clear();
    left.die();
    EXPECT_FALSE(repair());
    EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));
}

TEST_F(RecordingRepair, AJournalWithoutAVideoGoes) {
    LeftRecording left(video_);
    left.record(30);
    left.die();
    std::filesystem::remove(video_);
    EXPECT_FALSE(repair());
    EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));
}

TEST_F(RecordingRepair, AVideoThatCannotBeOpenedOrReadKeepsItsJournalForAnotherTime) {
    LeftRecording left(video_);
    left.record(30);
    left.die();
    const auto elsewhere = folder_ / "elsewhere";
    std::filesystem::rename(video_, elsewhere);
    const std::string journal = bytesOf(left.journal());
    const auto expectAnError = [&](int number) {
        const auto repaired = repairRecording(left.journal());
        ASSERT_FALSE(repaired.ok());
        EXPECT_EQ(repaired.error().domain, kPosixErrorDomain);
        EXPECT_EQ(repaired.error().code, number);
        EXPECT_EQ(bytesOf(left.journal()), journal);
    };
    std::filesystem::create_directory(video_); // opens, and cannot be read
    expectAnError(EISDIR);
    std::filesystem::remove(video_);
    std::filesystem::create_symlink(video_.filename(), video_);
    expectAnError(ELOOP);
    std::filesystem::rename(video_, asideOf(video_));
    expectAnError(ELOOP);
    std::filesystem::remove(asideOf(video_));

    std::filesystem::rename(elsewhere, video_);
    EXPECT_TRUE(repair()) << "at another time";
    EXPECT_EQ(samplesOf(bytesOf(video_), 0), 30U);
}

TEST_F(RecordingRepair, WithoutAFileToSpareNothingIsKnownOfTheVideo) {
    LeftRecording left(video_);
    left.record(30);
    left.die();
    std::filesystem::rename(video_, folder_ / "Mi clase.mp4");
    {
        const test::FewFiles files(1); // the journal
        const auto repaired = repairRecording(left.journal());
        ASSERT_FALSE(repaired.ok());
        EXPECT_EQ(repaired.error().code, EMFILE);
    }
    const auto repaired = repair();
    ASSERT_TRUE(repaired);
    EXPECT_EQ(repaired->video, folder_ / "Mi clase.mp4");
}

TEST_F(RecordingRepair, WhatElseIsNamedLikeAVideoIsNoReasonToWait) {
    LeftRecording left(video_);
    left.record(30);
    left.die();
    std::filesystem::remove(video_);
    std::filesystem::create_directory(folder_ / "a.mp4");
    std::filesystem::create_symlink("b.mp4", folder_ / "b.mp4");
    EXPECT_FALSE(repair());
    EXPECT_FALSE(isThere(left.journal()));
}

TEST_F(RecordingRepair, AVideoWithoutAJournalIsNobodysBusiness) {
    LeftRecording left(video_);
    left.record(30);
    left.die();
    std::filesystem::remove(left.journal());
    EXPECT_TRUE(journalsIn(folder_).empty());
    EXPECT_FALSE(repair());
    EXPECT_EQ(bytesOf(video_), left.data());
}

TEST_F(RecordingRepair, AVideoThatIsAnotherOneIsNotTouched) {
    LeftRecording left(video_, 7);
    left.record(30);
    left.die();
    LeftRecording other(folder_ / "Otra.mp4", 8);
    other.record(10);
    other.die();
    std::filesystem::rename(other.video(), video_);
    EXPECT_FALSE(repair());
    EXPECT_EQ(bytesOf(video_), other.data());
    EXPECT_FALSE(isThere(left.journal()));
}

TEST_F(RecordingRepair, AVideoThatTheUserHasRenamedIsFound) {
    LeftRecording left(video_);
    left.record(30);
    left.die();
    std::filesystem::rename(video_, folder_ / "Mi clase.mp4");
    const auto repaired = repair();
    ASSERT_TRUE(repaired);
    EXPECT_EQ(repaired->video, folder_ / "Mi clase.mp4");
    forget(*repaired);
    EXPECT_TRUE(journalsIn(folder_).empty());
}

TEST_F(RecordingRepair, AVideoThatWasPutAsideComesBackUnderItsNameOrOneLikeIt) {
    LeftRecording left(video_);
    left.record(30);
    left.die();
    std::filesystem::rename(video_, asideOf(video_));
    writeBytes(video_, "another one");
    const auto repaired = repair();
    ASSERT_TRUE(repaired);
    EXPECT_EQ(repaired->video, folder_ / "Clase (2).mp4");
    EXPECT_EQ(bytesOf(video_), "another one");
    EXPECT_FALSE(isThere(asideOf(video_)));
}

TEST_F(RecordingRepair, AFinishedVideoIsTakenAsItIsAlsoWhenItHasBeenMixed) {
    LeftRecording left(video_);
    left.record(30);
    left.add(RecordingMark{0.5, "Marcador 1", std::nullopt});
    left.add(JournalFinished{1'000'000});
    left.die();
    writeBytes(video_, "mixed");
    const auto repaired = repair();
    ASSERT_TRUE(repaired);
    EXPECT_EQ(repaired->video, video_);
    EXPECT_EQ(repaired->seconds, 1);
    EXPECT_EQ(repaired->marks.size(), 1U);
    EXPECT_EQ(bytesOf(video_), "mixed");
}

TEST_F(RecordingRepair, WhatAnotherProgramWorksOnIsLeftAlone) {
    LeftRecording left(video_);
    left.record(30);
    left.die();
    const auto working = openAndLockJournal(left.journal());
    const std::string journal = bytesOf(left.journal());
    EXPECT_FALSE(repair());
    EXPECT_EQ(bytesOf(video_), left.data());
    EXPECT_EQ(bytesOf(left.journal()), journal);
}

TEST_F(RecordingRepair, AJournalMadeInTheLastMomentGoesWithItsEmptyVideoOnly) {
    writeBytes(journalOf(video_), "VELM");
    writeBytes(video_, "");
    EXPECT_FALSE(repair());
    EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));

    writeBytes(journalOf(video_), "");
    writeBytes(video_, "a class of last week");
    EXPECT_FALSE(repair());
    EXPECT_EQ(bytesOf(video_), "a class of last week");
    EXPECT_FALSE(isThere(journalOf(video_)));
}

TEST_F(RecordingRepair, ADamagedJournalIsKeptAsideAndTheVideoLeftAlone) {
    LeftRecording left(video_);
    left.record(30);
    left.die();
    std::string journal = bytesOf(left.journal());
    journal[3] = 'x';
    writeBytes(left.journal(), journal);
    EXPECT_FALSE(repair());
    EXPECT_EQ(bytesOf(video_), left.data());
    EXPECT_FALSE(isThere(left.journal()));
    EXPECT_TRUE(isThere(left.journal().native() + ".damaged-1"));
}

TEST_F(RecordingRepair, AJournalOfALaterVersionIsLeftAlone) {
    LeftRecording left(video_);
    left.record(30);
    left.die();
    std::string journal = bytesOf(left.journal());
    journal[8] = 9;
    const std::uint32_t sum = checksum(std::as_bytes(std::span(journal)).first(28));
    std::memcpy(journal.data() + 28, &sum, sizeof sum);
    writeBytes(left.journal(), journal);
    EXPECT_FALSE(repair());
    EXPECT_EQ(bytesOf(left.journal()), journal);
    EXPECT_EQ(bytesOf(video_), left.data());
}

TEST_F(RecordingRepair, WhatCannotBeWrittenIsAnErrorAndStaysForAnotherTime) {
    LeftRecording left(video_);
    left.record(30);
    left.die();
    const test::SmallDisk disk(1000);
    EXPECT_FALSE(repairRecording(left.journal()).ok());
    EXPECT_TRUE(isThere(left.journal()));
    EXPECT_EQ(bytesOf(video_), left.data());
}

} // namespace
} // namespace velmo
