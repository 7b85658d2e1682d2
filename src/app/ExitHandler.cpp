#include "app/ExitHandler.h"

#include "app/RecordingRescue.h"

#include <QThread>

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace velmo {
namespace {

constexpr std::chrono::seconds kLimit{30};

// An exit handler has no other way to reach its object.
RecordingRescue* armed = nullptr;

void finishBeforeExit() {
    RecordingRescue* rescue = std::exchange(armed, nullptr);
    if (rescue == nullptr || rescue->thread() != QThread::currentThread()) {
        return;
    }
    rescue->leaveNow(kLimit);
    std::fflush(nullptr);
    ::_exit(EXIT_FAILURE);
}

} // namespace

ExitHandler::ExitHandler(RecordingRescue& rescue) {
    armed = &rescue;
    renew();
}

ExitHandler::~ExitHandler() {
    armed = nullptr;
}

/// Exit handlers and destructors of static objects run in the reverse order of their coming; each further one of these
/// finds the object disarmed.
void ExitHandler::renew() {
    std::atexit(&finishBeforeExit);
}

} // namespace velmo
