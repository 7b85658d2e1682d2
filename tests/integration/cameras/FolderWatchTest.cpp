#include "platform/ffmpeg/internal/FolderWatch.h"

#include "support/TemporaryFolder.h"
#include "support/WaitUntil.h"

#include <gmock/gmock.h>

#include <atomic>

namespace velmo::test {
namespace {

class FolderWatchTest : public testing::Test {
protected:
    bool looksAgain() {
        const int before = seen;
        const bool again = waitUntil([&] { return looks > before; });
        seen = looks;
        return again;
    }

    TemporaryFolder folder;
    std::atomic<int> looks{0};
    int seen = 0;
    internal::FolderWatch watch{folder, {"v4l", "v4l/by-id"}, [this] { ++looks; }};
};

TEST_F(FolderWatchTest, LooksAtOnceAndAfterEachChange) {
    EXPECT_TRUE(looksAgain());
    folder.write("video0");
    EXPECT_TRUE(looksAgain());
    std::filesystem::permissions(folder / "video0", std::filesystem::perms::owner_read);
    EXPECT_TRUE(looksAgain());
    std::filesystem::remove(folder / "video0");
    EXPECT_TRUE(looksAgain());
}

TEST_F(FolderWatchTest, WatchesPartsThatComeLater) {
    EXPECT_TRUE(looksAgain());
    std::filesystem::create_directories(folder / "v4l/by-id");
    EXPECT_TRUE(looksAgain());
    folder.write("v4l/by-id/usb-cam");
    EXPECT_TRUE(looksAgain());
    folder.write("v4l/by-id/usb-other");
    EXPECT_TRUE(looksAgain());
}

} // namespace
} // namespace velmo::test
