#pragma once

#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace velmo::test {

/// A program of a test. It ends with the object, and with the test program however that ends.
class ChildProcess {
public:
    /// `display` goes into its DISPLAY when not empty; what it writes is thrown away; `keepFile` stays open in it.
    ChildProcess(std::vector<std::string> command, const std::string& display, int keepFile = -1) {
        std::vector<char*> arguments;
        for (std::string& each : command) {
            arguments.push_back(each.data());
        }
        arguments.push_back(nullptr);
        pid_ = fork();
        if (pid_ == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            if (!display.empty()) {
                setenv("DISPLAY", display.c_str(), 1);
            }
            [[maybe_unused]] FILE* out = freopen("/dev/null", "w", stdout);
            [[maybe_unused]] FILE* err = freopen("/dev/null", "w", stderr);
            for (int file = 3; file < 256; ++file) {
                if (file != keepFile) {
                    close(file);
                }
            }
            execvp(arguments[0], arguments.data());
            _exit(127);
        }
    }
    ~ChildProcess() { end(SIGTERM); }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    pid_t pid() const { return pid_; }
    /// Ends it and waits until it is gone.
    void end(int signal) {
        if (pid_ > 0) {
            kill(pid_, signal);
            waitpid(pid_, nullptr, 0);
            pid_ = -1;
        }
    }

private:
    pid_t pid_ = -1;
};

} // namespace velmo::test
