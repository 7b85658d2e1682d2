#pragma once

class QImage;

namespace velmo::Blur {

/// Three passes of a running mean of 2 * `radius` + 1 pixels in both directions, which together come close to a bell
/// of that width. What lies outside the picture counts as clear. `alpha` is of Format_Alpha8.
void boxes(QImage& alpha, int radius);
/// How many pixels away from a dot such a blur is still seen.
constexpr int reach(int radius) {
    return 3 * radius;
}

} // namespace velmo::Blur
