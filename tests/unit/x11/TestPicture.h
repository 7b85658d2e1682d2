#pragma once

#include "platform/x11/internal/Picture.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace velmo::x11 {

/// A picture that holds its own pixels, black and clear at first.
struct TestPicture {
    TestPicture(int width, int height, bool hasAlpha)
        : pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4),
          picture{pixels.data(), std::ptrdiff_t{4} * width, width, height, hasAlpha} {}
    std::vector<std::uint8_t> pixels;
    Picture picture;
};

} // namespace velmo::x11
