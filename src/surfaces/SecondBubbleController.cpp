#include "surfaces/SecondBubbleController.h"

#include "surfaces/internal/BubbleMenu.h"

#include <utility>

namespace velmo {
namespace {

constexpr BubbleKind kSecond{&Prefs::secondBubbleSize,
                             &Prefs::secondBubbleShape,
                             &Prefs::secondMirror,
                             "bubble2X",
                             "bubble2Y",
                             BubblePlace::Home::right,
                             {300, 220},
                             1,
                             "Velmo Studio · segunda cámara"};

} // namespace

SecondBubbleController::SecondBubbleController(BubbleServices services)
    : services_(services), bubble_(services_, kSecond) {
    bubble_.view().onDoubleClick = [this] {
        services_.prefs.secondBubbleSize = next(services_.prefs.secondBubbleSize);
        applyPrefs();
    };
    bubble_.view().menuProvider = [this] { return makeMenu(); };
}

SecondBubbleController::~SecondBubbleController() = default;

void SecondBubbleController::set(bool visible, bool userHidden) {
    if (std::exchange(visible_, visible) != visible) {
        emit visibleChanged(visible);
    }
    if (std::exchange(userHidden_, userHidden) != userHidden) {
        emit userHiddenChanged(userHidden);
    }
}

void SecondBubbleController::show() {
    applyPrefs();
    bubble_.appear();
    set(true, false);
}

void SecondBubbleController::hide() {
    bubble_.disappear();
    set(false, userHidden_);
}

void SecondBubbleController::putAway() {
    bubble_.disappear();
    set(false, true);
}

void SecondBubbleController::toggleUserVisibility() {
    if (bubble_.isVisible()) {
        putAway();
    } else {
        show();
    }
}

void SecondBubbleController::applyPrefs() {
    bubble_.dress(std::nullopt);
    bubble_.applySize();
}

std::optional<BubbleInfo> SecondBubbleController::captureInfo() const {
    return bubble_.isVisible() ? std::optional(bubble_.info()) : std::nullopt;
}

std::unique_ptr<QMenu> SecondBubbleController::makeMenu() {
    BubbleMenu menu(services_.prefs, [this] { applyPrefs(); });
    menu.addDisabled(QStringLiteral("Segunda cámara"));
    menu.addSeparator();
    menu.addSizes(kSecond);
    menu.addSeparator();
    menu.addShapes(kSecond);
    menu.addSeparator();
    menu.addSwitch(QStringLiteral("Espejo"), &Prefs::secondMirror);
    menu.addCommand(QStringLiteral("Ocultar"), [this] { putAway(); });
    return menu.take();
}

} // namespace velmo
