#include "surfaces/PresenterWindow.h"

#include "settings/NameTag.h"
#include "settings/Prefs.h"
#include "surfaces/CameraPreview.h"
#include "surfaces/internal/PresenterBackdrop.h"
#include "surfaces/internal/PresenterPanel.h"
#include "ui/ScreenPlace.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace velmo {
namespace {

constexpr double kStepSeconds = 1.0 / 60;
constexpr double kFadeSeconds = 0.35;
constexpr double kPatienceSeconds = 0.2; ///< for a window that the server does not show

PresenterState::Bubble presence(const std::optional<BubbleInfo>& info) {
    return info ? PresenterState::Bubble::there : PresenterState::Bubble::gone;
}

} // namespace

PresenterWindow::PresenterWindow(Services services) : services_(std::move(services)) {
    backdrop_ = std::make_unique<PresenterBackdrop>(
        PresenterBackdrop::Services{services_.capture, services_.timers, std::move(services_.queue)},
        [this](QImage ground) { panel_->setBackdrop(std::move(ground)); });
}

PresenterWindow::~PresenterWindow() {
    if (lent_) {
        giveBack();
    }
}

double PresenterWindow::now() const {
    return services_.clock.now().seconds();
}

std::optional<WindowId> PresenterWindow::windowID() const {
    return panel_ ? std::optional<WindowId>(static_cast<WindowId>(panel_->winId())) : std::nullopt;
}

void PresenterWindow::make(const Screen& screen) {
    screen_ = screen;
    if (!panel_) {
        panel_ = std::make_unique<PresenterPanel>();
        panel_->winId(); // on the server from now on
        QObject::connect(panel_.get(), &PresenterPanel::appeared, panel_.get(), [this] { takeOff(); });
    }
    panel_->setGeometry(ScreenPlace::frame(screen));
}

void PresenterWindow::prepare(const Screen& screen) {
    if (state_.phase() != PresenterState::Phase::rest) {
        return;
    }
    make(screen);
    panel_->clear();
    panel_->setWindowOpacity(0);
    panel_->show();
    backdrop_->warmUp();
}

void PresenterWindow::park() {
    if (panel_ && !isFull()) {
        panel_->hide();
    }
}

void PresenterWindow::enter(const Screen& screen) {
    enter(screen, services_.prefs.presenterStyle);
}

void PresenterWindow::toggle(const Screen& screen) {
    if (isFull()) {
        exit({});
    } else {
        enter(screen);
    }
}

void PresenterWindow::enter(const Screen& screen, PresenterStyle style) {
    const std::optional<BubbleInfo> bubble = services_.bubble.captureInfo();
    if (state_.enter(style, presence(bubble)) == PresenterState::Entrance::dropped) {
        return;
    }
    make(screen);
    panel_->clear();
    borrow();
    const PresenterFrame start = PresenterLayout::atBubble(*bubble, screen_.frame.origin());
    const PresenterFrame stage = PresenterLayout::onStage(style, screen_.frame.size());
    panel_->expect(stage);
    panel_->setFrame(start, PresenterPanel::Stage::flying);
    if (stage.backdrop > 0) {
        startBackdrop();
    }
    flight_.emplace(start, stage, PresenterFlight::Way::in);
    begun_.reset();
    awaitAppearance();
}

/// Unseen until it is painted: a new window begins with what was on the screen in its place, all panels included, and
/// that would be in the video. The bubble is covered then, not before: else there would be a moment with neither.
void PresenterWindow::awaitAppearance() {
    panel_->setWindowOpacity(0);
    panel_->show();
    const std::weak_ptr<const int> life = life_;
    services_.timers.after(kPatienceSeconds, [this, life, entrance = ++entrances_] {
        if (!life.expired() && entrance == entrances_) {
            takeOff();
        }
    });
}

void PresenterWindow::takeOff() {
    if (state_.phase() != PresenterState::Phase::entering || begun_) {
        return;
    }
    begun_ = now();
    panel_->setWindowOpacity(1);
    services_.bubble.setCoveredByPresenter(true);
    makeTag(flight_->end().stage, flight_->end().corner);
    startTicking();
}

void PresenterWindow::borrow() {
    lent_ = true;
    panel_->setPreview(&services_.bubble.lendPreview());
}

void PresenterWindow::giveBack() {
    if (panel_) {
        panel_->setPreview(nullptr);
    }
    lent_ = false;
    services_.bubble.takeBackPreview();
    services_.bubble.setCoveredByPresenter(false);
}

void PresenterWindow::startBackdrop() {
    const double ratio = panel_->devicePixelRatioF();
    backdrop_->start({screen_.displayID, services_.board ? services_.board() : std::nullopt, services_.processID},
                     panel_->size() * ratio);
}

void PresenterWindow::makeTag(const Rect& stage, double corner) {
    tag_.reset();
    if (const auto text = NameTag::current(services_.prefs)) {
        tag_ = PresenterTag::make(*text, stage, corner, screen_.frame.height, panel_->devicePixelRatioF(), *begun_);
    }
}

void PresenterWindow::exit(std::function<void()> then) {
    const std::optional<BubbleInfo> bubble = services_.bubble.captureInfoIgnoringCover();
    const PresenterState::Departure departure = state_.exit(presence(bubble));
    if (departure == PresenterState::Departure::dropped) {
        if (then) {
            then();
        }
        return;
    }
    then_ = std::move(then);
    backdrop_->stop();
    begun_ = now();
    if (tag_) {
        tag_->leave(*begun_);
    }
    if (departure == PresenterState::Departure::flight) {
        const PresenterFrame home = PresenterLayout::atBubble(*bubble, screen_.frame.origin());
        panel_->setFrame(panel_->frame(), PresenterPanel::Stage::flying);
        flight_.emplace(panel_->frame(), home, PresenterFlight::Way::out);
    } else {
        fades_ = true;
    }
    startTicking();
}

void PresenterWindow::reset() {
    state_.reset();
    entrances_++;
    backdrop_->stop();
    flight_.reset();
    fades_ = false;
    tag_.reset();
    then_ = {};
    if (std::exchange(ticking_, false)) {
        timer_->invalidate();
    }
    if (panel_) {
        panel_->hide();
    }
    giveBack();
    if (panel_) {
        panel_->clear();
    }
}

/// The timer is only stopped when nothing moves: it may be what calls.
void PresenterWindow::startTicking() {
    if (!ticking_) {
        ticking_ = true;
        timer_ = services_.timers.repeat(kStepSeconds, [this] { tick(); });
    }
}

void PresenterWindow::tick() {
    const double time = now();
    const bool tagMoves = stepTag(time);
    const bool flies = stepFlight(time);
    const bool fades = stepFade(time);
    if (!flies && !fades && state_.isBusy() && begun_) {
        landed();
    } else if (!tagMoves && !flies && !fades) {
        ticking_ = false;
        timer_->invalidate();
    }
}

bool PresenterWindow::stepTag(double time) {
    if (!tag_) {
        return false;
    }
    panel_->setTag(&*tag_, tag_->opacity(time));
    return !tag_->isStill(time);
}

/// True while there is more of it to come.
bool PresenterWindow::stepFlight(double time) {
    if (!flight_ || !begun_) {
        return false;
    }
    const double flown = time - *begun_;
    const bool over = flight_->isOver(flown);
    panel_->setFrame(flight_->at(flown), over ? PresenterPanel::Stage::standing : PresenterPanel::Stage::flying);
    return !over;
}

bool PresenterWindow::stepFade(double time) {
    if (!fades_) {
        return false;
    }
    const double share = std::min(1.0, (time - *begun_) / kFadeSeconds);
    panel_->setWindowOpacity((1 + std::cos(std::numbers::pi * share)) / 2);
    return share < 1;
}

void PresenterWindow::landed() {
    state_.landed();
    flight_.reset();
    fades_ = false;
    if (state_.phase() == PresenterState::Phase::rest) {
        giveBack();
        panel_->hide();
        panel_->setWindowOpacity(1);
        tag_.reset();
        panel_->clear();
    }
    if (const auto then = std::exchange(then_, {})) {
        then();
    }
    if (const auto settled = onSettled_) {
        settled();
    }
}

} // namespace velmo
