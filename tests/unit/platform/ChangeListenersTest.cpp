#include "platform/ChangeListeners.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

TEST(ChangeListeners, AreToldAsLongAsTheyKeepWhatTheyGot) {
    ChangeListeners listeners;
    int first = 0;
    int second = 0;
    std::shared_ptr<void> one = listeners.add([&first] { ++first; });
    const std::shared_ptr<void> two = listeners.add([&second] { ++second; });
    listeners.tell();
    one.reset();
    listeners.tell();
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 2);
}

TEST(ChangeListeners, MayLeaveInTheMiddleOfTheirOwnCall) {
    ChangeListeners listeners;
    int calls = 0;
    std::shared_ptr<void> token;
    token = listeners.add([&] {
        ++calls;
        token.reset();
    });
    listeners.tell();
    listeners.tell();
    EXPECT_EQ(calls, 1);
}

TEST(ChangeListeners, MayOutliveTheOneWhoTells) {
    std::shared_ptr<void> token;
    {
        ChangeListeners listeners;
        token = listeners.add([] {});
    }
    token.reset();
}

} // namespace
} // namespace velmo
