#include "session/MainThreadResult.h"
#include "ManualTimers.h"

#include <QCoroTask>
#include <QThread>

#include <gmock/gmock.h>

#include <thread>

using testing::ElementsAre;
using testing::IsEmpty;

namespace velmo::test {
namespace {

struct Waiting {
    std::vector<int> got;
    bool onMainThread = false;

    QCoro::Task<void> run(MainThreadResult<int>& result) {
        const int value = co_await result;
        got.push_back(value);
        onMainThread = QThread::currentThread() == QCoreApplication::instance()->thread();
    }
};

TEST(MainThreadResult, AValueFromAnotherThreadResumesOnTheMainThread) {
    MainThreadResult<int> result{-1};
    auto callback = result.callback();
    Waiting waiting;
    waiting.run(result);
    std::thread other([&] { callback(7); });
    other.join();
    EXPECT_THAT(waiting.got, IsEmpty());
    settle();
    EXPECT_THAT(waiting.got, ElementsAre(7));
    EXPECT_TRUE(waiting.onMainThread);
}

TEST(MainThreadResult, AValueThatIsThereNeedsNoWait) {
    MainThreadResult<int> result{-1};
    result.callback()(3);
    Waiting waiting;
    waiting.run(result);
    EXPECT_THAT(waiting.got, ElementsAre(3));
}

TEST(MainThreadResult, OnlyTheFirstCallCounts) {
    MainThreadResult<int> result{-1};
    auto callback = result.callback();
    Waiting waiting;
    waiting.run(result);
    callback(1);
    callback(2);
    settle();
    callback(3);
    callback = {};
    settle();
    EXPECT_THAT(waiting.got, ElementsAre(1));
}

TEST(MainThreadResult, ACallbackThatIsDroppedAnswersForItself) {
    MainThreadResult<int> result{-1};
    auto callback = result.callback();
    auto copy = callback;
    Waiting waiting;
    waiting.run(result);
    callback = {};
    settle();
    EXPECT_THAT(waiting.got, IsEmpty());
    copy = {};
    settle();
    EXPECT_THAT(waiting.got, ElementsAre(-1));
}

TEST(MainThreadResult, ACallbackMayOutliveWhatItAnswers) {
    std::function<void(int)> callback;
    {
        MainThreadResult<int> result{-1};
        callback = result.callback();
    }
    callback(1);
    settle();
}

TEST(MainThreadResult, ManyThreadsThatRaceResumeOnce) {
    for (int round = 0; round < 200; ++round) {
        MainThreadResult<int> result{-1};
        Waiting waiting;
        {
            auto callback = result.callback();
            std::thread first([callback] { callback(1); });
            std::thread second([callback] { callback(2); });
            waiting.run(result);
            first.join();
            second.join();
        }
        settle();
        ASSERT_EQ(waiting.got.size(), 1u);
    }
}

} // namespace
} // namespace velmo::test
