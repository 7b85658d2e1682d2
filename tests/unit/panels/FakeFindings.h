#pragma once

#include "panels/welcome/DeviceFindings.h"

#include <utility>
#include <vector>

namespace velmo::test {

/// Knows what the test says; a look ends when the test says so.
struct FakeFindings final : DeviceFindings {
    DeviceFinding finding(Media media) const override { return media == Media::video ? video : audio; }
    void look(std::function<void()> found) override {
        ++looks;
        pending.push_back(std::move(found));
    }
    void conclude() {
        for (const auto& each : std::exchange(pending, {})) {
            each();
        }
    }

    DeviceFinding video = DeviceFinding::unknown;
    DeviceFinding audio = DeviceFinding::unknown;
    int looks = 0;
    std::vector<std::function<void()>> pending;
};

} // namespace velmo::test
