#include "platform/x11/internal/CursorLayer.h"

#include <xcb/xinput.h>

#include <cstring>
#include <utility>

namespace velmo::x11 {
namespace {

/// 255 a * b rounded, for 8-bit values.
constexpr std::uint32_t timesFraction(std::uint32_t a, std::uint32_t b) {
    const std::uint32_t product = a * b + 128;
    return (product + (product >> 8)) >> 8;
}

constexpr std::uint32_t over(std::uint32_t top, std::uint32_t bottom) {
    const std::uint32_t rest = 255 - (top >> 24);
    std::uint32_t result = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const std::uint32_t sum = ((top >> shift) & 0xff) + timesFraction((bottom >> shift) & 0xff, rest);
        result |= (sum > 255 ? 255 : sum) << shift;
    }
    return result;
}

} // namespace

void CursorLayer::begin() {
    xcb_connection_t* xcb = connection_.xcb();
    xcb_xfixes_select_cursor_input(xcb, connection_.root(), XCB_XFIXES_CURSOR_NOTIFY_MASK_DISPLAY_CURSOR);
    if (connection_.inputOpcode()) {
        struct {
            xcb_input_event_mask_t head{XCB_INPUT_DEVICE_ALL_MASTER, 1};
            std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_RAW_MOTION;
        } selection;
        xcb_input_xi_select_events(xcb, connection_.root(), 1, &selection.head);
    }
}

bool CursorLayer::handle(const xcb_generic_event_t& event) {
    const std::uint8_t type = event.response_type & 0x7f;
    if (type == XCB_GE_GENERIC) {
        const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
        return connection_.inputOpcode() == generic.extension && generic.event_type == XCB_INPUT_RAW_MOTION;
    }
    const bool changed = type == connection_.events().fixes + XCB_XFIXES_CURSOR_NOTIFY;
    imageStale_ |= changed;
    return changed;
}

Region CursorLayer::update() {
    const PixelRect before = rect();
    const bool imageChanged = std::exchange(imageStale_, false);
    const auto pointerCookie = xcb_query_pointer(connection_.xcb(), connection_.root());
    if (imageChanged) {
        loadImage();
    }
    const auto pointer = take(xcb_query_pointer_reply, connection_.xcb(), pointerCookie);
    onThisScreen_ = pointer && pointer->same_screen != 0;
    if (onThisScreen_) {
        x_ = pointer->root_x;
        y_ = pointer->root_y;
    }
    Region changed;
    if (imageChanged || before != rect()) {
        changed.add(before);
        changed.add(rect());
    }
    return changed;
}

void CursorLayer::loadImage() {
    const auto reply =
        take(xcb_xfixes_get_cursor_image_reply, connection_.xcb(), xcb_xfixes_get_cursor_image(connection_.xcb()));
    image_.clear();
    width_ = reply ? reply->width : 0;
    height_ = reply ? reply->height : 0;
    if (reply) {
        const std::uint32_t* pixels = xcb_xfixes_get_cursor_image_cursor_image(reply.get());
        image_.assign(pixels, pixels + static_cast<std::ptrdiff_t>(width_) * height_);
        hotX_ = reply->xhot;
        hotY_ = reply->yhot;
    }
}

PixelRect CursorLayer::rect() const {
    return onThisScreen_ ? PixelRect{x_ - hotX_, y_ - hotY_, width_, height_} : PixelRect{};
}

void CursorLayer::draw(const Picture& picture, int originX, int originY) {
    const PixelRect place = rect().translated(-originX, -originY);
    drawn_ = place.intersected({0, 0, picture.width, picture.height});
    covered_.resize(static_cast<std::size_t>(drawn_.area()));
    std::uint32_t* saved = covered_.data();
    for (int y = drawn_.y; y < drawn_.bottom(); ++y, saved += drawn_.width) {
        auto* row = reinterpret_cast<std::uint32_t*>(picture.at(drawn_.x, y));
        const std::uint32_t* top =
            image_.data() + static_cast<std::ptrdiff_t>(y - place.y) * width_ + drawn_.x - place.x;
        std::memcpy(saved, row, static_cast<std::size_t>(drawn_.width) * 4);
        for (int x = 0; x < drawn_.width; ++x) {
            row[x] = over(top[x], row[x]);
        }
    }
}

void CursorLayer::restore(const Picture& picture) {
    const std::uint32_t* saved = covered_.data();
    for (int y = drawn_.y; y < drawn_.bottom(); ++y, saved += drawn_.width) {
        std::memcpy(picture.at(drawn_.x, y), saved, static_cast<std::size_t>(drawn_.width) * 4);
    }
    drawn_ = {};
}

} // namespace velmo::x11
