#pragma once

#include "base/Geometry.h"
#include "base/Result.h"
#include "platform/ScreenCapture.h"
#include "settings/RecordMode.h"
#include "settings/VideoQuality.h"

#include <functional>
#include <map>
#include <optional>

namespace velmo {

/// Keys of the windows that are captured by themselves.
inline constexpr int kBubbleKey = 0;
inline constexpr int kSecondBubbleKey = 1;
inline constexpr int kPhoneKey = 2;

/// This program's windows that can be part of the video.
struct OwnWindows {
    std::optional<WindowId> bubble;
    std::optional<WindowId> secondBubble;
    std::optional<WindowId> phone;
    std::optional<WindowId> drawing;
    std::optional<WindowId> board;
    std::optional<WindowId> presenter;
};

/// What to capture, and how big.
struct CapturePlan {
    ContentFilter filter;
    Size size;                                   ///< pixels, even
    std::map<int, CaptureWindow> overlayWindows; ///< by overlay key
};

/// What decides about a plan, beside the windows.
struct CaptureWish {
    RecordMode mode = RecordMode::screen;
    DisplayId displayID = 0; ///< of the target screen
    VideoQuality quality = VideoQuality::retina;
    int processID = 0; ///< this process
};

using PixelScale = std::function<double(const ContentFilter&)>;

/// In `cam` the bubble's window alone; else the display without this program, but for those of its windows that
/// belong into the picture. The bubbles and the phone are overlays where `content` lists them, else exceptions.
/// Fails when the window, or any display, is missing. A pure function of its arguments.
Result<CapturePlan> planCapture(const CaptureWish& wish, const OwnWindows& own, const ShareableContent& content,
                                const PixelScale& pointPixelScale);

/// Each side truncated, then brought towards zero to an even number.
Size even(Size size);

} // namespace velmo
