#include "ui/FittingScrollArea.h"

#include "ui/Theme.h"

#include <QEvent>
#include <QLayout>
#include <QScrollBar>

#include <algorithm>

namespace velmo {

namespace {

QString css(const QColor& color) {
    return QStringLiteral("rgba(%1,%2,%3,%4)").arg(color.red()).arg(color.green()).arg(color.blue()).arg(color.alpha());
}

} // namespace

FittingScrollArea::FittingScrollArea(QWidget* contents, QWidget* parent) : QScrollArea(parent) {
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAutoFillBackground(false);
    setWidget(contents);
    contents->setAutoFillBackground(false);
    contents->installEventFilter(this);
    verticalScrollBar()->setStyleSheet(
        QStringLiteral(
            "QScrollBar { background: transparent; width: 9px; }"
            "QScrollBar::handle { background: %1; border-radius: 2px; margin: 2px 4px 2px 0; min-height: 24px; }"
            "QScrollBar::add-line, QScrollBar::sub-line { height: 0; }"
            "QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }")
            .arg(css(Theme::withOpacity(Theme::muted, 0.35))));
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
