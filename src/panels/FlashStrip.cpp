#include "panels/FlashStrip.h"

#include "ui/Painting.h"
#include "ui/Shadow.h"
#include "ui/Symbol.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace velmo {

namespace {

constexpr int kIn = 160;
constexpr int kOut = 220;
constexpr double kRise = 6;
constexpr int kPadding = 16;
constexpr int kIcon = 16;
constexpr int kGap = 8;
constexpr int kShadowAbove = 10;
constexpr int kShadowBeside = 16;
constexpr int kShadowBelow = 22;

struct Kind {
    const char* begin;
    const char* symbol;
};

constexpr Kind kKinds[] = {
    {"Marcador ", "bookmark.fill"},
    {"Capítulo ", "bookmark.fill"},
    {"No te escuchamos", "mic.fill"},
};

} // namespace

FlashStrip::FlashStrip(QWidget* parent)
    : QWidget(parent), seen_(this, kIn, QEasingCurve::OutCubic, [this] { step(); }) {
    setFixedSize(kMostWidth + 2 * kShadowBeside, kShadowAbove + kHeight + kShadowBelow);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

int FlashStrip::bottom() {
    return kShadowAbove + kHeight;
}

QString FlashStrip::symbolFor(const QString& text) {
    const auto found = std::find_if(std::begin(kKinds), std::end(kKinds),
                                    [&](const Kind& kind) { return text.startsWith(QString::fromUtf8(kind.begin)); });
    return found == std::end(kKinds) ? QString() : QString::fromLatin1(found->symbol);
}

void FlashStrip::setFlash(const std::optional<QString>& text) {
    if (text) {
        text_ = *text;
        setAccessibleName(text_);
    }
    seen_.setDuration(text ? kIn : kOut);
    seen_.setEasingCurve(text ? QEasingCurve::OutCubic : QEasingCurve::InCubic);
    seen_.moveTo(text ? 1 : 0);
    step();
}

void FlashStrip::step() {
    update();
    if (const QRectF seen = seenStrip(); seen != announced_) {
        announced_ = seen;
        emit stripChanged();
    }
}

QRectF FlashStrip::strip() const {
    const double text = QFontMetricsF(Type::font(TextStyle::label)).horizontalAdvance(text_);
    const double icon = symbolFor(text_).isEmpty() ? 0 : kIcon + kGap;
    const double wide = std::min(
        {std::ceil(text) + icon + 2 * kPadding, static_cast<double>(kMostWidth), static_cast<double>(width())});
    return QRectF(std::round((width() - wide) / 2), kShadowAbove, wide, kHeight);
}

void FlashStrip::paintEvent(QPaintEvent*) {
    if (seen_.value() <= 0) {
        return;
    }
    QPainter painter(this);
    painter.setOpacity(seen_.value());
    painter.translate(0, kRise * (1 - seen_.value()));
    const QRectF box = strip();
    Shadow::paint(painter, box, kHeight / 2.0, Elevation::hover);
    Painting::roundedBox(painter, box, kHeight / 2.0, Theme::floating(), Theme::strongBorder());
    double x = box.left() + kPadding;
    const QString symbol = symbolFor(text_);
    if (!symbol.isEmpty()) {
        Symbol::paint(painter, QRectF(x, box.top(), kIcon, kHeight), symbol, kIcon, Theme::gold);
        x += kIcon + kGap;
    }
    const QFont font = Type::font(TextStyle::label);
    const QFontMetricsF metrics(font);
    painter.setFont(font);
    painter.setPen(Theme::sand);
    painter.drawText(QPointF(x, std::round(box.center().y() + metrics.capHeight() / 2)),
                     metrics.elidedText(text_, Qt::ElideRight, box.right() - kPadding - x + 0.5));
}

} // namespace velmo
