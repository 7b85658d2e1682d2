#pragma once

#include "support/ChildProcess.h"

#include <fcntl.h>
#include <unistd.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace velmo::test {

/// An Xvfb of a test's own, on a free display number.
class XTestServer {
public:
    explicit XTestServer(const std::string& screen = "1280x720x24", const std::vector<std::string>& options = {}) {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) {
            throw std::runtime_error("no pipe");
        }
        const int passed = fcntl(ends[1], F_DUPFD, 10); // a copy that survives exec
        std::vector<std::string> command{
            "Xvfb", "-displayfd", std::to_string(passed), "-screen", "0", screen, "-nolisten",
            "tcp",  "-noreset",   "+extension",           "RANDR"};
        command.insert(command.end(), options.begin(), options.end());
        process_ = std::make_unique<ChildProcess>(command, "", passed);
        close(passed);
        close(ends[1]);
        std::string number;
        char c = 0;
        while (read(ends[0], &c, 1) == 1 && c != '\n') {
            number.push_back(c);
        }
        close(ends[0]);
        if (number.empty()) {
            throw std::runtime_error("Xvfb did not start");
        }
        display_ = ":" + number;
    }

    const std::string& display() const { return display_; }
    pid_t pid() const { return process_->pid(); }
    void kill() { process_->end(SIGKILL); }

private:
    std::unique_ptr<ChildProcess> process_;
    std::string display_;
};

} // namespace velmo::test
