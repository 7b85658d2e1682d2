#pragma once

#include "platform/ScreenCapture.h"

#include <functional>
#include <memory>
#include <optional>

namespace velmo {

/// Small pictures of a display as it would be without this program's windows, but with the whiteboard. Any thread, one
/// call at a time. Filter and size are made at the first shot and kept for the next ones.
class ScreenSnapshot : public std::enable_shared_from_this<ScreenSnapshot> {
public:
    struct Subject {
        DisplayId displayID = 0;
        std::optional<WindowId> board; ///< the whiteboard's window
        int processID = 0;             ///< this program
    };
    /// BGRA, 640 pixels wide, without the pointer; null when the picture could not be taken.
    using Completion = std::function<void(FrameRef)>;

    /// `service` is borrowed and must outlive all shots that are under way.
    static std::shared_ptr<ScreenSnapshot> create(ScreenCaptureService& service, const Subject& subject);

    /// Returns at once; `completion` is called once, on any thread.
    void capture(Completion completion);

private:
    struct Shot {
        ContentFilter filter;
        StreamConfiguration configuration;
    };
    ScreenSnapshot(ScreenCaptureService& service, const Subject& subject) : service_(service), subject_(subject) {}
    void refresh(std::function<void()> done);
    std::optional<Shot> shotOf(const ShareableContent& content) const;
    void shoot(Completion completion);

    ScreenCaptureService& service_;
    Subject subject_;
    std::optional<Shot> shot_;
};

} // namespace velmo
