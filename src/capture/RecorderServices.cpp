#include "capture/RecorderServices.h"

#include <chrono>
#include <thread>

namespace velmo {

std::unique_ptr<SerialQueue> RecorderServices::threadQueue(std::string label) {
    return std::make_unique<ThreadQueue>(std::move(label));
}

void RecorderServices::sleepNow(double seconds) {
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

} // namespace velmo
