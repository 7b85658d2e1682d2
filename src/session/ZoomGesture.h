#pragma once

#include "platform/InputMonitors.h"

#include <optional>

namespace velmo {

/// By what a gesture multiplies the level of the zoom. Absent for one that is none of the zoom's business: without
/// the Option key, so that ordinary scrolling and pinching stay with the program under the pointer, or without a
/// vertical movement.
std::optional<double> zoomFactor(const InputGesture& gesture);

} // namespace velmo
