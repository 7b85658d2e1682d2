#include "app/SignalWatcher.h"

#include <QSocketNotifier>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace velmo {
namespace {

constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP};

// A handler has no other way to reach its object.
int pipeEnds[2] = {-1, -1};

extern "C" void passOn(int) {
    const int kept = errno;
    const char byte = 1;
    [[maybe_unused]] const auto written = ::write(pipeEnds[1], &byte, 1); // a full pipe is news enough
    errno = kept;
}

} // namespace

SignalWatcher::SignalWatcher() {
    if (::pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0) {
        return; // the signals keep their default effect
    }
    notifier_ = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, &SignalWatcher::read);
    for (const int number : kSignals) {
        struct sigaction action {};
        action.sa_handler = &passOn;
        action.sa_flags = SA_RESTART;
        ::sigaction(number, &action, nullptr);
    }
}

SignalWatcher::~SignalWatcher() {
    for (const int number : kSignals) {
        std::signal(number, SIG_DFL);
    }
    delete notifier_;
    for (int& end : pipeEnds) {
        ::close(end);
        end = -1;
    }
}

void SignalWatcher::read() {
    char bytes[16];
    while (::read(pipeEnds[0], bytes, sizeof bytes) > 0) {
    }
    emit terminationRequested();
}

} // namespace velmo
