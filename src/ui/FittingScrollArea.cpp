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
    updateGeometry();
}

QSize FittingScrollArea::sizeHint() const {
    const QLayout* layout = widget()->layout();
    const int wide = std::max(width(), minimumWidth());
    const int tall = layout->hasHeightForWidth() ? layout->totalHeightForWidth(wide) : layout->totalSizeHint().height();
    return {wide, std::min(tall, mostHeight_)};
}

bool FittingScrollArea::eventFilter(QObject* watched, QEvent* event) {
    if (watched == widget() && event->type() == QEvent::LayoutRequest) {
        updateGeometry();
        emit heightChanged();
    }
    return QScrollArea::eventFilter(watched, event);
}

} // namespace velmo
