#include "ui/FloatingPanel.h"

#include "ui/Painting.h"
#include "ui/Theme.h"
#include "ui/internal/X11Window.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <utility>
#include <vector>

namespace velmo {

namespace {

/// All panels that are shown, in the order in which they came up.
std::vector<FloatingPanel*>& shownPanels() {
    static std::vector<FloatingPanel*> panels;
    return panels;
}

/// Panels are children of the root that no window manager stacks: who is raised last is in front.
void restack() {
    std::vector<FloatingPanel*> panels = shownPanels();
    std::stable_sort(panels.begin(), panels.end(),
                     [](const FloatingPanel* a, const FloatingPanel* b) { return a->level() < b->level(); });
    for (FloatingPanel* panel : panels) {
        if (panel->isVisible()) {
            panel->raise();
        }
    }
}

} // namespace

FloatingPanel::FloatingPanel(PanelLevel level, Floor floor)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus |
                           Qt::X11BypassWindowManagerHint),
      level_(level), floor_(floor) {
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_AlwaysShowToolTips);
    setAttribute(Qt::WA_QuitOnClose, false);
    setFocusPolicy(Qt::NoFocus);
    if (floor_.shadow) {
        setContentsMargins(Shadow::margins(*floor_.shadow));
    }
}

FloatingPanel::~FloatingPanel() {
    std::erase(shownPanels(), this);
}

QRect FloatingPanel::card() const {
    return contentsRect();
}

QRegion FloatingPanel::mouseRegion() const {
    return card();
}

QRect FloatingPanel::cardGeometry() const {
    return card().translated(pos());
}

void FloatingPanel::setCardGeometry(const QRect& card) {
    setGeometry(card.marginsAdded(contentsMargins()));
}

void FloatingPanel::setClickThrough(bool through) {
    clickThrough_ = through;
    shapeChanged();
}

void FloatingPanel::shapeChanged() {
    floorPixmap_ = {};
    applyShape();
    update();
}

void FloatingPanel::applyShape() {
    if (!isVisible()) {
        return;
    }
    X11Window::setInputRegion(*this, clickThrough_ ? QRegion() : mouseRegion());
    outlineChanged();
}

void FloatingPanel::outlineChanged() {
    if (!isVisible() || composited_) {
        return;
    }
    const QRegion seen = seenRegion();
    setMask(seen.isEmpty() ? QRegion(-1, -1, 1, 1) : seen); // an empty mask would be none
}

QRegion FloatingPanel::seenRegion() const {
    QRegion seen;
    for (const QPolygonF& part : outline().toFillPolygons()) {
        seen += QRegion(part.toPolygon());
    }
    return seen;
}

QPainterPath FloatingPanel::outline() const {
    QPainterPath path;
    path.addRoundedRect(floor_.shadow ? card() : rect(), floor_.radius, floor_.radius);
    return path;
}

void FloatingPanel::takeKeyboard() {
    if (!keyboardOwner_) {
        keyboardOwner_ = X11Window::keyboardOwner();
    }
    X11Window::setKeyboardOwner(static_cast<std::uint32_t>(winId()));
}

void FloatingPanel::giveKeyboardBack() {
    if (const auto owner = std::exchange(keyboardOwner_, std::nullopt)) {
        X11Window::setKeyboardOwner(*owner);
    }
}

void FloatingPanel::takeMouse() {
    hasMouse_ = true;
    qApp->installEventFilter(this);
    X11Window::grabMouse(static_cast<std::uint32_t>(winId()));
}

void FloatingPanel::giveMouseBack() {
    hasMouse_ = false;
    qApp->removeEventFilter(this);
    X11Window::releaseMouse();
}

bool FloatingPanel::eventFilter(QObject* object, QEvent* event) {
    // A menu takes the mouse while it is open, and Qt lets go of it altogether when it closes.
    if (event->type() == QEvent::Hide && object->isWidgetType() &&
        static_cast<const QWidget*>(object)->windowType() == Qt::Popup) {
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (hasMouse_ && QApplication::activePopupWidget() == nullptr) {
                    X11Window::grabMouse(static_cast<std::uint32_t>(winId()));
                }
            },
            Qt::QueuedConnection);
    }
    return QWidget::eventFilter(object, event);
}

void FloatingPanel::bringToFront() {
    if (!isVisible()) {
        return;
    }
    std::erase(shownPanels(), this);
    shownPanels().push_back(this);
    restack();
}

void FloatingPanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    composited_ = X11Window::isComposited();
    shapeChanged();
    bringToFront();
}

void FloatingPanel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    shapeChanged();
}

QPixmap FloatingPanel::paintedFloor() const {
    const double ratio = devicePixelRatioF();
    QPixmap pixmap(size() * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    const QRectF box = card();
    const QColor fill = floor_.fill.isValid() ? floor_.fill : Theme::floating();
    const QColor border = floor_.border.isValid() ? floor_.border : Theme::strongBorder();
    if (composited_) {
        Shadow::paint(painter, box, floor_.radius, *floor_.shadow);
        Painting::roundedBox(painter, box, floor_.radius, fill, border);
    } else {
        painter.fillRect(rect(), Theme::withOpacity(fill, 1));
        Painting::roundedBox(painter, box, floor_.radius, Qt::transparent, border);
    }
    return pixmap;
}

void FloatingPanel::paintEvent(QPaintEvent*) {
    if (!floor_.shadow) {
        return;
    }
    if (floorPixmap_.isNull()) {
        floorPixmap_ = paintedFloor();
    }
    QPainter painter(this);
    painter.drawPixmap(0, 0, floorPixmap_);
}

void FloatingPanel::mousePressEvent(QMouseEvent* event) {
    if (movable_ && event->button() == Qt::LeftButton) {
        grip_ = event->globalPosition().toPoint() - pos();
    }
}

void FloatingPanel::mouseMoveEvent(QMouseEvent* event) {
    if (grip_) {
        move(event->globalPosition().toPoint() - *grip_);
    }
}

void FloatingPanel::mouseReleaseEvent(QMouseEvent*) {
    grip_.reset();
}

} // namespace velmo
