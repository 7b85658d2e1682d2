#include "surfaces/internal/PickerPanel.h"

#include <QEvent>
#include <QPainterPath>
#include <QTimer>

#include <chrono>
#include <utility>

namespace velmo {

namespace {

constexpr std::chrono::milliseconds kSettled{150}; // window managers have answered what was asked before

} // namespace

PickerPanel::PickerPanel(const QRect& place, QString prompt, std::optional<Rect> selection)
    : FloatingPanel(PanelLevel::countdown, {0, std::nullopt}),
      view_((setGeometry(place), this), std::move(prompt), selection) {
    setWindowTitle(QStringLiteral("Velmo Studio · elegir zona"));
    setWindowFlag(Qt::WindowDoesNotAcceptFocus, false);
    setAttribute(Qt::WA_ShowWithoutActivating, false);
    connect(&view_, &RegionView::selectionChanged, this, [this] {
        outlineChanged();
        keepKeyboard();
    });
    connect(&view_, &RegionView::pressed, this, [this] {
        mayTakeBack_ = true;
        keepKeyboard();
    });
}

void PickerPanel::open() {
    show();
    takeKeyboard();
    QTimer::singleShot(kSettled, this, [this] { keepKeyboard(); });
    if (!isComposited()) {
        view_.grabMouse();
    }
}

// A window manager that was about to give the keyboard to somebody else has done so after us.
void PickerPanel::keepKeyboard() {
    if (isVisible() && !isActiveWindow()) {
        takeKeyboard();
    }
}

bool PickerPanel::event(QEvent* event) {
    if (event->type() == QEvent::WindowDeactivate && isVisible() && std::exchange(mayTakeBack_, false)) {
        takeKeyboard();
    }
    return FloatingPanel::event(event);
}

void PickerPanel::close() {
    view_.releaseMouse();
    giveKeyboardBack();
    hide();
}

} // namespace velmo
