#include "surfaces/internal/RegionView.h"

#include "surfaces/RegionSelection.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>

#include <cmath>
#include <utility>

namespace velmo {

namespace {

constexpr double kDim = 0.45;
constexpr double kLine = 3;
constexpr double kLineOutside = 1; // of the selection's edge
constexpr int kPillBottom = 90;    // from the top of the screen
constexpr int kPillSide = 18;
constexpr int kPillEdge = 9;
constexpr double kPillOpacity = 0.92;
constexpr int kTextSize = 15;

QFont pillFont() {
    QFont font = Type::font(TextStyle::label);
    font.setPixelSize(Type::scaled(kTextSize));
    return font;
}

constexpr int kLineRoom = 4; // around a hole's edge, with the line and its soft rim

/// A selection's hole, larger or smaller by `margin`.
QRegion grown(const QRectF& hole, int margin) {
    return hole.isEmpty() ? QRegion() : QRegion(hole.toAlignedRect().adjusted(-margin, -margin, margin, margin));
}

} // namespace

RegionView::RegionView(QWidget* parent, QString prompt, std::optional<Rect> selection)
    : QWidget(parent), givenPrompt_(std::move(prompt)), selection_(selection) {
    setGeometry(parent->rect());
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::CrossCursor);
    setFocus();
}

QString RegionView::prompt() const {
    return selection_ ? QStringLiteral("Suelta para usar esta zona · Arrastra de nuevo para cambiarla · Enter la usa · "
                                       "Esc cancela")
                      : givenPrompt_;
}

Point RegionView::pointOf(const QMouseEvent& event) const {
    return {event.position().x(), height() - event.position().y()};
}

Size RegionView::screenSize() const {
    return {static_cast<double>(width()), static_cast<double>(height())};
}

bool RegionView::isUsable() const {
    return selection_ && RegionSelection::isUsable(*selection_);
}

QRectF RegionView::hole() const {
    return selection_ ? QRectF(selection_->x, height() - selection_->maxY(), selection_->width, selection_->height)
                      : QRectF();
}

QRect RegionView::pill() const {
    const QFontMetrics metrics(pillFont());
    const int wide = metrics.horizontalAdvance(prompt()) + 2 * kPillSide;
    const int high = metrics.height() + 2 * kPillEdge;
    return QRect((width() - wide) / 2, kPillBottom - high, wide, high);
}

QPainterPath RegionView::outline() const {
    QPainterPath path;
    if (selection_) {
        constexpr double kOuter = kLineOutside + kLine / 2;
        constexpr double kInner = kLineOutside - kLine / 2;
        path.addRect(hole().adjusted(-kOuter, -kOuter, kOuter, kOuter));
        path.addRect(hole().adjusted(-kInner, -kInner, kInner, kInner));
    }
    path.addRoundedRect(pill(), pill().height() / 2.0, pill().height() / 2.0);
    return path;
}

void RegionView::select(std::optional<Rect> selection) {
    if (selection == selection_) {
        return;
    }
    const bool otherWords = selection.has_value() != selection_.has_value();
    const QRect oldPill = pill();
    const QRectF before = hole();
    selection_ = selection;
    update((grown(before, kLineRoom) + grown(hole(), kLineRoom)) -
           (grown(before, -kLineRoom) & grown(hole(), -kLineRoom))); // what is clear in both stays
    if (otherWords) {
        update(oldPill | pill());
    }
    emit selectionChanged();
}

void RegionView::mousePressEvent(QMouseEvent* event) {
    emit pressed();
    if (event->button() != Qt::LeftButton) {
        return;
    }
    start_ = pointOf(*event);
    select(std::nullopt);
}

void RegionView::mouseMoveEvent(QMouseEvent* event) {
    if (start_) {
        select(RegionSelection::dragged(*start_, pointOf(*event), screenSize()));
    }
}

void RegionView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !std::exchange(start_, std::nullopt)) {
        return;
    }
    if (isUsable()) {
        emit accepted();
    } else {
        select(std::nullopt);
    }
}

void RegionView::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (isUsable()) {
            emit accepted();
        }
        return;
    case Qt::Key_Escape:
        emit cancelled();
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

void RegionView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(event->rect(), QColor::fromRgbF(0, 0, 0, static_cast<float>(kDim)));
    if (selection_) {
        painter.setCompositionMode(QPainter::CompositionMode_Clear);
        painter.fillRect(hole(), Qt::transparent);
    }
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    if (selection_) {
        QPen pen(Theme::brand, kLine);
        pen.setJoinStyle(Qt::MiterJoin);
        painter.setPen(pen);
        painter.setBrush(Qt::NoBrush);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.drawRect(hole().adjusted(-kLineOutside, -kLineOutside, kLineOutside, kLineOutside));
    }
    if (event->region().intersects(pill())) {
        paintPill(painter);
    }
}

void RegionView::paintPill(QPainter& painter) const {
    const QRect box = pill();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::withOpacity(Theme::navy, kPillOpacity));
    painter.drawRoundedRect(box, box.height() / 2.0, box.height() / 2.0);
    painter.setPen(Qt::white);
    painter.setFont(pillFont());
    painter.drawText(box.adjusted(kPillSide, kPillEdge, -kPillSide, -kPillEdge), Qt::AlignLeft | Qt::AlignVCenter,
                     prompt());
}

} // namespace velmo
