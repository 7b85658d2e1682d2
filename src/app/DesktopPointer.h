#pragma once

#include "session/Collaborators.h"

namespace velmo {

/// The mouse as the X server tells it at the moment of asking: one short exchange. Main thread.
class DesktopPointer final : public PointerPort {
public:
    Point location() const override;
    /// Windows that let the mouse through are not there. A few short exchanges.
    std::optional<WindowId> ownWindow() const override;
};

} // namespace velmo
