#pragma once

#include "platform/CameraCapture.h"
#include "platform/ChangeListeners.h"

#include <algorithm>
#include <list>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace velmo::test {

/// Cameras that do what the test says. Pictures and ends go to the stream's queue, as real ones do.
class FakeCameraService final : public CameraService {
public:
    std::vector<CameraDevice> list{{"a", "A"}, {"b", "B"}};
    std::set<std::string> refusing; ///< cannot be opened
    std::vector<std::string> calls; ///< "open a", "close a", also attempts that were refused

    std::vector<CameraDevice> cameras() const override { return list; }
    std::optional<CameraDevice> defaultCamera() const override {
        return list.empty() ? std::nullopt : std::optional(list.front());
    }
    Result<std::unique_ptr<CameraStream>> open(const std::string& uniqueID, SerialQueue& queue,
                                               CameraHandlers handlers) override {
        calls.push_back("open " + uniqueID);
        if (refusing.contains(uniqueID)) {
            return Error{kErrorDomain, kErrorBusy, "ocupada"};
        }
        running_.push_back({uniqueID, &queue, std::make_shared<CameraHandlers>(std::move(handlers))});
        return std::unique_ptr<CameraStream>(std::make_unique<Stream>(*this, std::prev(running_.end())));
    }
    std::shared_ptr<void> watchDevices(std::function<void()> changed) override {
        return listeners_.add(std::move(changed));
    }

    std::vector<std::string> running() const {
        std::vector<std::string> ids;
        for (const Run& run : running_) {
            ids.push_back(run.id);
        }
        return ids;
    }
    std::vector<std::string> takenCalls() { return std::exchange(calls, {}); }
    /// From the latest stream of that camera.
    void deliver(const std::string& id, FrameRef picture) {
        Sample sample;
        sample.image = std::move(picture);
        Run& run = find(id);
        run.queue->async([handlers = run.handlers, sample] { handlers->picture(sample); });
    }
    void end(const std::string& id) {
        Run& run = find(id);
        run.queue->async([handlers = run.handlers] { handlers->ended({kErrorDomain, kErrorEnded, "fin"}); });
    }
    void plug() { listeners_.tell(); }

private:
    struct Run {
        std::string id;
        SerialQueue* queue;
        std::shared_ptr<CameraHandlers> handlers;
    };
    class Stream final : public CameraStream {
    public:
        Stream(FakeCameraService& service, std::list<Run>::iterator run) : service_(service), run_(run) {}
        ~Stream() override {
            service_.calls.push_back("close " + run_->id);
            service_.running_.erase(run_);
        }

    private:
        FakeCameraService& service_;
        std::list<Run>::iterator run_;
    };

    Run& find(const std::string& id) {
        return *std::find_if(running_.begin(), running_.end(), [&id](const Run& run) { return run.id == id; });
    }

    std::list<Run> running_;
    ChangeListeners listeners_;
};

} // namespace velmo::test
