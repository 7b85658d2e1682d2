#include "surfaces/BubbleControlsView.h"

#include "ui/Theme.h"
#include "ui/Type.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace velmo {
namespace {

constexpr double kShadowRoom = 6;
constexpr double kShadowOpacity = 0.18;
constexpr double kSpacing = 0.12; // of a button, as all that follow
constexpr double kPadding = 0.13;
constexpr double kLetter = 0.44;
constexpr double kCross = 0.3;
constexpr double kCrossPen = 0.075;
constexpr double kGlow = 0.2;
constexpr int kClose = BubbleControlsView::kButtons - 1;
constexpr QColor kFloor = Theme::nsColor(0x101E19, 0.62);

QColor white(double opacity) {
    return Theme::withOpacity(Qt::white, opacity);
}

void paintDisc(QPainter& painter, const QRectF& rect, const QColor& color) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(rect);
}

/// As bold as the letters beside it, which no icon of one line width is at all sizes.
void paintCross(QPainter& painter, QPointF middle, double button, const QColor& color) {
    const double half = button * kCross / 2;
    painter.setPen(QPen(color, button * kCrossPen, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(middle - QPointF(half, half), middle + QPointF(half, half));
    painter.drawLine(middle - QPointF(half, -half), middle + QPointF(half, -half));
}

void paintGlow(QPainter& painter, const QRectF& disc, const QColor& color) {
    const double inner = disc.width() / 2;
    const double outer = inner * (1 + 2 * kGlow);
    QRadialGradient glow(disc.center(), outer);
    glow.setColorAt(inner / outer * 0.98, color);
    glow.setColorAt(1, Theme::withOpacity(color, 0));
    QPainterPath band;
    band.addEllipse(disc.center(), outer, outer);
    band.addEllipse(disc);
    painter.fillPath(band, glow);
}

} // namespace

BubbleControlsView::BubbleControlsView(BubbleControlsModel& model)
    : FloatingPanel(PanelLevel::bubble, {0, std::nullopt}), model_(model) {
    setWindowTitle(QStringLiteral("Velmo Studio · tamaño de la cámara"));
    setMouseTracking(true);
    resize(fittingSize());
    connect(&model_, &BubbleControlsModel::changed, this, [this] {
        resize(fittingSize());
        update();
    });
    winId();
}

QSize BubbleControlsView::fittingSize() const {
    const double b = model_.button();
    const double width = kButtons * b + (kButtons - 1) * kSpacing * b + 2 * kPadding * b + 2 * kShadowRoom;
    const double height = b + 2 * kPadding * b + 2 * kShadowRoom;
    return {static_cast<int>(std::ceil(width)), static_cast<int>(std::ceil(height))};
}

QRectF BubbleControlsView::capsule() const {
    return QRectF(rect()).adjusted(kShadowRoom, kShadowRoom, -kShadowRoom, -kShadowRoom);
}

QRectF BubbleControlsView::buttonRect(int index) const {
    const double b = model_.button();
    const double row = kButtons * b + (kButtons - 1) * kSpacing * b;
    const QPointF middle = QRectF(rect()).center();
    return {middle.x() - row / 2 + index * (1 + kSpacing) * b, middle.y() - b / 2, b, b};
}

QPainterPath BubbleControlsView::outline() const {
    QPainterPath path;
    const QRectF shape = capsule();
    path.addRoundedRect(shape, shape.height() / 2, shape.height() / 2);
    return path;
}

QRegion BubbleControlsView::mouseRegion() const {
    return QRegion(outline().toFillPolygon().toPolygon());
}

std::optional<int> BubbleControlsView::buttonAt(QPointF place) const {
    for (int i = 0; i < kButtons; ++i) {
        if (buttonRect(i).contains(place)) {
            return i;
        }
    }
    return std::nullopt;
}

void BubbleControlsView::setHovered(std::optional<int> index) {
    if (index != hovered_) {
        hovered_ = index;
        update();
    }
}

void BubbleControlsView::paintCapsule(QPainter& painter) const {
    const QRectF shape = capsule();
    const double radius = shape.height() / 2;
    const QPainterPath inside = outline();
    painter.setPen(Qt::NoPen);
    for (int ring = 1; ring <= static_cast<int>(kShadowRoom); ++ring) { // faint layers that add up towards the edge
        QPainterPath layer;
        layer.addRoundedRect(shape.adjusted(-ring, -ring, ring, ring), radius + ring, radius + ring);
        const double share = 2 * (kShadowRoom + 1 - ring) / (kShadowRoom * (kShadowRoom + 1)); // of 1 together
        painter.setBrush(Theme::withOpacity(Qt::black, kShadowOpacity * share));
        painter.drawPath(layer.subtracted(inside));
    }
    QLinearGradient light(shape.topLeft(), shape.bottomLeft());
    light.setColorAt(0, white(0.45));
    light.setColorAt(1, white(0.08));
    painter.setBrush(kFloor);
    painter.setPen(QPen(light, 0.8));
    painter.drawRoundedRect(shape.adjusted(0.4, 0.4, -0.4, -0.4), radius - 0.4, radius - 0.4);
}

void BubbleControlsView::paintButton(QPainter& painter, int index) const {
    const QRectF place = buttonRect(index);
    const bool selected = index != kClose && index == static_cast<int>(model_.selected());
    const bool hovered = hovered_ == index;
    if (selected) {
        paintGlow(painter, place, Theme::withOpacity(model_.accent(), 0.5));
        paintDisc(painter, place, Theme::withOpacity(model_.accent(), 0.88));
    } else if (hovered) {
        paintDisc(painter, place, white(0.16));
    }
    const QColor ink = selected ? Theme::withOpacity(Qt::black, 0.85) : white(hovered ? 1 : 0.82);
    if (index == kClose) {
        paintCross(painter, place.center(), model_.button(), ink);
        return;
    }
    QFont font(Type::family());
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(model_.button() * kLetter))));
    font.setWeight(QFont::DemiBold);
    painter.setFont(font);
    painter.setPen(ink);
    painter.drawText(place, Qt::AlignCenter, rawValue(static_cast<BubbleSize>(index)).toUpper());
}

void BubbleControlsView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintCapsule(painter);
    for (int i = 0; i < kButtons; ++i) {
        paintButton(painter, i);
    }
}

bool BubbleControlsView::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        if (buttonAt(help->pos()) == kClose) {
            QToolTip::showText(help->globalPos(), QStringLiteral("Ocultar la cámara"), this);
        } else {
            QToolTip::hideText();
        }
        return true;
    }
    return FloatingPanel::event(event);
}

void BubbleControlsView::press(int index) {
    if (index == kClose) {
        if (model_.onClose) {
            model_.onClose();
        }
    } else if (model_.onSize) {
        model_.onSize(static_cast<BubbleSize>(index));
    }
}

void BubbleControlsView::mousePressEvent(QMouseEvent* event) {
    pressed_ = event->button() == Qt::LeftButton ? buttonAt(event->position()) : std::nullopt;
}

void BubbleControlsView::mouseMoveEvent(QMouseEvent* event) {
    setHovered(buttonAt(event->position()));
}

void BubbleControlsView::mouseReleaseEvent(QMouseEvent* event) {
    const std::optional<int> pressed = std::exchange(pressed_, std::nullopt);
    if (pressed && event->button() == Qt::LeftButton && buttonAt(event->position()) == pressed) {
        press(*pressed);
    }
}

void BubbleControlsView::enterEvent(QEnterEvent* event) {
    setHovered(buttonAt(event->position()));
    if (model_.onHover) {
        model_.onHover(true);
    }
}

void BubbleControlsView::leaveEvent(QEvent*) {
    setHovered(std::nullopt);
    if (model_.onHover) {
        model_.onHover(false);
    }
}

void BubbleControlsView::hideEvent(QHideEvent* event) {
    hovered_.reset(); // the mouse leaves a window that goes without a word
    pressed_.reset();
    FloatingPanel::hideEvent(event);
}

} // namespace velmo
