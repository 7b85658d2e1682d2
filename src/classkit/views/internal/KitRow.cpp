#include "classkit/views/internal/KitRow.h"

#include "ui/Painting.h"
#include "ui/Symbol.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QEnterEvent>
#include <QFontMetricsF>
#include <QPainter>

#include <cmath>
#include <utility>

namespace velmo {

namespace {

constexpr int kInset = 8;
constexpr int kHeight = 38;
constexpr int kBetweenBoxes = 2;
constexpr int kRadius = 9;
constexpr int kIcon = 16;
constexpr int kIconX = 18;
constexpr int kTextX = 44;
constexpr int kTextRight = 16;

const QString kHelp = QStringLiteral("Abrir y marcar este momento en el video");

} // namespace

KitRow::KitRow(QString symbol, const QString& title, QWidget* parent)
    : QAbstractButton(parent), symbol_(std::move(symbol)),
      hover_(this, Fade::kHover, QEasingCurve::Linear, [this] { update(); }) {
    setText(title);
    setAccessibleName(title);
    setAccessibleDescription(kHelp);
    setFont(Type::font(TextStyle::body));
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::NoFocus);
    setFixedHeight(rowHeight());
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

int KitRow::rowHeight() {
    return Type::heightFor(kHeight);
}

int KitRow::textRoom() const {
    return width() - kTextX - kTextRight;
}

void KitRow::resizeEvent(QResizeEvent* event) {
    QAbstractButton::resizeEvent(event);
    QString oneLine = text();
    oneLine.replace(u'\n', u' ');
    shown_ = QFontMetricsF(font()).elidedText(oneLine, Qt::ElideRight, textRoom());
    // A title is plain text, whatever it looks like.
    setToolTip(shown_ == oneLine ? kHelp : QStringLiteral("<qt>%1<br>%2</qt>").arg(oneLine.toHtmlEscaped(), kHelp));
}

void KitRow::enterEvent(QEnterEvent* event) {
    hover_.moveTo(1);
    QAbstractButton::enterEvent(event);
}

void KitRow::leaveEvent(QEvent* event) {
    hover_.moveTo(0);
    QAbstractButton::leaveEvent(event);
}

void KitRow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box(kInset, kBetweenBoxes / 2.0, width() - 2 * kInset, height() - kBetweenBoxes);
    const QColor hovered = Theme::withOpacity(Theme::surface2, Theme::surface2.alphaF() * hover_.value());
    const QColor fill = isDown() ? Theme::over(Theme::surface2, Theme::surface2) : hovered;
    Painting::roundedBox(painter, box, kRadius, fill, Qt::transparent);
    Symbol::paint(painter, QRectF(kIconX, 0, kIcon, height()), symbol_, kIcon,
                  hover_.value() > 0.5 || isDown() ? Theme::sky : Theme::muted);
    painter.setFont(font());
    painter.setPen(Theme::sand);
    const double baseline = std::round(box.center().y() + QFontMetricsF(font()).capHeight() / 2);
    painter.drawText(QPointF(kTextX, baseline), shown_);
}

} // namespace velmo
