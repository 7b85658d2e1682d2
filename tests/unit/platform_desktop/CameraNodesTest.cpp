#include "platform/desktop/CameraNodes.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>

namespace velmo {
namespace {

TEST(CameraNodes, AFolderWithoutNodesOrWithoutExistenceHasNone) {
    const test::TemporaryFolder folder;
    EXPECT_EQ(CameraNodes::tryAll(folder.path()), DeviceFinding::absent);
    EXPECT_EQ(CameraNodes::tryAll(folder.path() / "gone"), DeviceFinding::absent);
}

TEST(CameraNodes, AFileThatIsNoCameraIsNone) {
    const test::TemporaryFolder folder;
    std::ofstream(folder.path() / "video0") << "no device";
    std::ofstream(folder.path() / "null") << "no device";
    EXPECT_EQ(CameraNodes::tryAll(folder.path()), DeviceFinding::absent);
}

} // namespace
} // namespace velmo
