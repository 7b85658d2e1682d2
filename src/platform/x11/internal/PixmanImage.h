#pragma once

#include <pixman.h>

#include <memory>

namespace velmo::x11 {

struct UnrefImage {
    void operator()(pixman_image_t* image) const { pixman_image_unref(image); }
};

/// A view of pixels for pixman; it does not own them.
using PixmanImage = std::unique_ptr<pixman_image_t, UnrefImage>;

} // namespace velmo::x11
