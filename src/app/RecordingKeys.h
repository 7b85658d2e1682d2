#pragma once

#include "app/HotKeys.h"
#include "session/RecorderController.h"

#include <vector>

namespace velmo {

/// The one key that is always there: starts and ends a recording.
inline constexpr std::uint32_t kToggleKeyID = 1;
inline constexpr int kToggleKeyCode = 5; // ⌃G

/// The keys of a running recording, in the order in which they are registered. `recorder` is borrowed and must
/// outlive them.
std::vector<HotKeys::RecordingKey> recordingKeys(RecorderController& recorder);

} // namespace velmo
