#pragma once

#include "platform/InputMonitors.h"

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

namespace velmo::test {

/// Monitors whose mouse and touchpad are the test. Must outlive the tokens.
class FakeMonitors final : public InputMonitors {
public:
    Token addMouseButtons(std::function<void(double)> moved) override { return add(buttons_, std::move(moved)); }
    Token addLeftMouseDown(std::function<void()> pressed) override { return add(lefts_, std::move(pressed)); }
    Token addScrollAndMagnify(std::function<void(const InputGesture&)> made) override {
        return add(gestures_, std::move(made));
    }

    void moveButton(double time) { tell(buttons_, time); }
    void pressLeft() { tell(lefts_); }
    void make(const InputGesture& gesture) { tell(gestures_, gesture); }
    void pinch(double magnification) { make({InputGesture::Type::magnify, kOptionModifier, magnification, 0, false}); }
    void scroll(double delta, bool precise) {
        make({InputGesture::Type::scrollWheel, kOptionModifier, 0, delta, precise});
    }
    std::size_t installed() const { return buttons_.size() + lefts_.size() + gestures_.size(); }

    bool areRefused = false;

private:
    template <typename Handler>
    using Installed = std::vector<std::pair<int, Handler>>;

    template <typename Handler>
    struct Monitor final : InputMonitor {
        Monitor(Installed<Handler>& in, int number) : list(in), id(number) {}
        ~Monitor() override {
            std::erase_if(list, [this](const auto& each) { return each.first == id; });
        }
        Installed<Handler>& list;
        int id;
    };

    template <typename Handler>
    Token add(Installed<Handler>& list, Handler handler) {
        if (areRefused) {
            return nullptr;
        }
        list.emplace_back(++last_, std::move(handler));
        return std::make_unique<Monitor<Handler>>(list, last_);
    }
    template <typename Handler, typename... Values>
    static void tell(const Installed<Handler>& list, const Values&... values) {
        for (const auto& each : list) {
            each.second(values...);
        }
    }

    int last_ = 0;
    Installed<std::function<void(double)>> buttons_;
    Installed<std::function<void()>> lefts_;
    Installed<std::function<void(const InputGesture&)>> gestures_;
};

} // namespace velmo::test
