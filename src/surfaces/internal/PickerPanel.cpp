#include "surfaces/internal/PickerPanel.h"

#include <QPainterPath>

#include <utility>

namespace velmo {

PickerPanel::PickerPanel(const QRect& place, QString prompt, std::optional<Rect> selection)
    : FloatingPanel(PanelLevel::countdown, {0, std::nullopt}),
      view_((setGeometry(place), this), std::move(prompt), selection) {
    setWindowTitle(QStringLiteral("Velmo Studio · elegir zona"));
    setWindowFlag(Qt::WindowDoesNotAcceptFocus, false);
    setAttribute(Qt::WA_ShowWithoutActivating, false);
    connect(&view_, &RegionView::selectionChanged, this, [this] { outlineChanged(); });
}

void PickerPanel::open() {
    show();
    takeKeyboard();
    if (!isComposited()) {
        view_.grabMouse();
    }
}

void PickerPanel::close() {
    view_.releaseMouse();
    giveKeyboardBack();
    hide();
}

} // namespace velmo
