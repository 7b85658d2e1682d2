#include "capture/DisplayWatch.h"

#include <vector>

namespace velmo {

namespace {

constexpr double kMergeSeconds = 0.6;

} // namespace

struct DisplayWatch::State : std::enable_shared_from_this<DisplayWatch::State> {
    State(DisplayReconfiguration& theDisplays, DelayedCalls& theCalls)
        : displays(theDisplays), delayedCalls(theCalls) {}

    void reconfigured(std::uint32_t flags) {
        const bool isOnlyTheBeginning = (flags & kDisplayBeginConfiguration) != 0;
        if (isOnlyTheBeginning || changePending) {
            return;
        }
        changePending = true;
        delayedCalls.after(kMergeSeconds, [weak = weak_from_this()] {
            if (const auto self = weak.lock()) {
                self->announce();
            }
        });
    }

    void announce() {
        changePending = false;
        std::erase_if(observers, [](const auto& each) { return each.expired(); });
        const auto present = observers; // an observer may add or end observations
        for (const auto& weak : present) {
            if (const auto observer = weak.lock()) {
                (*observer)();
            }
        }
    }

    DisplayReconfiguration& displays;
    DelayedCalls& delayedCalls;
    bool started = false;
    bool changePending = false;
    std::vector<std::weak_ptr<std::function<void()>>> observers;
};

DisplayWatch::DisplayWatch(DisplayReconfiguration& displays, DelayedCalls& delayedCalls)
    : state_(std::make_shared<State>(displays, delayedCalls)) {}

DisplayWatch::~DisplayWatch() = default;

void DisplayWatch::start() {
    if (state_->started) {
        return;
    }
    state_->started = true;
    state_->displays.registerCallback([weak = std::weak_ptr(state_)](std::uint32_t, std::uint32_t flags) {
        if (const auto state = weak.lock()) {
            state->reconfigured(flags);
        }
    });
}

DisplayWatch::Observation DisplayWatch::observe(std::function<void()> changed) {
    auto observer = std::make_shared<std::function<void()>>(std::move(changed));
    state_->observers.push_back(observer);
    return observer;
}

} // namespace velmo
