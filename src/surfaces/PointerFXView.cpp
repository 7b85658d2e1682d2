#include "surfaces/PointerFXView.h"

#include "compositor/PointerBubble.h"
#include "surfaces/internal/PointerBubblePanel.h"
#include "surfaces/internal/SpotPanel.h"
#include "ui/ScreenPlace.h"

namespace velmo {
namespace {

// Shares of the way that is left, a tick.
constexpr double kFollowing = 0.45;
constexpr double kFading = 0.14;
constexpr double kUnseenAlpha = 0.003;

} // namespace

PointerFXView::PointerFXView(const Screen& screen)
    : spot_(std::make_unique<SpotPanel>()), bubble_(std::make_unique<PointerBubblePanel>()) {
    place(screen);
    spot_->winId(); // on the server before anybody looks for the program's windows
    bubble_->winId();
}

PointerFXView::~PointerFXView() = default;

void PointerFXView::place(const Screen& screen) {
    screen_ = screen;
    place_ = ScreenPlace::frame(screen);
    spot_->setGeometry(place_);
    bubble_->setRadius(place_.height() * PointerBubble::radiusFraction);
}

void PointerFXView::begin(Point mouse, std::vector<Color> colors) {
    end();
    spotCenter_ = mouse;
    bubble_->setColors(std::move(colors));
}

void PointerFXView::end() {
    bubbleStart_.reset();
    spotAlpha_ = 0;
    drewSomething_ = false;
    spot_->hide();
    bubble_->hide();
}

bool PointerFXView::step(Point mouse, double now, bool spotlight) {
    spotCenter_.x += (mouse.x - spotCenter_.x) * kFollowing;
    spotCenter_.y += (mouse.y - spotCenter_.y) * kFollowing;
    spotAlpha_ += ((spotlight ? 1 : 0) - spotAlpha_) * kFading;
    if (spotAlpha_ < kUnseenAlpha) {
        spotAlpha_ = 0;
    }
    const bool live = spotAlpha_ > 0 || (bubbleStart_ && PointerBubble::isVisible(now - *bubbleStart_));
    if (!live && !drewSomething_) {
        return false;
    }
    drewSomething_ = live;
    showSpot();
    showBubble(mouse, now);
    return live;
}

void PointerFXView::showSpot() {
    if (spotAlpha_ <= 0) {
        spot_->hide();
        return;
    }
    spot_->setCenter(QPointF(spotCenter_.x, place_.height() - spotCenter_.y));
    spot_->setWindowOpacity(spotAlpha_);
    spot_->show();
}

void PointerFXView::showBubble(Point mouse, double now) {
    if (!bubbleStart_) {
        return;
    }
    const double age = now - *bubbleStart_;
    if (!PointerBubble::isVisible(age)) {
        bubbleStart_.reset();
        bubble_->hide();
        return;
    }
    bubble_->showAt(QPointF(place_.x() + mouse.x, place_.y() + place_.height() - mouse.y), age);
}

const QWidget& PointerFXView::spot() const {
    return *spot_;
}

const QWidget& PointerFXView::bubble() const {
    return *bubble_;
}

} // namespace velmo
