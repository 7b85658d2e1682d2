#include "platform/x11/internal/Nv12Convert.h"

#include "media/BgraToNv12.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace velmo::x11 {

void convertToNv12(const Picture& from, const PixelBuffer& to, const PixelRect& rect) {
    convertBgraToNv12({from.data, from.stride, from.width, from.height}, to,
                      {rect.x, rect.y, rect.width, rect.height});
}

void copyToBgra(const Picture& from, const PixelBuffer& to, const PixelRect& rect) {
    const PlaneView plane = to.plane(0);
    for (int y = rect.y; y < rect.bottom(); ++y) {
        std::uint8_t* target = plane.row(y) + std::ptrdiff_t{4} * rect.x;
        std::memcpy(target, from.at(rect.x, y), static_cast<std::size_t>(rect.width) * 4);
        for (int x = 0; !from.hasAlpha && x < rect.width; ++x) {
            target[4 * x + 3] = 255;
        }
    }
}

} // namespace velmo::x11
