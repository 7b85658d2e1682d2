#include "surfaces/internal/DrawingOverlay.h"

#include <QCoreApplication>
#include <QImage>
#include <QMouseEvent>

#include <utility>
#include <vector>

namespace velmo {

namespace {

constexpr int kSeenAlpha = 90; // of 255; the highlighter is seen, soft edges and the laser's light are not

/// The pixels that have ink, with the upper left one at `origin`.
QRegion inkOf(const QImage& picture, QPoint origin) {
    std::vector<QRect> runs;
    for (int y = 0; y < picture.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            const int begin = x;
            while (x < picture.width() && qAlpha(line[x]) >= kSeenAlpha) {
                ++x;
            }
            if (x > begin) {
                runs.emplace_back(origin.x() + begin, origin.y() + y, x - begin, 1);
            }
        }
    }
    QRegion region;
    region.setRects(runs.data(), static_cast<int>(runs.size()));
    return region;
}

} // namespace

DrawingOverlay::DrawingOverlay(const QRect& place, DrawingView::Services services, std::function<DrawingTip()> tip)
    : FloatingPanel(PanelLevel::bubble, {0, std::nullopt}),
      view_((setGeometry(place), this), services, std::move(tip)) {
    setWindowTitle(QStringLiteral("Velmo Studio · dibujo"));
    setAccessibleName(QStringLiteral("Dibujo sobre la pantalla"));
    setClickThrough(true);
    connect(&view_, &DrawingView::inkChanged, this, &DrawingOverlay::cutOut);
}

void DrawingOverlay::take() {
    setClickThrough(false);
    show();
    bringToFront();
    if (!isComposited()) {
        takeMouse();
    }
}

void DrawingOverlay::letThrough() {
    setClickThrough(true);
    if (!isComposited()) {
        giveMouseBack();
    }
}

void DrawingOverlay::showEvent(QShowEvent* event) {
    FloatingPanel::showEvent(event);
    cutOut(rect());
}

void DrawingOverlay::resizeEvent(QResizeEvent* event) {
    FloatingPanel::resizeEvent(event);
    view_.setGeometry(rect());
}

void DrawingOverlay::toView(QMouseEvent* event) {
    QCoreApplication::sendEvent(&view_, event);
}

void DrawingOverlay::cutOut(const QRegion& area) {
    const QRect place = area.boundingRect() & rect();
    if (isComposited() || place.isEmpty()) {
        return;
    }
    QImage picture(place.size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(0);
    view_.render(&picture, {}, place, QWidget::RenderFlags());
    seen_ = seen_.subtracted(place).united(inkOf(picture, place.topLeft()));
    outlineChanged();
}

} // namespace velmo
