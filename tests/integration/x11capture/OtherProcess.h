#pragma once

#include "support/XTestClient.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>

namespace velmo::test {

/// A process with windows of its own, which the test can tell from itself by process id.
class OtherProcess {
public:
    OtherProcess(const std::string& display, const XRect& rect, std::uint32_t color) {
        if (pipe(toChild_) != 0 || pipe(fromChild_) != 0) {
            throw std::runtime_error("no pipe");
        }
        pid_ = fork();
        if (pid_ == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            close(toChild_[1]); // so that the end of the test is seen
            live(display, rect, color);
        }
        close(toChild_[0]);
        read(window_);
    }
    ~OtherProcess() {
        close(toChild_[1]);
        close(fromChild_[0]);
        close(fromChild_[1]);
        waitpid(pid_, nullptr, 0);
    }
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;

    int pid() const { return pid_; }
    xcb_window_t window() const { return window_; }
    /// Opens a window over the whole screen.
    void openAnother() {
        if (write(toChild_[1], "w", 1) == 1) {
            xcb_window_t another = 0;
            read(another);
        }
    }

private:
    void read(xcb_window_t& value) const {
        if (::read(fromChild_[0], &value, sizeof value) != sizeof value) {
            throw std::runtime_error("the other process has gone");
        }
    }
    void report(xcb_window_t window) const {
        if (write(fromChild_[1], &window, sizeof window) != sizeof window) {
            _exit(1);
        }
    }
    [[noreturn]] void live(const std::string& display, const XRect& rect, std::uint32_t color) const {
        XTestClient client(display);
        const xcb_window_t window = client.show(rect, {.color = color});
        client.sync();
        report(window);
        char c = 0;
        while (::read(toChild_[0], &c, 1) == 1) {
            const xcb_window_t another = client.show({0, 0, 4000, 4000}, {.color = 0xffff00ff});
            client.sync();
            report(another);
        }
        _exit(0);
    }

    int toChild_[2] = {-1, -1};
    int fromChild_[2] = {-1, -1};
    pid_t pid_ = -1;
    xcb_window_t window_ = 0;
};

} // namespace velmo::test
