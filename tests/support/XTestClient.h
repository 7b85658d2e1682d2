#pragma once

#include <xcb/shape.h>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace velmo::test {

struct XRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// An X client that makes windows for tests. Colours are 0xAARRGGBB, premultiplied; windows without alpha ignore the
/// upper byte. Its windows go with it.
class XTestClient {
public:
    struct WindowOptions {
        bool alpha = false;
        int border = 0;
        bool overrideRedirect = true;
        std::uint32_t color = 0xff808080;
    };

    explicit XTestClient(const std::string& display) {
        connection_ = xcb_connect(display.c_str(), nullptr);
        if (xcb_connection_has_error(connection_) != 0) {
            throw std::runtime_error("no connection to " + display);
        }
        screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
        findAlphaVisual();
    }
    ~XTestClient() { xcb_disconnect(connection_); }
    XTestClient(const XTestClient&) = delete;
    XTestClient& operator=(const XTestClient&) = delete;

    xcb_connection_t* xcb() const { return connection_; }
    xcb_window_t root() const { return screen_->root; }

    xcb_window_t create(const XRect& r, const WindowOptions& options, xcb_window_t parent = 0) {
        const xcb_window_t id = xcb_generate_id(connection_);
        const std::uint32_t values[] = {options.color, 0xffffffu, options.overrideRedirect ? 1u : 0u,
                                        options.alpha ? colormap_ : screen_->default_colormap};
        xcb_create_window(connection_, options.alpha ? 32 : 24, id, parent != 0 ? parent : root(), int16(r.x),
                          int16(r.y), uint16(r.width), uint16(r.height), uint16(options.border),
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, options.alpha ? alphaVisual_ : screen_->root_visual,
                          XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_COLORMAP, values);
        return id;
    }
    xcb_window_t show(const XRect& r, const WindowOptions& options) {
        const xcb_window_t id = create(r, options);
        map(id);
        return id;
    }
    void map(xcb_window_t w) { xcb_map_window(connection_, w); }
    void unmap(xcb_window_t w) { xcb_unmap_window(connection_, w); }
    void destroy(xcb_window_t w) { xcb_destroy_window(connection_, w); }
    void move(xcb_window_t w, int x, int y) {
        const std::uint32_t values[] = {static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y)};
        xcb_configure_window(connection_, w, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, values);
    }
    void resize(xcb_window_t w, int width, int height) {
        const std::uint32_t values[] = {static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height)};
        xcb_configure_window(connection_, w, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values);
    }
    void restack(xcb_window_t w, xcb_stack_mode_t mode, xcb_window_t sibling = 0) {
        const std::uint32_t values[] = {sibling, static_cast<std::uint32_t>(mode)};
        const bool hasSibling = sibling != 0;
        xcb_configure_window(connection_, w,
                             hasSibling ? XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE
                                        : XCB_CONFIG_WINDOW_STACK_MODE,
                             hasSibling ? values : values + 1);
    }
    void circulate(bool raiseLowest) {
        xcb_circulate_window(connection_, raiseLowest ? XCB_CIRCULATE_RAISE_LOWEST : XCB_CIRCULATE_LOWER_HIGHEST,
                             root());
    }
    void fill(xcb_drawable_t drawable, const XRect& r, std::uint32_t color) {
        const xcb_gcontext_t gc = xcb_generate_id(connection_);
        xcb_create_gc(connection_, gc, drawable, XCB_GC_FOREGROUND, &color);
        const xcb_rectangle_t rect{int16(r.x), int16(r.y), uint16(r.width), uint16(r.height)};
        xcb_poly_fill_rectangle(connection_, drawable, gc, 1, &rect);
        xcb_free_gc(connection_, gc);
    }
    void shape(xcb_window_t w, const std::vector<XRect>& rects) {
        std::vector<xcb_rectangle_t> list;
        for (const XRect& r : rects) {
            list.push_back({int16(r.x), int16(r.y), uint16(r.width), uint16(r.height)});
        }
        xcb_shape_rectangles(connection_, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, XCB_CLIP_ORDERING_UNSORTED, w, 0, 0,
                             static_cast<std::uint32_t>(list.size()), list.data());
    }
    void unshape(xcb_window_t w) {
        xcb_shape_mask(connection_, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, w, 0, 0, XCB_PIXMAP_NONE);
    }
    void setCardinal(xcb_window_t w, const char* property, std::uint32_t value, xcb_atom_t type = XCB_ATOM_CARDINAL) {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, w, atom(property), type, 32, 1, &value);
    }
    void setText(xcb_window_t w, const char* property, const std::string& text) {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, w, atom(property), atom("UTF8_STRING"), 8,
                            static_cast<std::uint32_t>(text.size()), text.data());
    }
    void setOpacity(xcb_window_t w, double opacity) {
        setCardinal(w, "_NET_WM_WINDOW_OPACITY", static_cast<std::uint32_t>(opacity * 0xffffffffu));
    }
    /// A root pixmap of one tile, announced as wallpaper programs do.
    xcb_pixmap_t setWallpaper(const XRect& size, std::uint32_t color, std::uint32_t stripe) {
        const xcb_pixmap_t pixmap = xcb_generate_id(connection_);
        xcb_create_pixmap(connection_, 24, pixmap, root(), uint16(size.width), uint16(size.height));
        fill(pixmap, {0, 0, size.width, size.height}, color);
        fill(pixmap, {0, 0, size.width / 2, size.height}, stripe);
        const std::uint32_t value = pixmap;
        xcb_change_window_attributes(connection_, root(), XCB_CW_BACK_PIXMAP, &value);
        xcb_clear_area(connection_, 0, root(), 0, 0, 0, 0);
        setCardinal(root(), "_XROOTPMAP_ID", pixmap, XCB_ATOM_PIXMAP);
        return pixmap;
    }
    void setRootColor(std::uint32_t color) {
        xcb_change_window_attributes(connection_, root(), XCB_CW_BACK_PIXEL, &color);
        xcb_clear_area(connection_, 0, root(), 0, 0, 0, 0);
    }
    /// With a real motion event, as a mouse makes it.
    void movePointer(int x, int y) {
        xcb_test_fake_input(connection_, XCB_MOTION_NOTIFY, 0, 0, root(), int16(x), int16(y), 0);
    }
    /// Without an event.
    void warpPointer(int x, int y) { xcb_warp_pointer(connection_, XCB_NONE, root(), 0, 0, 0, 0, int16(x), int16(y)); }
    /// A square pointer of one colour, its hot spot in the middle, for the whole screen.
    void setSquareCursor(int side, std::uint16_t red, std::uint16_t green, std::uint16_t blue) {
        const xcb_pixmap_t mask = xcb_generate_id(connection_);
        xcb_create_pixmap(connection_, 1, mask, root(), uint16(side), uint16(side));
        fill(mask, {0, 0, side, side}, 1);
        const xcb_cursor_t cursor = xcb_generate_id(connection_);
        xcb_create_cursor(connection_, cursor, mask, mask, red, green, blue, red, green, blue, uint16(side / 2),
                          uint16(side / 2));
        const std::uint32_t value = cursor;
        xcb_change_window_attributes(connection_, root(), XCB_CW_CURSOR, &value);
        xcb_free_pixmap(connection_, mask);
    }
    /// What the root shows, 0x00RRGGBB.
    std::vector<std::uint32_t> rootPixels(const XRect& r) {
        std::unique_ptr<xcb_get_image_reply_t, decltype(&std::free)> image(
            xcb_get_image_reply(connection_,
                                xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, root(), int16(r.x), int16(r.y),
                                              uint16(r.width), uint16(r.height), 0xffffff),
                                nullptr),
            &std::free);
        std::vector<std::uint32_t> pixels(static_cast<std::size_t>(r.width) * static_cast<std::size_t>(r.height));
        if (image != nullptr) {
            std::memcpy(pixels.data(), xcb_get_image_data(image.get()), pixels.size() * 4);
        }
        for (std::uint32_t& pixel : pixels) {
            pixel &= 0xffffff;
        }
        return pixels;
    }
    xcb_atom_t atom(const char* name) {
        std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
            xcb_intern_atom_reply(connection_,
                                  xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(std::strlen(name)), name),
                                  nullptr),
            &std::free);
        return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    }
    /// The window that has the keyboard.
    xcb_window_t focus() {
        const std::unique_ptr<xcb_get_input_focus_reply_t, decltype(&std::free)> reply(
            xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr), &std::free);
        return reply ? reply->focus : static_cast<xcb_window_t>(XCB_NONE);
    }
    /// Returns when the server has done all that was asked.
    void sync() { focus(); }

private:
    static std::int16_t int16(int value) { return static_cast<std::int16_t>(value); }
    static std::uint16_t uint16(int value) { return static_cast<std::uint16_t>(value); }

    void findAlphaVisual() {
        for (auto depth = xcb_screen_allowed_depths_iterator(screen_); depth.rem > 0; xcb_depth_next(&depth)) {
            if (depth.data->depth == 32) {
                alphaVisual_ = xcb_depth_visuals_iterator(depth.data).data->visual_id;
            }
        }
        colormap_ = xcb_generate_id(connection_);
        xcb_create_colormap(connection_, XCB_COLORMAP_ALLOC_NONE, colormap_, root(), alphaVisual_);
    }

    xcb_connection_t* connection_ = nullptr;
    xcb_screen_t* screen_ = nullptr;
    xcb_visualid_t alphaVisual_ = 0;
    xcb_colormap_t colormap_ = 0;
};

} // namespace velmo::test
