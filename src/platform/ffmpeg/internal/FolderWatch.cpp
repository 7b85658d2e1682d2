#include "platform/ffmpeg/internal/FolderWatch.h"

#include <array>
#include <cstdint>
#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <unistd.h>
#include <utility>

namespace velmo::internal {

namespace {

constexpr std::uint32_t kChanges = IN_CREATE | IN_DELETE | IN_ATTRIB | IN_MOVED_TO | IN_MOVED_FROM;
constexpr int kQuiet = 250; // ms; nodes, rights and lasting names come one after the other
constexpr int kForEver = -1;

} // namespace

FolderWatch::FolderWatch(std::filesystem::path folder, std::vector<std::filesystem::path> parts,
                         std::function<void()> look)
    : folder_(std::move(folder)), parts_(std::move(parts)), look_(std::move(look)),
      news_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)), end_(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)),
      thread_([this] { run(); }) {}

FolderWatch::~FolderWatch() {
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(end_.number(), &one, sizeof one);
    thread_.join();
}

void FolderWatch::run() {
    pthread_setname_np(pthread_self(), "velmo.devices");
    do {
        watchAll();
        look_();
        if (!waitForNews(kForEver)) {
            return;
        }
    } while (waitForNews(kQuiet));
}

/// Again after each piece of news: a folder that has come is watched from then on.
void FolderWatch::watchAll() {
    ::inotify_add_watch(news_.number(), folder_.c_str(), kChanges);
    for (const auto& part : parts_) {
        ::inotify_add_watch(news_.number(), (folder_ / part).c_str(), kChanges);
    }
}

/// Returns when there is news, with a limit when all has been quiet that long. False when it is time to end.
bool FolderWatch::waitForNews(int milliseconds) {
    std::array<pollfd, 2> files{{{news_.number(), POLLIN, 0}, {end_.number(), POLLIN, 0}}};
    while (::poll(files.data(), files.size(), milliseconds) != 0) {
        if ((files[1].revents & POLLIN) != 0) {
            return false;
        }
        if ((files[0].revents & POLLIN) == 0) {
            continue; // interrupted
        }
        alignas(inotify_event) std::array<char, 4096> events;
        while (::read(news_.number(), events.data(), events.size()) > 0) {
        }
        if (milliseconds == kForEver) {
            return true;
        }
    }
    return true;
}

} // namespace velmo::internal
