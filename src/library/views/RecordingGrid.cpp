#include "library/views/RecordingGrid.h"

#include "library/views/RecordingCard.h"
#include "library/views/RecordingModel.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QScrollBar>

#include <algorithm>
#include <array>
#include <chrono>

namespace velmo {

namespace {

constexpr int kScrollBarWidth = 13;
constexpr std::chrono::minutes kDateRefresh{1};

QString css(const QColor& color) {
    return color.name(QColor::HexArgb);
}

QString scrollBarSheet() {
    return QStringLiteral("QScrollBar:vertical { background: transparent; width: %1px; margin: 0; }"
                          "QScrollBar::handle:vertical { background: %2; border-radius: 2px; min-height: 40px;"
                          " margin: 0 4px 0 4px; }"
                          "QScrollBar::handle:vertical:hover { background: %3; border-radius: 3px; margin: 0 3px; }"
                          "QScrollBar::add-line, QScrollBar::sub-line { height: 0; }"
                          "QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }")
        .arg(kScrollBarWidth)
        .arg(css(Theme::withOpacity(Theme::muted, 0.35)), css(Theme::withOpacity(Theme::muted, 0.6)));
}

} // namespace

RecordingGrid::RecordingGrid(RecordingModel& model, QWidget* parent)
    : QListView(parent), card_(new RecordingCard(model, this)) {
    setModel(&model);
    setItemDelegate(card_);
    setViewMode(QListView::IconMode);
    setMovement(QListView::Static);
    setResizeMode(QListView::Adjust);
    setUniformItemSizes(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setFrameShape(QFrame::NoFrame);
    setMouseTracking(true);
    viewport()->setAutoFillBackground(false);
    verticalScrollBar()->setStyleSheet(scrollBarSheet());
    setAccessibleName(QStringLiteral("Tus grabaciones"));

    connect(this, &QAbstractItemView::doubleClicked, this,
            [this](const QModelIndex& at) { emit playRequested(at.row()); });
    dates_.setInterval(kDateRefresh);
    connect(&dates_, &QTimer::timeout, viewport(), qOverload<>(&QWidget::update));
}

void RecordingGrid::select(int row) {
    const QModelIndex index = model()->index(row, 0);
    setCurrentIndex(index);
    scrollTo(index);
}

void RecordingGrid::layCards() {
    // Measured with the scroll bar even where there is none, so that its coming does not move the cards; the view
    // breaks the row before a cell that would end at its very edge.
    const int room = width() - kScrollBarWidth - 1;
    const int columns = std::max(1, room / (Type::scaled(RecordingCard::kLeastWidth) + RecordingCard::kGapAcross));
    card_->setCellWidth(room / columns);
    setGridSize(RecordingCard::cellFor(room / columns));
}

void RecordingGrid::resizeEvent(QResizeEvent* event) {
    layCards();
    QListView::resizeEvent(event);
}

void RecordingGrid::keyPressEvent(QKeyEvent* event) {
    struct Action {
        int key;
        void (RecordingGrid::*request)(int row);
    };
    static constexpr std::array kActions{
        Action{Qt::Key_Return, &RecordingGrid::playRequested},
        Action{Qt::Key_Enter, &RecordingGrid::playRequested},
        Action{Qt::Key_F2, &RecordingGrid::renameRequested},
        Action{Qt::Key_Delete, &RecordingGrid::trashRequested},
    };
    const auto action =
        std::find_if(kActions.begin(), kActions.end(), [&](const Action& each) { return each.key == event->key(); });
    if (action == kActions.end()) {
        QListView::keyPressEvent(event);
    } else if (currentIndex().isValid()) {
        emit(this->*action->request)(currentIndex().row());
    }
}

void RecordingGrid::contextMenuEvent(QContextMenuEvent* event) {
    const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
    const QModelIndex index = byMouse ? indexAt(event->pos()) : currentIndex();
    if (index.isValid()) {
        setCurrentIndex(index);
        emit menuRequested(index.row(),
                           byMouse ? event->globalPos() : viewport()->mapToGlobal(visualRect(index).center()));
    }
}

void RecordingGrid::showEvent(QShowEvent* event) {
    dates_.start();
    QListView::showEvent(event);
}

void RecordingGrid::hideEvent(QHideEvent* event) {
    dates_.stop();
    QListView::hideEvent(event);
}

} // namespace velmo
