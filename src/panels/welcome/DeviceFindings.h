#pragma once

#include "platform/DeviceFinding.h"
#include "session/Collaborators.h"

#include <functional>

namespace velmo {

/// Tries the devices and remembers what came of it. Main thread.
class DeviceFindings {
public:
    using Media = DevicePermissions::Media;

    virtual ~DeviceFindings() = default;
    /// What is known now.
    virtual DeviceFinding finding(Media media) const = 0;
    /// Tries all again. `found` is called once, from the event loop, when everything is known.
    virtual void look(std::function<void()> found) = 0;
};

} // namespace velmo
