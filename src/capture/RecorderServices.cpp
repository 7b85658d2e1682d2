#include "capture/RecorderServices.h"

#include <chrono>
#include <thread>

namespace velmo {

void RecorderServices::sleepNow(double seconds) {
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

} // namespace velmo
