#pragma once

#include "support/XTestClient.h"

#include <QImage>

#include <algorithm>

namespace velmo::test {

/// Puts a picture of the root's size behind all windows, as wallpaper programs do.
inline void setWallpaper(XTestClient& client, const QImage& picture) {
    const QImage image = picture.convertToFormat(QImage::Format_RGB32);
    const XRect size{0, 0, image.width(), image.height()};
    const xcb_pixmap_t pixmap = client.setWallpaper(size, 0, 0);
    const xcb_gcontext_t gc = xcb_generate_id(client.xcb());
    xcb_create_gc(client.xcb(), gc, pixmap, 0, nullptr);
    constexpr int kRows = 16; // stays below what a server takes in one request
    for (int y = 0; y < image.height(); y += kRows) {
        const int rows = std::min(kRows, image.height() - y);
        xcb_put_image(client.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, gc, static_cast<std::uint16_t>(image.width()),
                      static_cast<std::uint16_t>(rows), 0, static_cast<std::int16_t>(y), 0, 24,
                      static_cast<std::uint32_t>(rows * image.bytesPerLine()), image.constScanLine(y));
    }
    xcb_free_gc(client.xcb(), gc);
    xcb_clear_area(client.xcb(), 0, client.root(), 0, 0, 0, 0);
    client.setCardinal(client.root(), "_XROOTPMAP_ID", pixmap, XCB_ATOM_PIXMAP); // said again: now it is painted
    client.sync();
}

} // namespace velmo::test
