#pragma once

#include <string_view>

namespace velmo {

/// Seconds between the light and the time that a camera's driver writes on its picture: the correction of one model,
/// taken off each of its pictures' times. This is the one place for such corrections; docs/camera.md tells how to
/// measure one. 0 for a model that nobody has measured.
double cameraLatency(std::string_view uniqueID);

} // namespace velmo
