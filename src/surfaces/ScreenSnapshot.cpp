#include "surfaces/ScreenSnapshot.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmo {
namespace {

constexpr int kWidth = 640;

} // namespace

std::shared_ptr<ScreenSnapshot> ScreenSnapshot::create(ScreenCaptureService& service, const Subject& subject) {
    return std::shared_ptr<ScreenSnapshot>(new ScreenSnapshot(service, subject));
}

void ScreenSnapshot::capture(Completion completion) {
    if (shot_) {
        shoot(std::move(completion));
        return;
    }
    refresh([self = shared_from_this(), completion = std::move(completion)] {
        if (self->shot_) {
            self->shoot(completion);
        } else {
            completion({});
        }
    });
}

void ScreenSnapshot::refresh(std::function<void()> done) {
    service_.queryShareableContent(
        [self = shared_from_this(), done = std::move(done)](Result<ShareableContent> content) {
            if (content) {
                self->shot_ = self->shotOf(content.value());
            }
            done();
        });
}

std::optional<ScreenSnapshot::Shot> ScreenSnapshot::shotOf(const ShareableContent& content) const {
    const auto& displays = content.displays;
    auto display = std::find_if(displays.begin(), displays.end(),
                                [this](const CaptureDisplay& each) { return each.displayID == subject_.displayID; });
    if (display == displays.end()) {
        display = displays.begin();
    }
    if (display == displays.end() || display->width < 1) {
        return std::nullopt;
    }
    // A board that is put away now may come up later.
    std::vector<WindowId> excepted;
    if (subject_.board) {
        excepted.push_back(*subject_.board);
    }
    Shot shot;
    shot.filter = ContentFilter::display(display->displayID, {subject_.processID}, std::move(excepted));
    shot.configuration.width = kWidth;
    shot.configuration.height = std::max(1, kWidth * display->height / display->width);
    shot.configuration.pixelFormat = PixelFormat::bgra;
    shot.configuration.showsCursor = false;
    return shot;
}

void ScreenSnapshot::shoot(Completion completion) {
    service_.captureImage(shot_->filter, shot_->configuration,
                          [self = shared_from_this(), completion = std::move(completion)](Result<FrameRef> picture) {
                              if (!picture) {
                                  self->shot_.reset(); // the display may be another one by now
                              }
                              completion(picture ? std::move(picture).value() : FrameRef());
                          });
}

} // namespace velmo
