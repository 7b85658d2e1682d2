#include "base/AtomicFile.h"

#include "support/ReadOnlyFolder.h"
#include "support/SmallDisk.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <string>

namespace velmo {
namespace {

using test::contentOf;
using test::TemporaryFolder;

std::ptrdiff_t entriesIn(const std::filesystem::path& folder) {
    return std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator());
}

TEST(AtomicFile, AWrittenFileReadsBackWhole) {
    const TemporaryFolder folder;
    const std::string content("a\0b\n", 4);
    ASSERT_TRUE(writeFileAtomically(folder / "f", content));
    EXPECT_EQ(readWholeFile(folder / "f").value(), content);
    EXPECT_EQ(entriesIn(folder), 1);
}

TEST(AtomicFile, AWriteThatRunsOutOfDiskLeavesTheOldContentAndNothingElse) {
    const TemporaryFolder folder;
    folder.write("f", "old");
    {
        const test::SmallDisk disk(4096);
        const auto written = writeFileAtomically(folder / "f", std::string(100'000, 'x'));
        ASSERT_FALSE(written);
        EXPECT_EQ(written.error().domain, kPosixErrorDomain);
        EXPECT_EQ(written.error().code, EFBIG);
    }
    EXPECT_EQ(contentOf(folder / "f"), "old");
    EXPECT_EQ(entriesIn(folder), 1);
}

TEST(AtomicFile, AMissingFolderIsAnError) {
    const TemporaryFolder folder;
    EXPECT_EQ(writeFileAtomically(folder / "no" / "f", "x").error().code, ENOENT);
    EXPECT_EQ(readWholeFile(folder / "f").error().code, ENOENT);
}

TEST(AtomicFile, AReadOnlyFolderIsAnErrorAndTheOldContentStays) {
    const TemporaryFolder folder;
    folder.write("f", "old");
    const test::ReadOnlyFolder readOnly(folder);
    EXPECT_EQ(writeFileAtomically(folder / "f", "new").error().code, EACCES);
    EXPECT_EQ(keepDamagedFileAside(folder / "f").error().code, EACCES);
    EXPECT_EQ(readWholeFile(folder / "f").value(), "old");
}

TEST(AtomicFile, AFolderIsNotReadAsAFile) {
    const TemporaryFolder folder;
    EXPECT_EQ(readWholeFile(folder).error().code, EISDIR);
}

TEST(AtomicFile, ANameThatIsTakenIsNotReplaced) {
    const TemporaryFolder folder;
    const auto from = folder.write("from", "one");
    const auto to = folder.write("to", "another");
    EXPECT_EQ(renameWithoutReplacing(from, to).error().code, EEXIST);
    EXPECT_EQ(contentOf(from), "one");
    EXPECT_EQ(contentOf(to), "another");
    ASSERT_TRUE(renameWithoutReplacing(from, folder / "free"));
    EXPECT_EQ(contentOf(folder / "free"), "one");
    EXPECT_EQ(renameWithoutReplacing(from, folder / "free too").error().code, ENOENT);
}

TEST(AtomicFile, DamagedFilesGetTheNextFreeNumber) {
    const TemporaryFolder folder;
    for (const char* number : {"1", "2"}) {
        folder.write("f", number);
        EXPECT_EQ(keepDamagedFileAside(folder / "f").value(), folder / (std::string("f.damaged-") + number));
    }
    EXPECT_EQ(contentOf(folder / "f.damaged-1"), "1");
    EXPECT_EQ(keepDamagedFileAside(folder / "f").error().code, ENOENT);
}

} // namespace
} // namespace velmo
