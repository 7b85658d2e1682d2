#pragma once

#include "platform/PointerMotion.h"
#include "session/Collaborators.h"

#include <utility>

namespace velmo::test {

/// A mouse that a test moves, and that counts how often it is looked at.
class FakePointer final : public PointerPort, public PointerMotion {
public:
    Point location() const override {
        ++looks;
        return at;
    }
    Watch callOnce(std::function<void()> moved) override {
        if (!canWatch) {
            return Watch::impossible;
        }
        moved_ = std::move(moved);
        return Watch::armed;
    }
    void cancel() override { moved_ = {}; }

    void moveTo(Point place) {
        at = place;
        if (const auto moved = std::exchange(moved_, {})) {
            moved();
        }
    }
    bool isWatched() const { return static_cast<bool>(moved_); }

    Point at;
    bool canWatch = true;
    mutable int looks = 0;

private:
    std::function<void()> moved_;
};

} // namespace velmo::test
