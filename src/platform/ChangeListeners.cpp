#include "platform/ChangeListeners.h"

#include "platform/CallGate.h"

#include <algorithm>
#include <mutex>
#include <utility>
#include <vector>

namespace velmo {

namespace {

struct Listener {
    CallGate gate;
    std::function<void()> changed;
};

} // namespace

struct ChangeListeners::Core {
    std::mutex lock;
    std::vector<std::shared_ptr<Listener>> listeners; // protected by lock
};

ChangeListeners::ChangeListeners() : core_(std::make_shared<Core>()) {}

ChangeListeners::~ChangeListeners() = default;

std::shared_ptr<void> ChangeListeners::add(std::function<void()> changed) {
    auto listener = std::make_shared<Listener>();
    listener->changed = std::move(changed);
    {
        const std::lock_guard guard(core_->lock);
        core_->listeners.push_back(listener);
    }
    Listener* const self = listener.get();
    return {self, [core = core_, listener = std::move(listener)](void*) {
                {
                    const std::lock_guard guard(core->lock);
                    std::erase(core->listeners, listener);
                }
                listener->gate.closeAndWait();
            }};
}

void ChangeListeners::tell() {
    std::vector<std::shared_ptr<Listener>> listeners;
    {
        const std::lock_guard guard(core_->lock);
        listeners = core_->listeners;
    }
    for (const auto& listener : listeners) {
        if (listener->gate.enter()) {
            listener->changed();
            listener->gate.leave();
        }
    }
}

} // namespace velmo
