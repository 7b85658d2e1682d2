#pragma once

#include "session/SessionServices.h"

namespace velmo {

/// The program as the desktop sees it. Main thread.
class DesktopApplication final : public ApplicationPort {
public:
    /// Raises those of the program's windows that are up, and asks for the keyboard.
    void toFront() override;
    /// The desktop's own settings, where one is known.
    void openScreenCaptureSettings() override;
};

} // namespace velmo
