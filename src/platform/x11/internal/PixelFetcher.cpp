#include "platform/x11/internal/PixelFetcher.h"

#include <cstring>

namespace velmo::x11 {
namespace {

constexpr std::uint32_t kAllPlanes = 0xffffffff;

} // namespace

void PixelFetcher::request(xcb_drawable_t drawable, const PixelRect& rect, const SharedSegment& target,
                           std::size_t offset) {
    const auto x = static_cast<std::int16_t>(rect.x);
    const auto y = static_cast<std::int16_t>(rect.y);
    const auto width = static_cast<std::uint16_t>(rect.width);
    const auto height = static_cast<std::uint16_t>(rect.height);
    Pending pending{&target, offset, static_cast<std::size_t>(rect.area()) * 4, 0};
    if (target.id() != 0) {
        pending.sequence = xcb_shm_get_image(connection_.xcb(), drawable, x, y, width, height, kAllPlanes,
                                             XCB_IMAGE_FORMAT_Z_PIXMAP, target.id(), static_cast<std::uint32_t>(offset))
                               .sequence;
    } else {
        pending.sequence =
            xcb_get_image(connection_.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, x, y, width, height, kAllPlanes)
                .sequence;
    }
    pending_.push_back(pending);
}

const std::vector<char>& PixelFetcher::collect() {
    arrived_.clear();
    for (const Pending& each : pending_) {
        if (each.target->id() != 0) {
            const xcb_shm_get_image_cookie_t cookie{each.sequence};
            arrived_.push_back(take(xcb_shm_get_image_reply, connection_.xcb(), cookie) != nullptr);
        } else {
            arrived_.push_back(copyReply(each));
        }
    }
    pending_.clear();
    return arrived_;
}

bool PixelFetcher::copyReply(const Pending& pending) const {
    const xcb_get_image_cookie_t cookie{pending.sequence};
    const auto reply = take(xcb_get_image_reply, connection_.xcb(), cookie);
    if (!reply || static_cast<std::size_t>(xcb_get_image_data_length(reply.get())) < pending.bytes) {
        return false;
    }
    std::memcpy(pending.target->data() + pending.offset, xcb_get_image_data(reply.get()), pending.bytes);
    return true;
}

} // namespace velmo::x11
