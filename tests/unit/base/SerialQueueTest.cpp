#include "base/SerialQueue.h"

#include <atomic>
#include <gtest/gtest.h>
#include <vector>

namespace velmo {
namespace {

TEST(ThreadQueue, RunsTasksInTheOrderOfHandingOver) {
    ThreadQueue queue("test.order");
    std::vector<int> order;
    for (int i = 0; i < 500; ++i) {
        queue.async([&order, i] { order.push_back(i); });
    }
    queue.sync([] {});
    ASSERT_EQ(order.size(), 500u);
    for (int i = 0; i < 500; ++i) {
        EXPECT_EQ(order[static_cast<std::size_t>(i)], i);
    }
}

TEST(ThreadQueue, KnowsItsOwnThread) {
    ThreadQueue queue("test.current");
    bool inside = false;
    queue.sync([&] { inside = queue.isCurrent(); });
    EXPECT_TRUE(inside);
    EXPECT_FALSE(queue.isCurrent());
}

TEST(ThreadQueue, FinishesWhatWasHandedOverBeforeItEnds) {
    std::atomic<int> done = 0;
    {
        ThreadQueue queue("test.end");
        for (int i = 0; i < 100; ++i) {
            queue.async([&done] { ++done; });
        }
    }
    EXPECT_EQ(done, 100);
}

TEST(ThreadQueue, ACancelledTimerDoesNotTickAgain) {
    ThreadQueue queue("test.timer");
    std::atomic<int> ticks = 0;
    SerialQueue::TimerId timer = 0;
    std::atomic<bool> cancelled = false;
    timer = queue.startTimer(0.001, [&] {
        ++ticks;
        queue.cancelTimer(timer);
        cancelled = true;
    });
    while (!cancelled) {
        queue.sync([] {});
    }
    queue.sync([] {});
    EXPECT_EQ(ticks, 1);
}

} // namespace
} // namespace velmo
