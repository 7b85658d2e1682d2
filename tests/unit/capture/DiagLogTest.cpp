#include "capture/DiagLog.h"

#include "support/TemporaryFolder.h"

#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <thread>
#include <vector>

namespace velmo {
namespace {

class DiagLogTest : public testing::Test {
protected:
    std::string contents() const {
        std::ifstream stream(path);
        std::ostringstream text;
        text << stream.rdbuf();
        return text.str();
    }

    static std::chrono::system_clock::time_point moment() {
        return std::chrono::system_clock::from_time_t(1794771109) + std::chrono::milliseconds(700);
    }

    test::TemporaryFolder folder;
    std::filesystem::path path = folder.path() / "logs" / "velmo-studio" / "app.log";
};

TEST_F(DiagLogTest, AnEntryIsTheTimeABlankAndTheText) {
    const DiagLog log(path, &moment);
    log.append("grabación: todo bien");
    EXPECT_EQ(contents(), "2026-11-15T19:31:49Z grabación: todo bien\n");
}

TEST_F(DiagLogTest, AMissingFileIsMadeOnlyWhenSomethingIsWritten) {
    const DiagLog log(path, &moment);
    EXPECT_TRUE(std::filesystem::is_directory(path.parent_path()));
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(DiagLogTest, EntriesAreAppendedInTheOrderOfTheCalls) {
    const DiagLog log(path, &moment);
    log.append("uno");
    log.append("dos");
    DiagLog(path, &moment).append("tres");
    EXPECT_EQ(contents(), "2026-11-15T19:31:49Z uno\n2026-11-15T19:31:49Z dos\n2026-11-15T19:31:49Z tres\n");
}

TEST_F(DiagLogTest, ATextWithLineFeedsIsWrittenAsItStands) {
    DiagLog(path, &moment).append("una\ndos\n");
    EXPECT_EQ(contents(), "2026-11-15T19:31:49Z una\ndos\n\n");
}

TEST_F(DiagLogTest, APlaceThatCannotBeWrittenIsSilent) {
    const std::filesystem::path file = folder.path() / "file";
    std::ofstream(file) << "no folder";
    const DiagLog log(file / "logs" / "app.log", &moment);
    log.append("perdido");
    EXPECT_FALSE(std::filesystem::exists(log.file()));
}

TEST_F(DiagLogTest, EntriesOfSeveralThreadsAreNeverMixed) {
    const DiagLog log(path, &moment);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&log, thread] {
            for (int i = 0; i < 100; ++i) {
                log.append(std::string(200, static_cast<char>('a' + thread)) + std::to_string(i));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::set<std::string> lines;
    std::istringstream stream(contents());
    for (std::string line; std::getline(stream, line);) {
        lines.insert(line);
    }
    EXPECT_EQ(lines.size(), 400u);
    for (int thread = 0; thread < 4; ++thread) {
        EXPECT_TRUE(lines.contains("2026-11-15T19:31:49Z " + std::string(200, static_cast<char>('a' + thread)) + "99"));
    }
}

} // namespace
} // namespace velmo
