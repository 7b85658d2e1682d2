#include "capture/DiagLog.h"

#include "platform/LogFolder.h"

#include <array>
#include <ctime>
#include <fcntl.h>
#include <string>
#include <system_error>
#include <unistd.h>

namespace velmo {

namespace {

std::string iso8601(std::chrono::system_clock::time_point time) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
    std::tm utc{};
    gmtime_r(&seconds, &utc);
    std::array<char, 32> text{};
    const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &utc);
    return {text.data(), length};
}

} // namespace

DiagLog::DiagLog(std::filesystem::path file, WallClock now) : file_(std::move(file)), now_(std::move(now)) {
    std::error_code ignored;
    std::filesystem::create_directories(file_.parent_path(), ignored);
}

void DiagLog::append(std::string_view text) const {
    std::string line = iso8601(now_());
    line.append(" ").append(text).append("\n");
    const int file = open(file_.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
    if (file < 0) {
        return;
    }
    // One write to a file opened for appending is one piece, whoever else writes at the same time.
    [[maybe_unused]] const ssize_t written = ::write(file, line.data(), line.size());
    close(file);
}

const DiagLog& DiagLog::shared() {
    static const DiagLog log(logFolder() / "app.log");
    return log;
}

void DiagLog::write(std::string_view text) {
    shared().append(text);
}

} // namespace velmo
