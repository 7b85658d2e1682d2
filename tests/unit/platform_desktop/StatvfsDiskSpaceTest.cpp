#include "platform/desktop/StatvfsDiskSpace.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

TEST(StatvfsDiskSpace, AFolderYetToBeMadeHasTheSpaceOfTheVolumeItWillBeOn) {
    const StatvfsDiskSpace space;
    const auto there = space.available("/tmp");
    const auto yetToBe = space.available("/tmp/not/yet/there");
    ASSERT_TRUE(there && yetToBe);
    EXPECT_GT(*yetToBe, 0);
}

TEST(StatvfsDiskSpace, APathThroughAFileCannotBeRead) {
    EXPECT_EQ(StatvfsDiskSpace().available("/proc/version/deeper"), std::nullopt);
}

TEST(StatvfsDiskSpace, AnEmptyPathCannotBeRead) {
    EXPECT_EQ(StatvfsDiskSpace().available({}), std::nullopt);
}

} // namespace
} // namespace velmo
