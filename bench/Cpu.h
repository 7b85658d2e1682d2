#pragma once

#include <QByteArray>

#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>

namespace velmo {

/// Seconds of CPU that this process has taken.
inline double ownCpu() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// Seconds of CPU that the X server of the private desktop has taken.
inline double serverCpu() {
    std::ifstream file("/proc/" + qgetenv("DESK_XSERVER_PID").toStdString() + "/stat");
    std::string text;
    std::getline(file, text);
    std::size_t at = text.rfind(')') + 1;
    for (int field = 0; field < 12; ++field) {
        at = text.find(' ', at + 1);
    }
    char* end = nullptr;
    const double user = std::strtod(text.c_str() + at, &end);
    return (user + std::strtod(end, nullptr)) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

} // namespace velmo
