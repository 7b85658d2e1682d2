#pragma once

#include "session/Collaborators.h"

namespace velmo {

/// The mouse as the X server tells it at the moment of asking: one short exchange. Main thread.
class DesktopPointer final : public PointerPort {
public:
    Point location() const override;
};

} // namespace velmo
