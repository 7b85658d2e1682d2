#include "surfaces/BubbleController.h"

#include "surfaces/internal/BubbleMenu.h"
#include "ui/ScreenPlace.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmo {
namespace {

constexpr BubbleKind kFirst{&Prefs::bubbleSize,
                            &Prefs::bubbleShape,
                            &Prefs::mirror,
                            "bubbleX",
                            "bubbleY",
                            BubblePlace::Home::left,
                            {220, 220},
                            0,
                            "Velmo Studio · cámara"};
constexpr double kHideSeconds = 0.7;
constexpr double kButtonShare = 0.135; // of the bubble's shorter side
constexpr double kLeastButton = 18;
constexpr double kMostButton = 48;
constexpr double kSameButton = 0.5;
constexpr double kCircleLift = 0.17; // of the side; so far is the row's middle above the lower rim
constexpr double kCardLift = 0.95;   // of a button
constexpr double kCornerLift = 0.45; // of the corner
constexpr double kAboveName = 2;     // points
constexpr QPoint kOutOfSight(-4000, -4000);

QColor colorOf(const Color& color) {
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue));
}

} // namespace

BubbleController::BubbleController(BubbleServices services, Ties ties)
    : services_(services), ties_(std::move(ties)), bubble_(services_, kFirst) {
    BubbleView& view = bubble_.view();
    view.onDoubleClick = [this] {
        if (!savedFrame_) {
            chooseSize(next(services_.prefs.bubbleSize));
        }
    };
    view.menuProvider = [this] { return makeMenu(); };
    view.onMove = [this] {
        if (attached_) {
            positionControls();
        }
    };
    view.onHover = [this](bool inside) {
        overBubble_ = inside;
        updateControls();
    };
    controlsModel_.onHover = [this](bool inside) {
        overControls_ = inside;
        updateControls();
    };
    controlsModel_.onSize = [this](BubbleSize size) { chooseSize(size); };
    controlsModel_.onClose = [this] { putAway(); };
}

BubbleController::~BubbleController() = default;

void BubbleController::setUserHidden(bool hidden) {
    if (hidden != userHidden_) {
        userHidden_ = hidden;
        emit userHiddenChanged(hidden);
    }
}

void BubbleController::show() {
    setUserHidden(false);
    applyPrefs();
    bubble_.appear();
}

void BubbleController::hide() {
    hideControls(When::now);
    bubble_.disappear();
}

void BubbleController::putAway() {
    setUserHidden(true);
    hide();
}

void BubbleController::toggleUserVisibility() {
    if (bubble_.isVisible()) {
        putAway();
    } else if (ties_.hasVideo()) {
        show();
    }
}

void BubbleController::applyPrefs() {
    bubble_.dress(NameTag::current(services_.prefs));
    if (!savedFrame_) {
        bubble_.applySize();
    }
}

void BubbleController::bringToFront() {
    bubble_.view().bringToFront();
    if (attached_) {
        controls_->bringToFront();
    }
}

void BubbleController::keep(const Screen& screen) {
    bubble_.keep(screen);
}

void BubbleController::enterCameraOnly(const Screen& screen) {
    if (savedFrame_) {
        return;
    }
    savedFrame_ = bubble_.frame();
    hideControls(When::now);
    bubble_.view().setCameraOnly(true);
    bubble_.setFrame(BubblePlace::cameraOnly(bubble_.areaOf(screen)), CameraBubble::Motion::animated);
    bubble_.view().show();
    bringToFront();
}

void BubbleController::exitCameraOnly() {
    if (const auto frame = std::exchange(savedFrame_, std::nullopt)) {
        bubble_.view().setCameraOnly(false);
        bubble_.setFrame(*frame, CameraBubble::Motion::none);
    }
}

std::optional<BubbleInfo> BubbleController::captureInfo() const {
    return isCovered() ? std::nullopt : captureInfoIgnoringCover();
}

std::optional<BubbleInfo> BubbleController::captureInfoIgnoringCover() const {
    if (!bubble_.isVisible() || savedFrame_) {
        return std::nullopt;
    }
    BubbleInfo info = bubble_.info();
    if (const auto name = bubble_.view().nameFrame()) {
        info.label = Rect{info.window.x + name->x(), info.window.maxY() - name->y() - name->height(), name->width(),
                          name->height()};
    }
    return info;
}

void BubbleController::reconnect() {
    savedFrame_ ? bubble_.view().reconnect() : bubble_.reconnect();
}

void BubbleController::setCoveredByPresenter(bool covered) {
    underPresenter_ = covered;
    cover();
}

void BubbleController::setCoveredByColumn(bool covered) {
    underColumn_ = covered;
    cover();
}

void BubbleController::cover() {
    if (isCovered()) {
        hideControls(When::now);
    }
    bubble_.view().setConcealed(isCovered());
}

void BubbleController::chooseSize(BubbleSize size) {
    services_.prefs.bubbleSize = size;
    applyPrefs();
    if (attached_) {
        positionControls();
    }
}

std::unique_ptr<QMenu> BubbleController::makeMenu() {
    const Prefs& prefs = services_.prefs;
    BubbleMenu menu(services_.prefs, [this] { applyPrefs(); });
    menu.addSizes(kFirst);
    menu.addSeparator();
    menu.addShapes(kFirst);
    menu.addSeparator();
    if (prefs.presenterName.value().trimmed().isEmpty()) {
        menu.addDisabled(QStringLiteral("Mostrar mi nombre (escríbelo en el panel de grabación)"));
    } else {
        menu.addChoice(QStringLiteral("Mostrar mi nombre"), prefs.showName, [this] {
            services_.prefs.showName = !services_.prefs.showName;
            if (ties_.applySecond) {
                ties_.applySecond();
            }
        });
    }
    menu.addSeparator();
    menu.addRingStyles();
    menu.addPalettes();
    menu.addSeparator();
    menu.addWeights();
    if (prefs.bubbleShape.value() != BubbleShape::circle) {
        menu.addCorners();
    }
    menu.addSwitch(QStringLiteral("Sombra suave"), &Prefs::softShadow);
    menu.addSwitch(QStringLiteral("Espejo"), &Prefs::mirror);
    return menu.take();
}

void BubbleController::updateControls() {
    if (savedFrame_) {
        hideControls(When::now);
    } else if (!overBubble_ && !overControls_) {
        hideControls(When::soon);
    } else {
        showControls();
    }
}

void BubbleController::makeControls() {
    if (!controls_) {
        controls_ = std::make_unique<BubbleControlsView>(controlsModel_);
    }
}

void BubbleController::showControls() {
    hideWork_.reset();
    makeControls();
    if (!bubble_.isVisible() || isCovered()) {
        return;
    }
    controlsModel_.setAccent(colorOf(bubble_.view().look().accent()));
    positionControls();
    if (!std::exchange(attached_, true)) {
        controls_->setWindowOpacity(1);
        controls_->show();
        controls_->bringToFront();
    }
}

void BubbleController::hideControls(When when) {
    const auto hide = [this] {
        hideWork_.reset();
        overBubble_ = overBubble_ && bubble_.isVisible();
        overControls_ = false;
        if (controls_) {
            attached_ = false;
            controls_->hide();
        }
    };
    if (when == When::now) {
        hide();
        return;
    }
    hideWork_ = std::make_shared<int>();
    services_.timers.after(kHideSeconds, [work = std::weak_ptr<int>(hideWork_), hide] {
        if (!work.expired()) {
            hide();
        }
    });
}

void BubbleController::positionControls() {
    constexpr double kPad = BubbleView::pad;
    const QRectF inner = QRectF(bubble_.view().geometry()).adjusted(kPad, kPad, -kPad, -kPad);
    const double side = std::min(inner.width(), inner.height());
    const double button = std::clamp(std::round(side * kButtonShare), kLeastButton, kMostButton);
    if (std::abs(button - controlsModel_.button()) > kSameButton) {
        controlsModel_.setButton(button);
    }
    controlsModel_.setSelected(services_.prefs.bubbleSize);
    const bool circle = services_.prefs.bubbleShape.value() == BubbleShape::circle;
    const double corner = side * services_.prefs.cornerFraction * kCornerLift;
    double lift = circle ? side * kCircleLift : std::max(button * kCardLift, corner);
    if (const auto name = bubble_.view().nameFrame()) { // the row stands on the name, not over it
        lift = std::max(lift, inner.height() + kPad - name->top() + controls_->capsule().height() / 2 + kAboveName);
    }
    const QPointF middle(inner.center().x(), inner.bottom() - lift);
    const QPointF half(controls_->width() / 2.0, controls_->height() / 2.0);
    controls_->move((middle - half).toPoint());
}

// A window is found only while it is on the screen, and this one shall not be seen for it.
void BubbleController::prepareControlsForCapture() {
    makeControls();
    if (!attached_) {
        controls_->setWindowOpacity(0);
        controls_->move(kOutOfSight);
        controls_->show();
    }
}

void BubbleController::parkControls() {
    if (controls_ && !attached_) {
        controls_->hide();
        controls_->setWindowOpacity(1);
    }
}

} // namespace velmo
