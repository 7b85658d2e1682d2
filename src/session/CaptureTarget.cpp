#include "session/CaptureTarget.h"

#include "capture/RecorderError.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <utility>

namespace velmo {
namespace {

const CaptureWindow* findWindow(const ShareableContent& content, std::optional<WindowId> id) {
    const auto found = std::find_if(content.windows.begin(), content.windows.end(),
                                    [&](const CaptureWindow& window) { return id && window.windowID == *id; });
    return found == content.windows.end() ? nullptr : &*found;
}

Result<CapturePlan> planCamera(const OwnWindows& own, const ShareableContent& content, const PixelScale& scale) {
    const CaptureWindow* const window = findWindow(content, own.bubble);
    if (window == nullptr) {
        return RecorderError::noSource("No se encontró la ventana de la cámara.");
    }
    CapturePlan plan;
    plan.filter = ContentFilter::window(window->windowID);
    const double pixels = scale(plan.filter);
    plan.size = even({window->frame.width * pixels, window->frame.height * pixels});
    return plan;
}

const CaptureDisplay* findDisplay(const ShareableContent& content, DisplayId id) {
    const auto found = std::find_if(content.displays.begin(), content.displays.end(),
                                    [&](const CaptureDisplay& display) { return display.displayID == id; });
    if (found != content.displays.end()) {
        return &*found;
    }
    return content.displays.empty() ? nullptr : &content.displays.front();
}

/// The windows that stay in the main picture. Fills `overlays` with those that are taken out of it.
std::set<WindowId> windowsInPicture(const OwnWindows& own, const ShareableContent& content,
                                    std::map<int, CaptureWindow>& overlays) {
    std::set<WindowId> inPicture;
    for (const std::optional<WindowId> id : {own.drawing, own.board, own.presenter}) {
        if (id) {
            inPicture.insert(*id);
        }
    }
    const std::array<std::pair<int, std::optional<WindowId>>, 3> candidates{
        {{kBubbleKey, own.bubble}, {kSecondBubbleKey, own.secondBubble}, {kPhoneKey, own.phone}}};
    for (const auto& [key, id] : candidates) {
        if (const CaptureWindow* const window = findWindow(content, id)) {
            overlays.emplace(key, *window);
        } else if (id) {
            inPicture.insert(*id);
        }
    }
    return inPicture;
}

} // namespace

Result<CapturePlan> planCapture(const CaptureWish& wish, const OwnWindows& own, const ShareableContent& content,
                                const PixelScale& pointPixelScale) {
    if (!usesScreen(wish.mode)) {
        return planCamera(own, content, pointPixelScale);
    }
    const CaptureDisplay* const display = findDisplay(content, wish.displayID);
    if (display == nullptr) {
        return RecorderError::noSource("No se encontró la pantalla.");
    }
    CapturePlan plan;
    const std::set<WindowId> inPicture = windowsInPicture(own, content, plan.overlayWindows);
    std::vector<WindowId> excepted;
    for (const CaptureWindow& window : content.windows) {
        if (window.owningProcessID == wish.processID && inPicture.contains(window.windowID)) {
            excepted.push_back(window.windowID);
        }
    }
    // This process is excluded also while it shows no window: those that it opens later stay out as well.
    plan.filter = ContentFilter::display(display->displayID, {wish.processID}, std::move(excepted));
    const Size points{double(display->width), double(display->height)};
    const VideoSize video = velmo::size(wish.quality, points, pointPixelScale(plan.filter));
    plan.size = even({double(video.width), double(video.height)});
    return plan;
}

Size even(Size size) {
    const auto towardsZero = [](double side) { return std::trunc(side / 2) * 2; };
    return {towardsZero(size.width), towardsZero(size.height)};
}

} // namespace velmo
