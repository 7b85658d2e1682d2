#include "platform/x11/internal/RootBackground.h"

#include <xcb/composite.h>
#include <xcb/xfixes.h>

#include <utility>

namespace velmo::x11 {
namespace {

/// What compositing managers paint where no wallpaper is announced.
constexpr std::uint32_t kGreyPixel = 0x808080;

} // namespace

void RootBackground::begin() {
    xcb_xfixes_select_selection_input(connection_.xcb(), connection_.root(), connection_.atoms().compositingManager,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
}

bool RootBackground::handle(const xcb_generic_event_t& event) {
    const int type = event.response_type & 0x7f;
    bool changed = type == connection_.events().fixes + XCB_XFIXES_SELECTION_NOTIFY;
    if (type == XCB_PROPERTY_NOTIFY) {
        const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        changed = property.window == connection_.root() && property.atom == connection_.atoms().rootPixmap;
    }
    stale_ |= changed;
    return changed;
}

void RootBackground::paint(pixman_image_t* canvas, const Region& region) {
    if (std::exchange(stale_, false)) {
        load();
    }
    static constexpr pixman_color_t kGrey{0x8080, 0x8080, 0x8080, 0xffff};
    region.forEach([&](const PixelRect& rect) {
        const PixelRect target = rect.translated(-frame_.x, -frame_.y);
        if (image_ != nullptr) {
            pixman_image_composite32(PIXMAN_OP_SRC, image_.get(), nullptr, canvas, rect.x - originX_, rect.y - originY_,
                                     0, 0, target.x, target.y, target.width, target.height);
        } else {
            const pixman_box32_t box{target.x, target.y, target.right(), target.bottom()};
            pixman_image_fill_boxes(PIXMAN_OP_SRC, canvas, &kGrey, 1, &box);
        }
    });
}

void RootBackground::load() {
    image_.reset();
    if (!loadAnnouncedPixmap() && !managerPaintsRoot()) {
        loadInherited();
    }
}

/// It then paints the root on a surface of its own, and windows inherit nothing from the root any more.
bool RootBackground::managerPaintsRoot() const {
    xcb_connection_t* xcb = connection_.xcb();
    const auto owner =
        take(xcb_get_selection_owner_reply, xcb, xcb_get_selection_owner(xcb, connection_.atoms().compositingManager));
    return owner && owner->owner != XCB_NONE;
}

bool RootBackground::loadAnnouncedPixmap() {
    xcb_connection_t* xcb = connection_.xcb();
    const auto property =
        take(xcb_get_property_reply, xcb,
             xcb_get_property(xcb, 0, connection_.root(), connection_.atoms().rootPixmap, XCB_ATOM_PIXMAP, 0, 1));
    if (!property || property->format != 32 || xcb_get_property_value_length(property.get()) < 4) {
        return false;
    }
    const auto pixmap = *static_cast<const xcb_pixmap_t*>(xcb_get_property_value(property.get()));
    const auto geometry = take(xcb_get_geometry_reply, xcb, xcb_get_geometry(xcb, pixmap));
    if (!geometry || geometry->depth != connection_.screen().root_depth) {
        return false;
    }
    originX_ = 0;
    originY_ = 0;
    return read(pixmap, {0, 0, geometry->width, geometry->height}, PIXMAN_REPEAT_NORMAL);
}

bool RootBackground::loadInherited() {
    xcb_connection_t* xcb = connection_.xcb();
    const xcb_window_t window = xcb_generate_id(xcb);
    const std::uint32_t values[] = {kGreyPixel, 1}; // where nothing can be inherited this stays
    xcb_create_window(xcb, XCB_COPY_FROM_PARENT, window, connection_.root(), static_cast<std::int16_t>(frame_.x),
                      static_cast<std::int16_t>(frame_.y), static_cast<std::uint16_t>(frame_.width),
                      static_cast<std::uint16_t>(frame_.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values);
    const std::uint32_t below = XCB_STACK_MODE_BELOW;
    xcb_configure_window(xcb, window, XCB_CONFIG_WINDOW_STACK_MODE, &below);
    xcb_composite_redirect_window(xcb, window, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
    xcb_map_window(xcb, window);
    const std::uint32_t inherit = XCB_BACK_PIXMAP_PARENT_RELATIVE;
    xcb_change_window_attributes(xcb, window, XCB_CW_BACK_PIXMAP, &inherit);
    xcb_clear_area(xcb, 0, window, 0, 0, 0, 0);
    const xcb_pixmap_t pixmap = xcb_generate_id(xcb);
    xcb_composite_name_window_pixmap(xcb, window, pixmap);
    originX_ = frame_.x;
    originY_ = frame_.y;
    const bool ok = read(pixmap, {0, 0, frame_.width, frame_.height}, PIXMAN_REPEAT_NONE);
    xcb_free_pixmap(xcb, pixmap);
    xcb_destroy_window(xcb, window);
    return ok;
}

bool RootBackground::read(xcb_pixmap_t pixmap, const PixelRect& size, pixman_repeat_t repeat) {
    pixels_ = SharedSegment::create(connection_, static_cast<std::size_t>(size.area()) * 4);
    if (pixels_ == nullptr) {
        return false;
    }
    PixelFetcher fetcher(connection_);
    fetcher.request(pixmap, size, *pixels_, 0);
    if (fetcher.collect().front() == 0) {
        return false;
    }
    image_.reset(pixman_image_create_bits_no_clear(PIXMAN_x8r8g8b8, size.width, size.height,
                                                   reinterpret_cast<std::uint32_t*>(pixels_->data()), size.width * 4));
    pixman_image_set_repeat(image_.get(), repeat);
    return true;
}

} // namespace velmo::x11
