#include "compositor/ZoomProcessor.h"

#include "compositor/PointerBubble.h"
#include "compositor/internal/FrameRenderer.h"

#include <algorithm>
#include <utility>

namespace velmo {

namespace {

// What is smaller than these cannot be seen.
constexpr double kLiveScale = 1.002;

constexpr std::size_t kUsualOverlays = 8;

double clampedLevel(double level) {
    return std::max(ZoomControls::kLowestLevel, std::min(ZoomControls::kHighestLevel, level));
}

} // namespace

ZoomProcessor::ZoomProcessor(const Clock& clock, PoolMaker makePool)
    : clock_(clock), renderer_(std::make_unique<internal::FrameRenderer>(makePool)) {
    overlays_.reserve(kUsualOverlays);
    shownBubbles_.reserve(kMostBubbles);
}

ZoomProcessor::~ZoomProcessor() = default;

void ZoomProcessor::configure(Rect screenFrame) {
    const std::lock_guard guard(lock_);
    screenFrame_ = screenFrame;
}

void ZoomProcessor::setEnabled(bool enabled) {
    const std::lock_guard guard(lock_);
    if (enabled && !controls_.enabled) {
        controls_.anchor = controls_.mouse;
    }
    controls_.enabled = enabled;
}

void ZoomProcessor::setLevel(double level) {
    const std::lock_guard guard(lock_);
    controls_.level = clampedLevel(level);
}

void ZoomProcessor::setFollow(bool follow) {
    const std::lock_guard guard(lock_);
    if (!follow && controls_.follow) {
        controls_.anchor = controls_.mouse;
    }
    controls_.follow = follow;
}

void ZoomProcessor::focus(Point center, double level) {
    const std::lock_guard guard(lock_);
    controls_.anchor = center;
    controls_.follow = false;
    controls_.level = clampedLevel(level);
    controls_.enabled = true;
}

void ZoomProcessor::setRegion(std::optional<Rect> region) {
    const std::lock_guard guard(lock_);
    controls_.region = region;
}

void ZoomProcessor::setSpotlight(bool on) {
    const std::lock_guard guard(lock_);
    controls_.spotlight = on;
}

void ZoomProcessor::setColumn(bool on, bool left) {
    const std::lock_guard guard(lock_);
    controls_.columnOn = on;
    columnLeft_ = left;
}

// The setters below exchange: what they replace is destroyed with the argument, when the lock is free again.

void ZoomProcessor::setCameraFrame(FrameRef frame) {
    const std::lock_guard guard(lock_);
    std::swap(cameraFrame_, frame);
}

void ZoomProcessor::setPaused(bool paused) {
    const std::lock_guard guard(lock_);
    paused_ = paused;
}

void ZoomProcessor::setNameTag(std::optional<NameTagText> tag) {
    auto shared = tag ? std::make_shared<const NameTagText>(std::move(*tag)) : nullptr;
    const std::lock_guard guard(lock_);
    nameTag_.swap(shared);
}

void ZoomProcessor::setOverlay(int key, FrameRef frame) {
    const std::lock_guard guard(lock_);
    const auto entry =
        std::find_if(overlays_.begin(), overlays_.end(), [key](const Overlay& o) { return o.key == key; });
    if (entry == overlays_.end()) {
        overlays_.push_back({key, std::move(frame)});
    } else {
        std::swap(entry->frame, frame);
    }
}

void ZoomProcessor::showBubble(double at, std::vector<Color> colors) {
    auto shared = std::make_shared<const std::vector<Color>>(std::move(colors));
    const std::lock_guard guard(lock_);
    bubbleStart_ = at;
    bubbleColors_.swap(shared);
}

void ZoomProcessor::update(Point mouse, std::vector<BubbleInfo> bubbles) {
    const std::lock_guard guard(lock_);
    if (!screenFrame_.isEmpty()) {
        controls_.mouse = {(mouse.x - screenFrame_.minX()) / screenFrame_.width,
                           (mouse.y - screenFrame_.minY()) / screenFrame_.height};
    }
    bubbles_.swap(bubbles);
}

bool ZoomProcessor::isPaused() const {
    const std::lock_guard guard(lock_);
    return paused_;
}

bool ZoomProcessor::isEnabled() const {
    const std::lock_guard guard(lock_);
    return controls_.enabled;
}

ZoomControls ZoomProcessor::controls() const {
    const std::lock_guard guard(lock_);
    return controls_;
}

void ZoomProcessor::setScale(double scale) {
    const internal::SerialUse::Scope use(videoQueue_);
    motion_.setScale(scale);
    scale_.store(scale, std::memory_order_relaxed);
}

void ZoomProcessor::stepTo(double seconds) {
    const internal::SerialUse::Scope use(videoQueue_);
    motion_.step(controls(), seconds);
    scale_.store(motion_.scale(), std::memory_order_relaxed);
}

bool ZoomProcessor::needsProcessing() const {
    const internal::SerialUse::Scope use(videoQueue_);
    const ZoomControls asked = controls();
    return asked.enabled || asked.region || asked.spotlight || asked.columnOn || livePointerFigure() ||
           pictureIsChanged();
}

bool ZoomProcessor::isAnimating() const {
    const internal::SerialUse::Scope use(videoQueue_);
    const ZoomControls asked = controls();
    return livePointerFigure() || asked.columnOn || motion_.colT() > internal::Column::kLeastSlide || hasOverlays() ||
           motion_.isMoving(asked);
}

std::optional<Sample> ZoomProcessor::render(const FrameRef& source, MediaTime time, MediaTime duration) {
    const internal::SerialUse::Scope use(videoQueue_);
    internal::FrameContents contents{
        {motion_.center(), motion_.scale()}, {motion_.spot(), motion_.spotAlpha()}, livePointerFigure()};
    if (!source || (!contents.pointerFigure && !pictureIsChanged())) {
        return std::nullopt;
    }
    contents.screen = copyBubbles();
    contents.bubbles = shownBubbles_;
    contents.column = liveColumn();
    FrameRef rendered = renderer_->render(*source, contents);
    shownBubbles_.clear();
    return sample(rendered, time, duration);
}

std::optional<Sample> ZoomProcessor::sample(const FrameRef& from, MediaTime time, MediaTime duration) {
    if (!from) {
        return std::nullopt;
    }
    Sample made;
    made.timing = {duration, time, MediaTime::invalid()};
    made.image = from;
    return made;
}

std::optional<internal::PointerFigure> ZoomProcessor::livePointerFigure() const {
    std::optional<double> start;
    internal::PointerFigure figure;
    {
        const std::lock_guard guard(lock_);
        start = bubbleStart_;
        figure.colors = bubbleColors_;
    }
    if (!start) {
        return std::nullopt;
    }
    figure.at = motion_.ringPos();
    figure.age = clock_.now().seconds() - *start;
    return PointerBubble::isVisible(figure.age) ? std::optional(std::move(figure)) : std::nullopt;
}

std::optional<internal::Column> ZoomProcessor::liveColumn() const {
    if (!(motion_.colT() > internal::Column::kLeastSlide)) {
        return std::nullopt;
    }
    const std::lock_guard guard(lock_);
    return internal::Column{motion_.colT(), columnLeft_, cameraFrame_, nameTag_};
}

/// One consistent view of bubbles and overlays, and the screen that they stand on.
Rect ZoomProcessor::copyBubbles() {
    const std::lock_guard guard(lock_);
    for (std::size_t i = 0; i < std::min(bubbles_.size(), kMostBubbles); ++i) {
        const auto overlay = std::find_if(overlays_.begin(), overlays_.end(),
                                          [key = bubbles_[i].key](const Overlay& o) { return o.key == key; });
        shownBubbles_.push_back({bubbles_[i], overlay == overlays_.end() ? nullptr : overlay->frame});
    }
    return screenFrame_;
}

bool ZoomProcessor::hasOverlays() const {
    const std::lock_guard guard(lock_);
    return std::any_of(bubbles_.begin(), bubbles_.end(), [this](const BubbleInfo& bubble) {
        return std::any_of(overlays_.begin(), overlays_.end(),
                           [&bubble](const Overlay& o) { return o.key == bubble.key && o.frame; });
    });
}

bool ZoomProcessor::pictureIsChanged() const {
    return motion_.scale() > kLiveScale || motion_.spotAlpha() > internal::Spotlight::kLeastAlpha ||
           motion_.colT() > internal::Column::kLeastSlide || hasOverlays();
}

} // namespace velmo
