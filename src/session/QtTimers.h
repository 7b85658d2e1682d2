#pragma once

#include "session/MainTimers.h"

namespace velmo {

/// The timers of Qt's event loop.
class QtTimers final : public MainTimers {
public:
    std::unique_ptr<MainTimer> repeat(double seconds, std::function<void()> tick) override;
    void after(double seconds, std::function<void()> call) override;
};

} // namespace velmo
