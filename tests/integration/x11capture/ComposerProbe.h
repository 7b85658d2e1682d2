#pragma once

#include "platform/x11/internal/WindowComposer.h"
#include "platform/x11/internal/XConnection.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace velmo::test {

/// A composer on a connection of its own, brought up to date when asked.
class ComposerProbe {
public:
    ComposerProbe(const std::string& display, const x11::PixelRect& frame, x11::Exclusion exclusion = {})
        : connection_(std::move(x11::XConnection::open(display)).value()),
          composer_(std::make_unique<x11::WindowComposer>(*connection_, frame, std::move(exclusion))) {
        EXPECT_TRUE(composer_->begin().ok());
        update();
    }
    ComposerProbe(const std::string& display, xcb_window_t window)
        : connection_(std::move(x11::XConnection::open(display)).value()),
          composer_(std::make_unique<x11::WindowComposer>(*connection_, window)) {
        EXPECT_TRUE(composer_->begin().ok());
        update();
    }

    /// Handles all that the server has told so far. True when the picture may be another one.
    bool handleEvents() {
        roundTrip();
        bool mayDiffer = false;
        while (const x11::XReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_->xcb())}) {
            mayDiffer |= composer_->handle(*event);
        }
        return mayDiffer;
    }
    x11::Region compose() { return composer_->compose(); }
    /// Handles events, then composes; again while something could not be read.
    x11::Region update() {
        x11::Region painted;
        for (int round = 0; round < 5; ++round) {
            handleEvents();
            painted.add(composer_->compose());
            if (!composer_->hasUnread()) {
                break;
            }
        }
        return painted;
    }

    const x11::Picture& picture() const { return composer_->picture(); }
    /// 0xAARRGGBB, or 0x00RRGGBB where the picture has no alpha.
    std::vector<std::uint32_t> pixels() const {
        const x11::Picture& p = composer_->picture();
        std::vector<std::uint32_t> result(static_cast<std::size_t>(p.width) * static_cast<std::size_t>(p.height));
        std::memcpy(result.data(), p.data, result.size() * 4);
        for (std::uint32_t& pixel : result) {
            pixel &= p.hasAlpha ? 0xffffffff : 0xffffff;
        }
        return result;
    }
    std::uint32_t at(int x, int y) const {
        return pixels()[static_cast<std::size_t>(y) * static_cast<std::size_t>(picture().width) +
                        static_cast<std::size_t>(x)];
    }

private:
    void roundTrip() {
        x11::take(xcb_get_input_focus_reply, connection_->xcb(), xcb_get_input_focus(connection_->xcb()));
    }

    std::unique_ptr<x11::XConnection> connection_;
    std::unique_ptr<x11::WindowComposer> composer_;
};

/// How many pixels differ, for a message that can be read.
inline long differences(const std::vector<std::uint32_t>& a, const std::vector<std::uint32_t>& b) {
    if (a.size() != b.size()) {
        return -1;
    }
    long count = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        count += a[i] != b[i];
    }
    return count;
}

} // namespace velmo::test
