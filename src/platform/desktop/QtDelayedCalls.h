#pragma once

#include "platform/DelayedCalls.h"

namespace velmo {

/// Calls from Qt's event loop. Main thread.
class QtDelayedCalls final : public DelayedCalls {
public:
    void after(double seconds, std::function<void()> call) override;
};

} // namespace velmo
