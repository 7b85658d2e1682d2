#include "World.h"

#include "session/DiskGuard.h"

namespace velmo {
namespace {

using test::State;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;
using Verdict = DiskGuard::Verdict;

constexpr std::int64_t kMegabyte = 1 << 20;

TEST(DiskGuard, TellsOnceThatAFewMinutesAreLeft) {
    DiskGuard guard;
    std::int64_t free = 400 * kMegabyte;
    std::int64_t file = 0;
    int low = 0;
    double seconds = 0;
    Verdict verdict = Verdict::enough;
    for (; verdict != Verdict::over && seconds < 1000; seconds += 5) {
        verdict = guard.judge(seconds, file, free);
        low += verdict == Verdict::low ? 1 : 0;
        if (verdict == Verdict::low) {
            EXPECT_NEAR(guard.secondsLeft(), 180, 10);
        }
        file += 5 * kMegabyte;
        free -= 5 * kMegabyte;
    }
    EXPECT_EQ(low, 1);
    EXPECT_EQ(verdict, Verdict::over);
    EXPECT_GT(free, 40 * kMegabyte) << "while there is room to close the file";
    EXPECT_LT(free, 70 * kMegabyte);
}

TEST(DiskGuard, GoesByTheRateOfTheLastMinute) {
    DiskGuard guard;
    std::int64_t file = 0;
    for (int second = 0; second < 600; second += 5) {
        EXPECT_EQ(guard.judge(second, file, 10'000 * kMegabyte), Verdict::enough);
        file += 5 * kMegabyte;
    }
    for (int second = 600; second < 720; second += 5) {
        guard.judge(second, file, 200 * kMegabyte); // the screen is still now
    }
    EXPECT_GT(guard.secondsLeft(), 3600);
}

TEST(DiskGuard, AFullDiskIsOverAtOnce) {
    DiskGuard guard;
    EXPECT_EQ(guard.judge(0, 0, 0), Verdict::over);
    EXPECT_EQ(guard.secondsLeft(), 0);
}

class DiskWatch : public test::World {};

TEST_F(DiskWatch, AFewMinutesAreShownOnTheFlash) {
    record();
    disk.bytes = 140 * kMegabyte;
    advance(5);
    test::settle();
    ASSERT_TRUE(controller->flash());
    EXPECT_THAT(controller->flash()->toStdString(), HasSubstr("Queda poco disco"));
    EXPECT_EQ(controller->state(), State::recording);
}

TEST_F(DiskWatch, BeforeTheDiskIsFullTheRecordingIsSavedAndTheUserTold) {
    record();
    disk.bytes = 45 * kMegabyte;
    advance(5);
    test::settle();
    EXPECT_EQ(controller->state(), State::idle);
    EXPECT_THAT(calls, Contains("library.add /videos/class.mp4"));
    EXPECT_THAT(calls, Contains("inform La grabación se detuvo | El disco está casi lleno. Todo lo que grabaste hasta "
                                "ahí está guardado."));
}

TEST_F(DiskWatch, ADiskThatIsNotKnownIsLeftToTheWriter) {
    record();
    disk.bytes = std::nullopt;
    advance(60);
    test::settle();
    disk.bytes = 0;
    disk.fileBytes = std::nullopt;
    advance(60);
    test::settle();
    EXPECT_EQ(controller->state(), State::recording);
}

TEST_F(DiskWatch, WhatTheDiskDidToTheWriterIsToldWhenTheRecordingIsSaved) {
    record();
    script.onStop(Error{"velmo.media", 5, "El disco dio un error."});
    test::settle();
    EXPECT_THAT(calls, Contains("library.add /videos/class.mp4"));
    EXPECT_THAT(calls, Contains("inform La grabación se detuvo | El disco dio un error. Todo lo que grabaste hasta ahí "
                                "está guardado."));
}

TEST_F(DiskWatch, AnEndThatIsTheDisplaysIsToldInItsWords) {
    record();
    script.onStop(Error{"SCStreamErrorDomain", -3821, "Se desconectó la pantalla que se estaba grabando."});
    test::settle();
    EXPECT_THAT(calls,
                Contains("inform La grabación se detuvo | Se desconectó la pantalla que se estaba grabando. Todo "
                         "lo que grabaste hasta ahí está guardado."));
}

TEST_F(DiskWatch, AnEndWithoutWordsOfOursIsNotTold) {
    record();
    script.onStop(Error{"X11", 8, "BadWindow"});
    test::settle();
    for (const std::string& call : calls) {
        EXPECT_THAT(call, Not(HasSubstr("inform")));
    }
}

TEST_F(DiskWatch, EachMarkIsNotedWithTheRecording) {
    record();
    advance(2);
    controller->addMarker();
    advance(1);
    controller->addChapter("guía", QStringLiteral("/x.pdf"));
    ASSERT_EQ(script.marks.size(), 2U);
    EXPECT_EQ(script.marks[0], (RecordingMark{2, "Marcador 1", std::nullopt}));
    EXPECT_EQ(script.marks[1], (RecordingMark{3, "guía", "/x.pdf"}));
}

} // namespace
} // namespace velmo
