#pragma once

#include "support/ManualQueue.h"

#include <functional>
#include <map>
#include <memory>
#include <string>

namespace velmo::test {

/// Makes manual queues by label, and finds them again as long as their owner keeps them.
class ManualQueues {
public:
    std::function<std::unique_ptr<SerialQueue>(std::string)> maker() {
        return [this](std::string label) {
            auto queue = std::make_unique<ManualQueue>(label);
            queues_[std::move(label)] = queue.get();
            return queue;
        };
    }

    ManualQueue& operator[](const std::string& label) { return *queues_.at(label); }
    bool has(const std::string& label) const { return queues_.contains(label); }
    std::size_t count() const { return queues_.size(); }

    /// Runs them in turn until none has anything left.
    void runAll() {
        for (bool ran = true; ran;) {
            ran = false;
            for (auto& [label, queue] : queues_) {
                ran = queue->run() > 0 || ran;
            }
        }
    }

private:
    std::map<std::string, ManualQueue*> queues_;
};

} // namespace velmo::test
