#include "ui/FittingScrollArea.h"

#include "ui/ScrollLook.h"

#include <QEvent>
#include <QLayout>
#include <QScrollBar>

#include <algorithm>

namespace velmo {

FittingScrollArea::FittingScrollArea(QWidget* contents, QWidget* parent) : QScrollArea(parent) {
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAutoFillBackground(false);
    setWidget(contents);
    contents->setAutoFillBackground(false);
    contents->installEventFilter(this);
    verticalScrollBar()->setStyleSheet(ScrollLook::sheet());
}

void FittingScrollArea::setMostHeight(int height) {
    mostHeight_ = height;
    holdContents();
    updateGeometry();
}

int FittingScrollArea::wholeHeight() const {
    const QLayout* layout = widget()->layout();
    const int wide = std::max(width(), minimumWidth());
    return layout->hasHeightForWidth() ? layout->totalHeightForWidth(wide) : layout->totalSizeHint().height();
}

/// Contents that grow are not squeezed until there is room for them, and a bar shows only beside what stays cut.
void FittingScrollArea::holdContents() {
    const int whole = wholeHeight();
    widget()->setMinimumHeight(whole);
    setVerticalScrollBarPolicy(whole > mostHeight_ ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
}

void FittingScrollArea::settle(const QWidget& inside) {
    for (QWidget* each = inside.parentWidget(); each != nullptr; each = each->parentWidget()) {
        if (auto* area = qobject_cast<FittingScrollArea*>(each)) {
            area->holdContents();
            return;
        }
    }
}

QSize FittingScrollArea::sizeHint() const {
    return {std::max(width(), minimumWidth()), std::min(wholeHeight(), mostHeight_)};
}

bool FittingScrollArea::eventFilter(QObject* watched, QEvent* event) {
    if (watched == widget() && event->type() == QEvent::LayoutRequest) {
        holdContents();
        updateGeometry();
        emit heightChanged();
    }
    return QScrollArea::eventFilter(watched, event);
}

} // namespace velmo
