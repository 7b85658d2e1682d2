#include "platform/x11/X11ScreenCapture.h"

#include "platform/x11/internal/ContentQuery.h"
#include "platform/x11/internal/DisplayLayout.h"
#include "platform/x11/internal/StillPicture.h"
#include "platform/x11/internal/WindowOwners.h"
#include "platform/x11/internal/X11CaptureStream.h"

#include <utility>

namespace velmo {

X11ScreenCapture::X11ScreenCapture(std::optional<std::string> displayName, AudioInputService* audio, const Clock& clock)
    : displayName_(std::move(displayName)), audio_(audio), clock_(clock),
      queryQueue_(std::make_unique<ThreadQueue>("velmo.x11.query")) {}

X11ScreenCapture::~X11ScreenCapture() = default;

void X11ScreenCapture::queryShareableContent(ContentCompletion completion) {
    queryQueue_->async([this, completion = std::move(completion)] {
        const auto connection = x11::XConnection::open(displayName_);
        completion(connection ? Result<ShareableContent>(x11::queryContent(*connection.value()))
                              : Result<ShareableContent>(connection.error()));
    });
}

double X11ScreenCapture::pointPixelScale(const ContentFilter& /*filter*/) const {
    return x11::pointPixelScale();
}

Result<std::unique_ptr<CaptureStream>> X11ScreenCapture::makeStream(const ContentFilter& filter,
                                                                    const StreamConfiguration& configuration,
                                                                    StreamDelegate* delegate) {
    auto opened = x11::XConnection::open(displayName_);
    if (!opened) {
        return opened.error();
    }
    std::unique_ptr<x11::XConnection> connection = std::move(opened).value();
    if (auto source = x11::CaptureSource::create(*connection, filter); !source) {
        return source.error();
    }
    return std::unique_ptr<CaptureStream>(std::make_unique<x11::X11CaptureStream>(
        std::move(connection), displayName_, filter, configuration, delegate, audio_, clock_));
}

void X11ScreenCapture::captureImage(const ContentFilter& filter, const StreamConfiguration& configuration,
                                    ImageCompletion completion) {
    queryQueue_->async([this,
                        wish = std::make_unique<std::pair<ContentFilter, StreamConfiguration>>(filter, configuration),
                        completion = std::move(completion)] {
        const auto connection = x11::XConnection::open(displayName_);
        completion(connection ? x11::stillPicture(*connection.value(), wish->first, wish->second)
                              : Result<FrameRef>(connection.error()));
    });
}

bool X11ScreenCapture::preflightAccess() const {
    return true;
}

bool X11ScreenCapture::requestAccess() {
    return true;
}

} // namespace velmo
