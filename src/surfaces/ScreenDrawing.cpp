#include "surfaces/ScreenDrawing.h"

#include "surfaces/DrawingPalette.h"
#include "surfaces/internal/DrawingOverlay.h"
#include "ui/ScreenPlace.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QScreen>

#include <utility>

namespace velmo {

namespace {

/// The index itself if the table has it.
template <typename Table>
int wrapped(int index, const Table& table) {
    const int count = static_cast<int>(table.size());
    return ((index % count) + count) % count;
}

} // namespace

ScreenDrawing::ScreenDrawing(Services services) : services_(std::move(services)) {}

ScreenDrawing::~ScreenDrawing() = default;

void ScreenDrawing::prepare(const Screen& screen) {
    teardown();
    overlay_ = std::make_unique<DrawingOverlay>(ScreenPlace::frame(screen),
                                                DrawingView::Services{services_.clock, services_.timers}, [this] {
                                                    return DrawingTip{tool_, currentColor(), currentWidth()};
                                                });
    connect(&overlay_->view(), &DrawingView::strokesChanged, this,
            [this] { setHasStrokes(!overlay_->view().model().strokes().isEmpty()); });
    palette_ = std::make_unique<DrawingPalette>(*this);
    palette_->winId(); // known to the server; as a window of the program it need not be seen to be left out
    palette_->placeOn(screen);
    overlay_->setWindowOpacity(0);
    overlay_->show();
    if (const QScreen* shown = QGuiApplication::screenAt(overlay_->geometry().center())) {
        connect(shown, &QScreen::geometryChanged, overlay_.get(), [this](const QRect& frame) {
            overlay_->setGeometry(frame);
            palette_->keepInside(frame);
        });
    }
}

void ScreenDrawing::parkPrepared() {
    if (overlay_ && !drawing_) {
        overlay_->hide();
        overlay_->setWindowOpacity(1);
    }
}

void ScreenDrawing::toggle() {
    drawing_ ? finishDrawing() : startDrawing();
}

void ScreenDrawing::startDrawing() {
    if (!overlay_ || !palette_) {
        return;
    }
    overlay_->setWindowOpacity(1);
    overlay_->take();
    if (services_.bringBubblesToFront) {
        services_.bringBubblesToFront();
    }
    if (services_.script) {
        palette_->keepClearOf(services_.script());
    }
    palette_->show();
    palette_->bringToFront();
    setDrawing(true);
}

void ScreenDrawing::finishDrawing() {
    if (overlay_ && palette_) {
        overlay_->view().endStroke();
        overlay_->letThrough();
        palette_->hide();
        if (!hasStrokes_) {
            overlay_->hide();
        }
    }
    setDrawing(false);
}

void ScreenDrawing::undo() {
    if (overlay_) {
        overlay_->view().undo();
    }
}

void ScreenDrawing::clear() {
    if (!overlay_) {
        return;
    }
    overlay_->view().clear();
    if (!drawing_) {
        overlay_->hide();
    }
}

void ScreenDrawing::teardown() {
    if (drawing_) {
        finishDrawing();
    }
    palette_.reset();
    overlay_.reset();
    setHasStrokes(false);
}

std::optional<WindowId> ScreenDrawing::overlayWindowID() const {
    return overlay_ ? std::optional(static_cast<WindowId>(overlay_->winId())) : std::nullopt;
}

QColor ScreenDrawing::currentColor() const {
    return colors[static_cast<std::size_t>(colorIndex_)];
}

double ScreenDrawing::currentWidth() const {
    return widths[static_cast<std::size_t>(widthIndex_)];
}

void ScreenDrawing::setTool(Tool tool) {
    if (std::exchange(tool_, tool) != tool) {
        emit tipChanged();
    }
}

void ScreenDrawing::setColorIndex(int index) {
    const int chosen = wrapped(index, colors);
    if (std::exchange(colorIndex_, chosen) != chosen) {
        emit tipChanged();
    }
}

void ScreenDrawing::setWidthIndex(int index) {
    const int chosen = wrapped(index, widths);
    if (std::exchange(widthIndex_, chosen) != chosen) {
        emit tipChanged();
    }
}

void ScreenDrawing::setDrawing(bool drawing) {
    if (std::exchange(drawing_, drawing) != drawing) {
        // A busy machine must not take corners off a stroke: every movement is told, none is merged with the next.
        const auto merging = Qt::AA_CompressHighFrequencyEvents;
        if (drawing) {
            mergedMovements_ = QCoreApplication::testAttribute(merging);
        }
        QCoreApplication::setAttribute(merging, !drawing && mergedMovements_);
        emit drawingChanged();
    }
}

void ScreenDrawing::setHasStrokes(bool has) {
    if (std::exchange(hasStrokes_, has) != has) {
        emit hasStrokesChanged();
    }
}

} // namespace velmo
