#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace velmo::x11 {

struct FreeReply {
    void operator()(void* memory) const { std::free(memory); }
};

/// What XCB hands out with malloc: replies, events, errors.
template <typename T>
using XReply = std::unique_ptr<T, FreeReply>;

/// The reply to `cookie`, or null when the server refused: windows may go at any moment, so a refusal is no news.
template <typename Reply, typename Cookie>
XReply<Reply> take(Reply* (*function)(xcb_connection_t*, Cookie, xcb_generic_error_t**), xcb_connection_t* connection,
                   Cookie cookie) {
    xcb_generic_error_t* error = nullptr;
    XReply<Reply> reply(function(connection, cookie, &error));
    std::free(error);
    return reply;
}

} // namespace velmo::x11
