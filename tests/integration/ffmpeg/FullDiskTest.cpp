#include "Material.h"
#include "Probe.h"

#include "media/RecordingJournal.h"
#include "media/RecordingRepair.h"
#include "platform/ffmpeg/FfmpegAssetWriterFactory.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <fstream>
#include <functional>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace velmo {
namespace {

using namespace test;

constexpr rlim_t kLimit = 12 << 20;

/// What came of recording until the writer said that it can take no more.
struct Outcome {
    bool interrupted = false;
    bool statusStayedWriting = false;
    bool inputClosed = false;
    WriterStatus status = WriterStatus::unknown;
    Error reason;
    Error told; ///< by a writer that failed
};

/// Writes noise, with sound, until the writer ends it by itself or `limit` pictures are in.
Outcome recordUntilInterrupted(const std::filesystem::path& path, std::int64_t minimumFree, int limit,
                               const std::function<void()>& beforeFinish = {}) {
    Outcome outcome;
    std::atomic<bool> interrupted{false};
    FfmpegWriterOptions options;
    options.minimumFreeBytes = minimumFree;
    FfmpegAssetWriterFactory factory(options);
    const std::unique_ptr<AssetWriter> writer = factory.makeWriter(path).value();
    AssetWriterInput* video = writer->addVideoInput({1280, 720, 40'000'000, 30, 60});
    AssetWriterInput* audio = writer->addAudioInput({});
    writer->setOnInterruption([&](const Error& reason) {
        outcome.reason = reason;
        interrupted = true;
    });
    if (!writer->startWriting()) {
        return outcome;
    }
    writer->startSession(MediaTime::zero());
    BeepingSource sound(0, {0.5});
    const FrameRef noise[] = {noisyPicture(1280, 720, 1), noisyPicture(1280, 720, 2)};
    for (int i = 0; i < limit && !interrupted; ++i) {
        while (!video->isReadyForMoreMediaData() && !interrupted) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        video->append(pictureSample(noise[i % 2], MediaTime(i, 30)));
        while (sound.time() < i / 30.0) {
            audio->append(sound.next());
        }
    }
    for (int i = 0; i < 10000 && !interrupted; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    outcome.interrupted = interrupted;
    outcome.statusStayedWriting = writer->status() == WriterStatus::writing;
    outcome.inputClosed = !video->isReadyForMoreMediaData() && !audio->isReadyForMoreMediaData();
    if (beforeFinish) {
        beforeFinish();
    }
    finish(*writer);
    outcome.status = writer->status();
    outcome.told = writer->error().value_or(Error());
    return outcome;
}

void expectKept(const Outcome& outcome, const std::string& words) {
    EXPECT_TRUE(outcome.interrupted);
    EXPECT_EQ(outcome.reason.text, words);
    EXPECT_TRUE(outcome.statusStayedWriting);
    EXPECT_TRUE(outcome.inputClosed);
    EXPECT_EQ(outcome.status, WriterStatus::completed);
}

void expectPlayable(const std::filesystem::path& file) {
    const auto found = streams(file);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_GT(packets(file, "v:0").size(), 3U);
    EXPECT_EQ(complaints(file), "");
}

/// Runs `work` in a process of its own that sees a disk of `bytes` at `place`; false where the system forbids that.
bool onSmallDisk(const std::filesystem::path& place, int bytes, const std::function<bool()>& work) {
    constexpr int kForbidden = 77;
    const pid_t child = fork();
    if (child == 0) {
        const std::string size = "size=" + std::to_string(bytes);
        if ((unshare(CLONE_NEWNS) != 0 && unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) ||
            mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount("none", place.c_str(), "tmpfs", 0, size.c_str()) != 0) {
            _exit(kForbidden);
        }
        _exit(work() ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == kForbidden) {
        return false;
    }
    EXPECT_EQ(WEXITSTATUS(status), 0);
    return true;
}

TEST(FullDisk, IsToldAtTheStartAndLeavesNoFile) {
    const TemporaryFolder folder;
    FfmpegWriterOptions options;
    options.minimumFreeBytes = std::int64_t{1} << 60;
    FfmpegAssetWriterFactory factory(options);
    const auto writer = factory.makeWriter(folder / "a.mp4").value();
    writer->addVideoInput({320, 180, 1'000'000, 30, 60});
    const Result<void> started = writer->startWriting();
    ASSERT_FALSE(started);
    EXPECT_EQ(started.error().text, "El disco está lleno.");
    EXPECT_FALSE(std::filesystem::exists(folder / "a.mp4"));
}

class DiskThatRunsOut : public testing::TestWithParam<std::int64_t> {};

TEST_P(DiskThatRunsOut, EndsTheRecordingAndKeepsIt) {
    constexpr int kDisk = 20 << 20;
    const TemporaryFolder folder;
    const auto disk = folder / "disk";
    std::filesystem::create_directory(disk);
    const bool ran = onSmallDisk(disk, kDisk, [&] {
        const Outcome outcome = recordUntilInterrupted(disk / "a.mp4", GetParam(), 2000);
        std::filesystem::copy_file(disk / "a.mp4", folder / "a.mp4");
        return outcome.interrupted && outcome.statusStayedWriting && outcome.inputClosed &&
               outcome.reason.text == "El disco está lleno." && outcome.status == WriterStatus::completed;
    });
    if (!ran) {
        // No small disk to be had: the same by asking for nearly all that is free to stay free.
        const auto free = static_cast<std::int64_t>(std::filesystem::space(folder.path()).available);
        expectKept(recordUntilInterrupted(folder / "a.mp4", free - kDisk / 2, 2000), "El disco está lleno.");
    }
    expectPlayable(folder / "a.mp4");
}

// With a margin, and to the last byte.
INSTANTIATE_TEST_SUITE_P(Margin, DiskThatRunsOut, testing::Values(8 << 20, 0));

TEST(DiskThatFails, EndsTheRecordingAndKeepsIt) {
    const TemporaryFolder folder;
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto ignored = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{kLimit, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    // The trouble is gone when the file is closed, as with a cable that was pulled and put back.
    const Outcome outcome =
        recordUntilInterrupted(folder / "a.mp4", 0, 2000, [&] { setrlimit(RLIMIT_FSIZE, &before); });
    std::signal(SIGXFSZ, ignored);
    expectKept(outcome, "El archivo es demasiado grande para este disco.");
    expectPlayable(folder / "a.mp4");
}

TEST(DiskThatFails, BeforeTheFirstPictureLeavesNothingAndSaysWhy) {
    const TemporaryFolder folder;
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto ignored = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{2000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const Outcome outcome =
        recordUntilInterrupted(folder / "a.mp4", 0, 2000, [&] { setrlimit(RLIMIT_FSIZE, &before); });
    std::signal(SIGXFSZ, ignored);
    EXPECT_TRUE(outcome.interrupted);
    EXPECT_EQ(outcome.status, WriterStatus::failed);
    EXPECT_EQ(outcome.told.text, "El archivo es demasiado grande para este disco.");
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

/// As when the disk goes away for good: not even the index has room.
Outcome recordToADiskThatStaysFull(const std::filesystem::path& path) {
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto ignored = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{kLimit, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const Outcome outcome = recordUntilInterrupted(path, 0, 2000, [&] {
        const rlimit less{kLimit / 2, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &less);
    });
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, ignored);
    return outcome;
}

TEST(DiskThatFails, AndStaysSoMakesTheWriterFailWithWordsAndKeepsTheRecordingForRepair) {
    const TemporaryFolder folder;
    const Outcome outcome = recordToADiskThatStaysFull(folder / "a.mp4");
    EXPECT_TRUE(outcome.interrupted);
    EXPECT_EQ(outcome.status, WriterStatus::failed);
    EXPECT_EQ(outcome.told.text,
              "El archivo es demasiado grande para este disco. Lo grabado se conserva y se intentará "
              "recuperar al volver a abrir Velmo Studio.");
    EXPECT_FALSE(std::filesystem::exists(folder / "a.mp4")) << "not to be seen until it is repaired";

    const auto repaired = repairRecording(journalOf(folder / "a.mp4"));
    ASSERT_TRUE(repaired.ok() && repaired.value());
    EXPECT_EQ(repaired.value()->video, folder / "a.mp4");
    expectPlayable(folder / "a.mp4");
}

TEST(DiskThatFails, LeavesWhatWasPutAsideBeforeAndKeepsTheRecordingUnderItsName) {
    const TemporaryFolder folder;
    const auto aside = asideOf(folder / "a.mp4");
    std::ofstream(aside) << "another class";
    const Outcome outcome = recordToADiskThatStaysFull(folder / "a.mp4");
    EXPECT_EQ(outcome.status, WriterStatus::failed);
    EXPECT_EQ(std::filesystem::file_size(aside), std::string("another class").size());

    const auto repaired = repairRecording(journalOf(folder / "a.mp4"));
    ASSERT_TRUE(repaired.ok() && repaired.value());
    EXPECT_EQ(repaired.value()->video, folder / "a.mp4");
    expectPlayable(folder / "a.mp4");
}

} // namespace
} // namespace velmo
