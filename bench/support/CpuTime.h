#pragma once

#include <QEventLoop>
#include <QTimer>

#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>

/// How much CPU a bench on a private desktop has used, in seconds.
namespace velmo::bench {

/// Of this process.
inline double ownCpu() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// Of the X server of the private desktop.
inline double serverCpu() {
    std::ifstream file("/proc/" + qEnvironmentVariable("DESK_XSERVER_PID").toStdString() + "/stat");
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

/// Runs the event loop.
inline void pass(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace velmo::bench
