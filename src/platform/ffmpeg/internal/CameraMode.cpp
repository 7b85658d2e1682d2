#include "platform/ffmpeg/internal/CameraMode.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <tuple>

namespace velmo::internal {

namespace {

constexpr double kRate = 30;
constexpr double kFluid = 24; // below this a mouth no longer fits its words
constexpr int kLines = 720;
constexpr int kMostLines = 1080;

double wide(const CameraMode& mode) {
    return std::abs(static_cast<double>(mode.width) / mode.height - 16.0 / 9);
}

/// The smaller, the better.
auto cost(const CameraMode& mode) {
    const double rate = mode.rate >= kFluid ? std::abs(mode.rate - kRate) : 0;
    const double slow = mode.rate < kFluid ? kFluid - mode.rate : 0;
    const int size = mode.height > kMostLines ? 2 : mode.height < kLines ? 1 : 0;
    const auto format = std::distance(std::begin(kCameraFormats),
                                      std::find(std::begin(kCameraFormats), std::end(kCameraFormats), mode.format));
    return std::tuple(slow, size, std::abs(mode.height - kLines), wide(mode) > 0.1, rate, format);
}

} // namespace

std::optional<CameraMode> bestMode(const std::vector<CameraMode>& modes) {
    const auto best = std::min_element(modes.begin(), modes.end(),
                                       [](const CameraMode& a, const CameraMode& b) { return cost(a) < cost(b); });
    return best == modes.end() ? std::nullopt : std::optional(*best);
}

} // namespace velmo::internal
