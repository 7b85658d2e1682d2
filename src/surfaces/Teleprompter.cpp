#include "surfaces/Teleprompter.h"

#include "base/Clock.h"
#include "settings/Prefs.h"
#include "surfaces/internal/PrompterPanel.h"
#include "surfaces/internal/PrompterView.h"
#include "ui/ScreenPlace.h"

#include <QLayout>

#include <algorithm>

namespace velmo {

namespace {

constexpr double kTick = 1.0 / 60;
constexpr double kLeastSpeed = 8; // points a second
constexpr double kMostSpeed = 140;
constexpr double kSpeedStep = 8;
constexpr double kLeastFont = 16; // points
constexpr double kMostFont = 56;
constexpr double kFontStep = 4;
constexpr int kMostWidth = 680;
constexpr int kBelowTop = 6;

} // namespace

Teleprompter::Teleprompter(const Services& services) : services_(services) {}

Teleprompter::~Teleprompter() = default;

bool Teleprompter::hasScript() const {
    const QString& script = services_.prefs.scriptText;
    return std::any_of(script.begin(), script.end(), [](QChar character) { return !character.isSpace(); });
}

void Teleprompter::make() {
    if (!panel_) {
        panel_ = std::make_unique<PrompterPanel>(*this, services_.prefs);
    }
}

void Teleprompter::show(const Screen& screen) {
    if (!hasScript()) {
        return;
    }
    make();
    const QRect free = ScreenPlace::visibleFrame(screen);
    const QSize size(std::min(free.width() / 2, kMostWidth), PrompterPanel::heightFor(fontSize()));
    const bool stays = visible_ && panel_->cardGeometry().intersects(ScreenPlace::frame(screen));
    const QPoint corner = stays ? panel_->cardGeometry().topLeft()
                                : QPoint(free.x() + (free.width() - size.width()) / 2, free.y() + kBelowTop);
    panel_->setCardGeometry(QRect(corner, size));
    panel_->setFontSize(fontSize());
    panel_->layout()->activate(); // the text is laid out for the width that it gets
    panel_->text().load(services_.prefs.scriptText, fontSize(),
                        stays ? PrompterView::Place::keep : PrompterView::Place::begin);
    scroll_.moveTo(panel_->text().position());
    panel_->show();
    if (!visible_) {
        visible_ = true;
        emit visibleChanged();
    }
}

QRect Teleprompter::place() const {
    return visible_ && panel_ ? panel_->cardGeometry() : QRect();
}

void Teleprompter::hide() {
    pause();
    if (panel_) {
        panel_->hide();
    }
    if (visible_) {
        visible_ = false;
        emit visibleChanged();
    }
}

void Teleprompter::toggle(const Screen& screen) {
    if (visible_) {
        hide();
    } else {
        show(screen);
    }
}

void Teleprompter::play() {
    if (!visible_ || playing()) {
        return;
    }
    scroll_.play(services_.clock.now());
    timer_ = services_.timers.repeat(kTick, [this] { tick(); });
    emit playingChanged();
}

void Teleprompter::pause() {
    if (!playing()) {
        return;
    }
    scroll_.pause();
    timer_->invalidate();
    emit playingChanged();
}

void Teleprompter::togglePlay() {
    if (playing()) {
        pause();
    } else {
        play();
    }
}

void Teleprompter::tick() {
    scroll_.tick(services_.clock.now(), speed(), panel_->text().end());
    panel_->text().setPosition(scroll_.position());
    if (!playing()) {
        timer_->invalidate();
        emit playingChanged();
    }
}

void Teleprompter::faster() {
    changeSpeed(kSpeedStep);
}

void Teleprompter::slower() {
    changeSpeed(-kSpeedStep);
}

void Teleprompter::biggerText() {
    changeText(kFontStep);
}

void Teleprompter::smallerText() {
    changeText(-kFontStep);
}

void Teleprompter::changeSpeed(double by) {
    services_.prefs.prompterSpeed = std::clamp(services_.prefs.prompterSpeed + by, kLeastSpeed, kMostSpeed);
}

void Teleprompter::changeText(double by) {
    services_.prefs.prompterFont = std::clamp(services_.prefs.prompterFont + by, kLeastFont, kMostFont);
    if (!panel_) {
        return;
    }
    const QRect card = panel_->cardGeometry();
    panel_->setCardGeometry(QRect(card.topLeft(), QSize(card.width(), PrompterPanel::heightFor(fontSize()))));
    panel_->setFontSize(fontSize());
    panel_->layout()->activate();
    panel_->text().load(services_.prefs.scriptText, fontSize(), PrompterView::Place::keep);
    scroll_.moveTo(panel_->text().position());
}

double Teleprompter::speed() const {
    return std::clamp(services_.prefs.prompterSpeed.value(), kLeastSpeed, kMostSpeed);
}

double Teleprompter::fontSize() const {
    return std::clamp(services_.prefs.prompterFont.value(), kLeastFont, kMostFont);
}

} // namespace velmo
