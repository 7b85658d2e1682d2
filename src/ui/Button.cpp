#include "ui/Button.h"

#include "ui/Painting.h"
#include "ui/Shadow.h"
#include "ui/Symbol.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QEnterEvent>
#include <QFocusEvent>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QPainter>

#include <array>
#include <cmath>

namespace velmo {

namespace {

struct Measures {
    int height;
    int radius;
    int padding; ///< at each side of text
    int leastWidth;
    TextStyle text;
    int icon;
};

Measures measures(ButtonStyle style) {
    switch (style) {
    case ButtonStyle::primaryLarge:
        return {44, 12, 24, 120, TextStyle::heading, 16};
    case ButtonStyle::primarySmall:
        return {28, 8, 12, 28, TextStyle::strong, 14};
    case ButtonStyle::finish:
        return {38, 10, 14, 38, TextStyle::strong, 15};
    case ButtonStyle::bar:
        return {36, 10, 10, 36, TextStyle::strong, 18};
    case ButtonStyle::icon:
        return {28, 8, 0, 28, TextStyle::strong, 16};
    default:
        return {34, 9, 16, 34, TextStyle::strong, 16};
    }
}

/// Those that stand in a row of a fixed height keep theirs, which has room for larger text.
int heightOf(ButtonStyle style) {
    const int height = measures(style).height;
    const bool grows = style != ButtonStyle::bar && style != ButtonStyle::finish && style != ButtonStyle::icon &&
                       style != ButtonStyle::primarySmall;
    return grows ? Type::heightFor(height) : height;
}

constexpr int kGap = 8;
constexpr int kNarrowWidth = 30;
constexpr int kGlowBelow = 16;

/// Fills at rest, under the pointer and pressed.
struct Fills {
    QColor rest;
    QColor hover;
    QColor pressed;
    QColor border;
};

Fills fills(ButtonStyle style) {
    const QColor none = Theme::withOpacity(Theme::surface2, 0);
    const QColor pressedGhost = Theme::over(Theme::withOpacity(Theme::navyDeep, 0.2), Theme::surface2);
    switch (style) {
    case ButtonStyle::ghost:
    case ButtonStyle::icon:
        return {Theme::surface, Theme::surface2, pressedGhost, style == ButtonStyle::ghost ? Theme::border : none};
    case ButtonStyle::danger:
        return {Theme::danger(), Theme::mix(Theme::rec, 0.88, Theme::navyDeep),
                Theme::mix(Theme::rec, 0.66, Theme::navyDeep), none};
    case ButtonStyle::finish:
        return {Theme::sand, Theme::nsColor(0xFFFFFF), Theme::mix(Theme::navyDeep, 0.1, Theme::sand), none};
    case ButtonStyle::bar:
        return {none, Theme::surface2, Theme::over(Theme::surface2, Theme::surface2), none};
    default:
        return {none, Theme::surface2, pressedGhost, none};
    }
}

QColor between(const QColor& from, const QColor& to, double share) {
    const auto part = [share](float a, float b) { return static_cast<float>(a + (b - a) * share); };
    return QColor::fromRgbF(part(from.redF(), to.redF()), part(from.greenF(), to.greenF()),
                            part(from.blueF(), to.blueF()), part(from.alphaF(), to.alphaF()));
}

QColor halved(QColor color) {
    return Theme::withOpacity(color, color.alphaF() / 2);
}

} // namespace

Button::Button(ButtonStyle style, const QString& text, QWidget* parent)
    : QAbstractButton(parent), style_(style), symbolSize_(measures(style).icon),
      hover_(this, Fade::kHover, QEasingCurve::Linear, [this] { update(); }) {
    setText(text);
    setFont(Type::font(measures(style).text));
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(style == ButtonStyle::bar || style == ButtonStyle::finish ? Qt::NoFocus : Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
}

void Button::setSymbol(const QString& name) {
    if (symbol_ != name) {
        symbol_ = name;
        updateGeometry();
        update();
    }
}

void Button::setSymbolSize(int size) {
    symbolSize_ = size;
    updateGeometry();
    update();
}

void Button::setSubdued(bool subdued) {
    subdued_ = subdued;
    update();
}

void Button::setNarrow(bool narrow) {
    if (narrow_ != narrow) {
        narrow_ = narrow;
        updateGeometry();
        update();
    }
}

void Button::setHasMenu(bool hasMenu) {
    hasMenu_ = hasMenu;
    update();
}

QMargins Button::room() const {
    if (style_ == ButtonStyle::bar || style_ == ButtonStyle::finish || style_ == ButtonStyle::icon || isSmall()) {
        return {};
    }
    return QMargins(kRoom, kRoom, kRoom, isPrimary() ? kGlowBelow : kRoom);
}

QSize Button::sizeHint() const {
    const Measures m = measures(style_);
    double width = 0;
    if (!text().isEmpty()) {
        width = QFontMetricsF(font()).horizontalAdvance(text()) + 2 * m.padding +
                (symbol_.isEmpty() ? 0 : symbolSize_ + kGap);
    }
    const QMargins around = room();
    const int leastWidth = narrow_ ? kNarrowWidth : m.leastWidth;
    return QSize(std::max(leastWidth, static_cast<int>(std::ceil(width))) + around.left() + around.right(),
                 heightOf(style_) + around.top() + around.bottom());
}

QRect Button::shape() const {
    return rect().marginsRemoved(room());
}

bool Button::hitButton(const QPoint& position) const {
    return shape().contains(position);
}

void Button::enterEvent(QEnterEvent* event) {
    hover_.moveTo(isEnabled() ? 1 : 0);
    QAbstractButton::enterEvent(event);
}

void Button::leaveEvent(QEvent* event) {
    hover_.moveTo(0);
    QAbstractButton::leaveEvent(event);
}

void Button::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QAbstractButton::keyPressEvent(event);
    } else if (!event->isAutoRepeat()) {
        // The repeats of a key that closed one dialog must not answer the next one.
        click();
    }
}

void Button::setEmphasized(bool emphasized) {
    emphasized_ = emphasized;
    update();
}

void Button::focusVisibly() {
    showsFocus_ = true;
    setFocus(Qt::TabFocusReason);
}

void Button::focusInEvent(QFocusEvent* event) {
    if (event->reason() != Qt::ActiveWindowFocusReason) {
        showsFocus_ = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    }
    QAbstractButton::focusInEvent(event);
    update();
}

void Button::focusOutEvent(QFocusEvent* event) {
    // A window that comes back shows the focus as it did.
    showsFocus_ = showsFocus_ && event->reason() == Qt::ActiveWindowFocusReason;
    QAbstractButton::focusOutEvent(event);
    update();
}

void Button::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box = shape();
    if (isPrimary()) {
        paintPrimary(painter, box);
    } else {
        paintFloor(painter, box);
    }
    if (showsFocus_ && hasFocus()) {
        Painting::focusRing(painter, box, measures(style_).radius);
    }
    paintContent(painter, box);
    if (hasMenu_) {
        Symbol::paint(painter, QRectF(box.right() - 12, box.bottom() - 12, 9, 9), QStringLiteral("chevron.down"), 9,
                      inkColor());
    }
}

void Button::paintFloor(QPainter& painter, const QRectF& box) const {
    const Fills look = fills(style_);
    const bool bare = style_ == ButtonStyle::icon && subdued_;
    QColor fill = between(bare ? Theme::withOpacity(look.rest, 0) : look.rest, look.hover, hover_.value());
    QColor border = emphasized_ ? Theme::withOpacity(Theme::skyBright, 0.75) : look.border;
    if (style_ == ButtonStyle::bar && !text().isEmpty()) {
        fill = between(look.hover, look.pressed, hover_.value()); // words on a bar need to look like a button
    }
    if (isDown()) {
        fill = look.pressed;
    } else if (isChecked()) {
        fill = Theme::lit();
        border = Theme::litOutline();
    }
    if (!isEnabled()) {
        fill = halved(fill);
    }
    Painting::roundedBox(painter, box, measures(style_).radius, fill, border);
}

void Button::paintPrimary(QPainter& painter, const QRectF& box) const {
    const double radius = measures(style_).radius;
    if (isEnabled() && !isDown() && !isSmall()) {
        Shadow::paintGlow(painter, box, radius, Theme::brand);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::gradient(box));
    painter.setOpacity(isEnabled() ? 1 : 0.5);
    painter.drawRoundedRect(box, radius, radius);
    painter.setOpacity(1);
    const QColor veil = isDown() ? Theme::withOpacity(Theme::navyDeep, 0.12)
                                 : Theme::withOpacity(Theme::nsColor(0xFFFFFF), 0.08 * hover_.value());
    painter.setBrush(veil);
    painter.drawRoundedRect(box, radius, radius);
    if (isEnabled()) {
        painter.save();
        painter.setClipRect(QRectF(box.topLeft(), QSizeF(box.width(), 2)), Qt::IntersectClip);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(Theme::withOpacity(Theme::nsColor(0xFFFFFF), 0.25), 1));
        painter.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), radius - 0.5, radius - 0.5);
        painter.restore();
    }
}

QColor Button::inkColor() const {
    if (!isEnabled()) {
        return isPrimary() ? Theme::navyDeep : Theme::disabledText();
    }
    switch (style_) {
    case ButtonStyle::primary:
    case ButtonStyle::primaryLarge:
    case ButtonStyle::primarySmall:
    case ButtonStyle::finish:
        return Theme::navyDeep;
    case ButtonStyle::danger:
        return Theme::nsColor(0xFFFFFF);
    case ButtonStyle::quiet:
    case ButtonStyle::icon:
        return between(Theme::muted, Theme::sand, hover_.value());
    case ButtonStyle::bar: {
        if (isChecked()) {
            return Theme::sky;
        }
        const QColor rest = subdued_ ? Theme::muted : Theme::withOpacity(Theme::sand, 0.9);
        return between(rest, Theme::nsColor(0xFFFFFF), hover_.value());
    }
    case ButtonStyle::ghost:
        return isChecked() || emphasized_ ? Theme::sky : Theme::sand;
    }
    return Theme::sand;
}

void Button::paintContent(QPainter& painter, const QRectF& box) const {
    const QColor ink = inkColor();
    const QColor iconInk = style_ == ButtonStyle::finish ? Theme::rec : ink;
    const QFontMetricsF metrics(font());
    const double textWidth = text().isEmpty() ? 0 : metrics.horizontalAdvance(text());
    const double iconWidth = symbol_.isEmpty() ? 0 : symbolSize_;
    const double gap = textWidth > 0 && iconWidth > 0 ? kGap : 0;
    double x = std::round(box.center().x() - (textWidth + iconWidth + gap) / 2);
    if (iconWidth > 0) {
        Symbol::paint(painter, QRectF(x, box.top(), iconWidth, box.height()), symbol_, symbolSize_, iconInk);
        x += iconWidth + gap;
    }
    painter.setFont(font());
    painter.setPen(ink);
    const double baseline = std::round(box.center().y() + metrics.capHeight() / 2);
    painter.drawText(QPointF(x, baseline), text());
}

} // namespace velmo
