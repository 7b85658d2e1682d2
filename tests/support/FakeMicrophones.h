#pragma once

#include "platform/AudioInput.h"

#include <algorithm>
#include <cmath>
#include <list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace velmo::test {

/// Microphones that hear what the test says.
class FakeMicrophones final : public AudioInputService {
public:
    std::vector<AudioDevice> list{{"m", "M"}, {"n", "N"}};
    bool refuses = false;

    std::vector<AudioDevice> microphones() const override { return list; }
    std::optional<AudioDevice> defaultMicrophone() const override {
        return list.empty() ? std::nullopt : std::optional(list.front());
    }
    Result<std::unique_ptr<AudioInput>> openMicrophone(const std::string& uniqueID, SerialQueue& queue,
                                                       Handler handler) override {
        if (refuses) {
            return Error{"test", 1, "no"};
        }
        opened_.push_back({uniqueID, &queue, std::make_shared<Handler>(std::move(handler))});
        return std::unique_ptr<AudioInput>(std::make_unique<Input>(*this, std::prev(opened_.end())));
    }
    Result<std::unique_ptr<AudioInput>> openSystemAudio(SerialQueue&, Handler) override { return Error{}; }

    std::vector<std::string> running() const {
        std::vector<std::string> ids;
        for (const Run& run : opened_) {
            ids.push_back(run.id);
        }
        return ids;
    }
    /// 20 ms of even sound of so many dB on the first channel, to all that listen.
    void hear(double decibels) {
        Sample sample;
        sample.audio = AudioBuffer::create({}, 960);
        const auto floats = sample.audio->floats();
        for (std::size_t i = 0; i < floats.size(); ++i) {
            floats[i] = i % 2 == 0 ? static_cast<float>(std::pow(10, decibels / 20)) : 0.0F;
        }
        for (Run& run : opened_) {
            run.queue->async([handler = run.handler, sample] { (*handler)(sample); });
        }
    }

private:
    struct Run {
        std::string id;
        SerialQueue* queue;
        std::shared_ptr<Handler> handler;
    };
    class Input final : public AudioInput {
    public:
        Input(FakeMicrophones& service, std::list<Run>::iterator run) : service_(service), run_(run) {}
        ~Input() override { service_.opened_.erase(run_); }

    private:
        FakeMicrophones& service_;
        std::list<Run>::iterator run_;
    };

    std::list<Run> opened_;
};

} // namespace velmo::test
