#include "media/RecordingClose.h"

#include "base/FileDescriptor.h"
#include "support/LeftRecording.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fcntl.h>

namespace velmo {
namespace {

using test::bytesOf;
using test::LeftRecording;

class RecordingClose : public testing::Test {
protected:
    Result<ClosedVideo> close(const LeftRecording& left, int mode, Closing closing) {
        const FileDescriptor journal(::open(left.journal().c_str(), O_RDONLY));
        const FileDescriptor video(::open(left.video().c_str(), mode));
        JournalReader reader(journal.number());
        const JournalSummary summary = summaryOf(reader);
        return closeVideo(video.number(), reader, summary, closing);
    }

    test::TemporaryFolder folder_;
    LeftRecording left_{folder_ / "Clase.mp4"};
};

TEST_F(RecordingClose, SamplesThatCannotBeReadAreNotTakenForNothingRecorded) {
    left_.record(30);
    left_.die();
    const auto closed = close(left_, O_WRONLY, Closing::afterCrash);
    ASSERT_FALSE(closed.ok());
    EXPECT_EQ(closed.error().code, EBADF);
    EXPECT_EQ(bytesOf(left_.video()), left_.data());
}

TEST_F(RecordingClose, WithoutAPictureNothingIsWritten) {
    left_.sound(0);
    left_.die();
    for (const Closing closing : {Closing::afterWriting, Closing::afterCrash}) {
        const auto closed = close(left_, O_RDWR, closing);
        ASSERT_TRUE(closed.ok());
        EXPECT_FALSE(closed.value().hasPictures);
        EXPECT_EQ(bytesOf(left_.video()), left_.data());
    }
}

} // namespace
} // namespace velmo
