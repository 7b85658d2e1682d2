#include "classkit/internal/CopyItem.h"

#include "support/SmallDisk.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <fcntl.h>
#include <sys/fsuid.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmo {
namespace {

using internal::copyItem;
using test::contentOf;
using test::SmallDisk;
using test::TemporaryFolder;

constexpr std::uintmax_t kMegabyte = 1 << 20;

class CopiedItem : public testing::Test {
protected:
    bool isThere(const char* name) const {
        return std::filesystem::exists(std::filesystem::symlink_status(folder / name));
    }

    TemporaryFolder folder;
    std::filesystem::path to = folder / "to";
};

TEST_F(CopiedItem, HasContentModeAndTimeOfItsSource) {
    const auto from = folder.write("from", std::string(200'001, 'x'));
    std::filesystem::permissions(from, static_cast<std::filesystem::perms>(0440));
    const auto time = std::filesystem::last_write_time(from) - std::chrono::hours(24);
    std::filesystem::last_write_time(from, time);
    ASSERT_TRUE(copyItem(from, to));
    EXPECT_EQ(contentOf(to), std::string(200'001, 'x'));
    EXPECT_EQ(static_cast<int>(std::filesystem::status(to).permissions()), 0640) << "and its owner can write it";
    EXPECT_EQ(std::filesystem::last_write_time(to), time);
}

TEST_F(CopiedItem, MayBeEmpty) {
    ASSERT_TRUE(copyItem(folder.write("from", ""), to));
    EXPECT_EQ(std::filesystem::file_size(to), 0u);
}

TEST_F(CopiedItem, NeverReplacesWhatIsThere) {
    const auto from = folder.write("from", "new");
    folder.write("to", "old");
    EXPECT_EQ(copyItem(from, to).error().code, EEXIST);
    EXPECT_EQ(contentOf(to), "old");
    std::filesystem::create_directory(folder / "folder");
    EXPECT_FALSE(copyItem(folder / "folder", to));
    EXPECT_EQ(contentOf(to), "old");
}

TEST_F(CopiedItem, OfFiveGigabytesWithHolesKeepsPlaceAndHoles) {
    constexpr off_t kSize = off_t(5) << 30;
    const int file = ::open((folder / "from").c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    ASSERT_EQ(::pwrite(file, "first", 5, 0), 5);
    ASSERT_EQ(::pwrite(file, "middle", 6, (off_t(4) << 30) + 12345), 6);
    ASSERT_EQ(::ftruncate(file, kSize), 0);
    ::close(file);

    ASSERT_TRUE(copyItem(folder / "from", to));

    ASSERT_EQ(std::filesystem::file_size(to), static_cast<std::uintmax_t>(kSize));
    std::string read(6, ' ');
    const int copy = ::open(to.c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(::pread(copy, read.data(), 6, (off_t(4) << 30) + 12345), 6);
    EXPECT_EQ(read, "middle");
    struct stat status {};
    ASSERT_EQ(::fstat(copy, &status), 0);
    ::close(copy);
    EXPECT_LT(static_cast<std::uintmax_t>(status.st_blocks) * 512, kMegabyte);
}

TEST_F(CopiedItem, NeedsNoMemoryForItsSize) {
    const auto from = folder.write("from", "");
    const std::string block(kMegabyte, 'x');
    {
        std::ofstream out(from, std::ios::binary);
        for (int i = 0; i < 96; ++i) {
            out << block;
        }
    }
    struct rusage before {};
    ::getrusage(RUSAGE_SELF, &before);
    ASSERT_TRUE(copyItem(from, to));
    struct rusage after {};
    ::getrusage(RUSAGE_SELF, &after);
    EXPECT_EQ(std::filesystem::file_size(to), 96 * kMegabyte);
    EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 16 * 1024) << "kilobytes";
}

TEST_F(CopiedItem, ThatFindsNoRoomLeavesNothing) {
    std::filesystem::create_directory(folder / "from");
    folder.write("from/small", "x");
    folder.write("from/big", std::string(300'000, 'x'));
    const SmallDisk full(100'000);
    EXPECT_EQ(copyItem(folder / "from/big", to).error().code, EFBIG);
    EXPECT_FALSE(isThere("to"));
    EXPECT_EQ(copyItem(folder / "from", to).error().code, EFBIG);
    EXPECT_FALSE(isThere("to"));
}

TEST_F(CopiedItem, ThatCannotBeReadFails) {
    std::filesystem::permissions(folder, std::filesystem::perms::all);
    const auto from = folder.write("from");
    std::filesystem::permissions(from, std::filesystem::perms::none);
    ::setfsuid(65534); // root reads everything
    const auto copied = copyItem(from, to);
    ::setfsuid(::geteuid());
    EXPECT_EQ(copied.error().code, EACCES);
    EXPECT_FALSE(isThere("to"));
}

TEST_F(CopiedItem, ThatIsNoFileFailsAtOnce) {
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(copyItem(folder / "pipe", to).error().code, EINVAL);
    EXPECT_EQ(copyItem("/dev/zero", to).error().code, EINVAL);
    EXPECT_EQ(copyItem(folder / "gone", to).error().code, ENOENT);
    std::filesystem::create_directory(folder / "folder");
    ASSERT_EQ(::mkfifo((folder / "folder/pipe").c_str(), 0600), 0);
    EXPECT_FALSE(copyItem(folder / "folder", to));
    EXPECT_FALSE(isThere("to"));
}

TEST_F(CopiedItem, FollowsALinkToAFileAndKeepsLinksInsideAFolder) {
    std::filesystem::create_directory(folder / "from");
    folder.write("from/a", "a");
    std::filesystem::create_symlink("a", folder / "from/link");
    std::filesystem::create_directory_symlink("..", folder / "from/loop");
    ASSERT_TRUE(copyItem(folder / "from/link", to));
    EXPECT_TRUE(std::filesystem::is_regular_file(std::filesystem::symlink_status(to)));
    ASSERT_TRUE(copyItem(folder / "from", folder / "copy"));
    EXPECT_EQ(std::filesystem::read_symlink(folder / "copy/link"), "a");
    EXPECT_EQ(std::filesystem::read_symlink(folder / "copy/loop"), "..");
}

TEST_F(CopiedItem, IsNeverPutIntoItself) {
    std::filesystem::create_directories(folder / "from/inside");
    EXPECT_FALSE(copyItem(folder / "from", folder / "from/inside/copy"));
    EXPECT_FALSE(isThere("from/inside/copy"));
    std::filesystem::create_directory(folder / "from2");
    EXPECT_TRUE(copyItem(folder / "from", folder / "from2/copy")) << "a name that only begins alike is another folder";
}

} // namespace
} // namespace velmo
