#include "platform/CameraMailbox.h"

#include "support/ManualQueue.h"

#include <gmock/gmock.h>

#include <memory>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;

namespace velmo::test {
namespace {

class CameraMailboxTest : public testing::Test {
protected:
    static Sample sampleAt(int seconds) {
        Sample sample;
        sample.timing.presentation = {seconds, 1};
        return sample;
    }

    ManualQueue queue;
    std::vector<double> heard; ///< times of pictures, -1 for the end
    std::shared_ptr<CameraMailbox> mailbox = std::make_shared<CameraMailbox>(
        queue, CameraHandlers{[this](const Sample& sample) { heard.push_back(sample.presentation().seconds()); },
                              [this](const Error&) { heard.push_back(-1); }});
};

TEST_F(CameraMailboxTest, OfPicturesThatWaitOnlyTheLatestArrives) {
    mailbox->deliver(sampleAt(1));
    mailbox->deliver(sampleAt(2));
    EXPECT_EQ(queue.waiting(), 1U);
    queue.run();
    mailbox->deliver(sampleAt(3));
    queue.run();
    EXPECT_THAT(heard, ElementsAre(2, 3));
}

TEST_F(CameraMailboxTest, TheEndComesAfterThePictureThatWaitsAndNothingFollows) {
    mailbox->deliver(sampleAt(1));
    mailbox->end({});
    mailbox->end({});
    queue.run();
    mailbox->deliver(sampleAt(2));
    queue.run();
    EXPECT_THAT(heard, ElementsAre(1, -1));
}

TEST_F(CameraMailboxTest, NothingArrivesOnceItIsShut) {
    mailbox->deliver(sampleAt(1));
    mailbox->shut();
    mailbox->deliver(sampleAt(2));
    mailbox->end({});
    queue.run();
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(CameraMailboxTest, APictureThatIsNotTakenIsLetGo) {
    Sample sample = sampleAt(1);
    sample.image = PixelBuffer::create(PixelFormat::nv12, 2, 2);
    mailbox->deliver(sample);
    mailbox->shut();
    EXPECT_FALSE(sample.image->isShared());
}

TEST_F(CameraMailboxTest, OutlivesItsSenderOnTheWayToTheQueue) {
    mailbox->deliver(sampleAt(1));
    mailbox.reset();
    queue.run();
    EXPECT_THAT(heard, ElementsAre(1));
}

} // namespace
} // namespace velmo::test
