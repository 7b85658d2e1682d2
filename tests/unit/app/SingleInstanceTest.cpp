#include "app/SingleInstance.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <future>

namespace velmo {
namespace {

using Role = SingleInstance::Role;

class SingleInstanceTest : public testing::Test {
protected:
    /// Asks from another thread, as another process would, while this one's event loop runs.
    bool askWhileRunning(const SingleInstance& later) {
        auto answer = std::async(std::launch::async, [&later] { return later.askToReopen(); });
        const QDeadlineTimer deadline(10'000);
        while (answer.wait_for(std::chrono::milliseconds(1)) != std::future_status::ready && !deadline.hasExpired()) {
            QCoreApplication::processEvents();
        }
        QCoreApplication::processEvents();
        return answer.get();
    }

    QTemporaryDir folder_;
};

TEST_F(SingleInstanceTest, TheSecondStartIsTheLaterOne) {
    SingleInstance first(folder_.path());
    SingleInstance second(folder_.path());
    EXPECT_EQ(first.claim(), Role::first);
    EXPECT_EQ(second.claim(), Role::later);
}

TEST_F(SingleInstanceTest, TheLaterOneMakesTheFirstComeUp) {
    SingleInstance first(folder_.path());
    SingleInstance second(folder_.path());
    ASSERT_EQ(first.claim(), Role::first);
    ASSERT_EQ(second.claim(), Role::later);
    int reopened = 0;
    QObject::connect(&first, &SingleInstance::reopenRequested, &first, [&reopened] { ++reopened; });
    EXPECT_TRUE(askWhileRunning(second));
    EXPECT_EQ(reopened, 1);
}

TEST_F(SingleInstanceTest, ThePlaceIsFreeAgainWhenTheFirstHasGone) {
    {
        SingleInstance first(folder_.path());
        ASSERT_EQ(first.claim(), Role::first);
    }
    SingleInstance next(folder_.path());
    EXPECT_EQ(next.claim(), Role::first);
}

TEST_F(SingleInstanceTest, FilesLeftByAProcessThatWasKilledDoNotStandInTheWay) {
    QFile lock(folder_.filePath("velmo-studio.lock"));
    QFile socket(folder_.filePath("velmo-studio.socket"));
    ASSERT_TRUE(lock.open(QIODevice::WriteOnly) && socket.open(QIODevice::WriteOnly));
    SingleInstance first(folder_.path());
    EXPECT_EQ(first.claim(), Role::first);
    SingleInstance second(folder_.path());
    ASSERT_EQ(second.claim(), Role::later);
    EXPECT_TRUE(askWhileRunning(second));
}

TEST_F(SingleInstanceTest, WithoutAUsableFolderEveryStartIsAFirstOne) {
    SingleInstance lonely(folder_.filePath("not/there"));
    EXPECT_EQ(lonely.claim(), Role::first);
}

} // namespace
} // namespace velmo
