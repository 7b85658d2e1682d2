#include "library/views/RecordingCard.h"

#include "library/views/RecordingModel.h"
#include "settings/Format.h"
#include "ui/Painting.h"
#include "ui/Shadow.h"
#include "ui/Symbol.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace velmo {

namespace {

constexpr double kRadius = 14;
constexpr double kTextTop = 11;
constexpr double kTextSide = 13;
constexpr double kTextBottom = 13;
constexpr double kTextGap = 4;
constexpr double kBadgeMargin = 8;
constexpr double kBadgeRadius = 6;
constexpr double kPlayDisc = 48;
constexpr double kBadgeOpacity = 0.86;
constexpr double kVeilOpacity = 0.28;

int pictureHeight(int width) {
    return width * 10 / 16;
}

int cardHeight(int width) {
    return pictureHeight(width) + static_cast<int>(kTextTop + kTextGap + kTextBottom) +
           Type::lineHeight(TextStyle::cardTitle) + Type::lineHeight(TextStyle::caption);
}

/// A rectangle whose upper corners are round.
QPainterPath roundOnTop(const QRectF& rect, double radius) {
    QPainterPath path;
    path.moveTo(rect.bottomLeft());
    path.lineTo(rect.left(), rect.top() + radius);
    path.quadTo(rect.topLeft(), {rect.left() + radius, rect.top()});
    path.lineTo(rect.right() - radius, rect.top());
    path.quadTo(rect.topRight(), {rect.right(), rect.top() + radius});
    path.lineTo(rect.bottomRight());
    path.closeSubpath();
    return path;
}

QImage imageOf(const FrameRef& frame) {
    const PlaneView plane = frame->plane(0);
    return {plane.data, plane.width, plane.height, static_cast<qsizetype>(plane.stride),
            QImage::Format_ARGB32_Premultiplied};
}

/// The middle of `image`, as large as fits the shape of `size`.
QRect middlePart(const QImage& image, QSizeF size) {
    const QSize part = size.scaled(image.size(), Qt::KeepAspectRatio).toSize();
    return {QPoint((image.width() - part.width()) / 2, (image.height() - part.height()) / 2), part};
}

struct CardColors {
    QColor fill;
    QColor border;
};

CardColors cardColors(QStyle::State state) {
    if (state.testFlag(QStyle::State_Selected)) {
        return {Theme::over(Theme::chosen(), Theme::card()), Theme::chosenOutline()};
    }
    if (state.testFlag(QStyle::State_MouseOver)) {
        return {Theme::rowHover(), Theme::withOpacity(Theme::skyBright, 0.65)};
    }
    return {Theme::card(), Theme::border};
}

void paintPlayDisc(QPainter& painter, const QRectF& picture) {
    QRectF disc(0, 0, kPlayDisc, kPlayDisc);
    disc.moveCenter(picture.center());
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::withOpacity(Theme::navyDeep, kBadgeOpacity));
    painter.drawEllipse(disc);
    Symbol::paint(painter, disc.translated(1, 0), QStringLiteral("play.fill"), 18, Theme::sand);
}

} // namespace

RecordingCard::RecordingCard(const RecordingModel& model, QObject* parent)
    : QStyledItemDelegate(parent), model_(model) {
    connect(&model, &QAbstractItemModel::modelReset, this,
            [this] { std::erase_if(pictures_, [this](const auto& each) { return !model_.rowOf(each.first); }); });
}

QSize RecordingCard::cellFor(int width) {
    return {width, cardHeight(width - kGapAcross) + kGapDown};
}

QSize RecordingCard::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    return cell_;
}

void RecordingCard::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const int width = option.rect.width() - kGapAcross;
    const QPoint corner = option.rect.topLeft() + QPoint(kGapAcross / 2, kGapDown / 2);
    const QRectF card(corner, QSizeF(width, cardHeight(width)));
    const QRectF picture(card.left(), card.top(), width, pictureHeight(width));
    const bool hovered = option.state.testFlag(QStyle::State_MouseOver);
    const CardColors colors = cardColors(option.state);

    if (hovered) {
        Shadow::paint(*painter, card, kRadius, Elevation::hover);
    }
    Painting::roundedBox(*painter, card, kRadius, colors.fill, Qt::transparent);
    paintPicture(*painter, picture, index.row());
    if (hovered) {
        painter->fillPath(roundOnTop(picture, kRadius), Theme::withOpacity(Theme::navyDeep, kVeilOpacity));
        paintPlayDisc(*painter, picture);
    }
    paintBadge(*painter, picture, index.row());
    paintText(*painter, QRectF(card.left(), picture.bottom(), width, card.bottom() - picture.bottom()), index.row());
    Painting::roundedBox(*painter, card, kRadius, Qt::transparent, colors.border);
    if (option.state.testFlag(QStyle::State_HasFocus) && option.state.testFlag(QStyle::State_KeyboardFocusChange)) {
        Painting::focusRing(*painter, card, kRadius);
    }
    painter->restore();
}

void RecordingCard::paintPicture(QPainter& painter, const QRectF& picture, int row) const {
    const FrameRef frame = model_.thumbnail(row);
    if (!frame) {
        painter.fillPath(roundOnTop(picture, kRadius), Theme::navyDeep);
        Symbol::paint(painter, picture, QStringLiteral("film"), 24, Theme::disabledText());
        return;
    }
    painter.drawPixmap(picture.topLeft(), scaledPicture(model_.recording(row).url, frame, picture.size(),
                                                        painter.device()->devicePixelRatioF()));
}

const QPixmap& RecordingCard::scaledPicture(const std::filesystem::path& url, const FrameRef& frame, QSizeF size,
                                            double ratio) const {
    Picture& kept = pictures_[url];
    const QSize pixels = (size * ratio).toSize();
    if (kept.source == frame && kept.scaled.size() == pixels) {
        return kept.scaled;
    }
    const QImage image = imageOf(frame);
    QImage made(pixels, QImage::Format_ARGB32_Premultiplied);
    made.fill(Qt::transparent);
    QPainter painter(&made);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(
        image.copy(middlePart(image, size)).scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    painter.drawPath(roundOnTop(QRectF(QPointF(), QSizeF(pixels)), kRadius * ratio));
    painter.end();
    made.setDevicePixelRatio(ratio);
    kept = {frame, QPixmap::fromImage(std::move(made))};
    return kept.scaled;
}

void RecordingCard::paintBadge(QPainter& painter, const QRectF& picture, int row) const {
    const double duration = model_.recording(row).duration;
    if (duration <= 0) {
        return;
    }
    const QString text = Format::duration(duration);
    QFont font = Type::font(TextStyle::caption);
    font.setWeight(QFont::DemiBold);
    const QFontMetricsF metrics(font);
    const QSizeF size(Type::tabularWidth(font, text) + 16, 22);
    const QRectF badge(
        QPointF(picture.right() - kBadgeMargin - size.width(), picture.bottom() - kBadgeMargin - size.height()), size);
    Painting::roundedBox(painter, badge, kBadgeRadius, Theme::withOpacity(Theme::navyDeep, kBadgeOpacity),
                         Qt::transparent);
    painter.setFont(font);
    painter.setPen(Theme::sand);
    Type::drawTabular(painter, {badge.left() + 8, badge.center().y() + metrics.capHeight() / 2}, text);
}

void RecordingCard::paintText(QPainter& painter, const QRectF& text, int row) const {
    const Recording& recording = model_.recording(row);
    const QRectF inner = text.adjusted(kTextSide, kTextTop, -kTextSide, -kTextBottom);
    const QRectF title(inner.left(), inner.top(), inner.width(), Type::lineHeight(TextStyle::cardTitle));
    painter.setFont(Type::font(TextStyle::cardTitle));
    painter.setPen(Theme::sand);
    painter.drawText(title, Qt::AlignLeft | Qt::AlignVCenter,
                     painter.fontMetrics().elidedText(recording.title().simplified(), Qt::ElideRight,
                                                      static_cast<int>(title.width())));

    const QRectF line(inner.left(), title.bottom() + kTextGap, inner.width(), Type::lineHeight(TextStyle::caption));
    painter.setFont(Type::font(TextStyle::caption));
    painter.setPen(Theme::muted);
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, model_.dateText(row));
    if (recording.markers.empty()) {
        return;
    }
    const QString count = QString::number(recording.markers.size());
    painter.setFont(Type::font(TextStyle::chip));
    painter.setPen(Theme::gold);
    painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter, count);
    const double width = QFontMetricsF(painter.font()).horizontalAdvance(count);
    Symbol::paint(painter, QRectF(line.right() - width - 18, line.top(), 13, line.height()), QStringLiteral("bookmark"),
                  13, Theme::gold);
}

} // namespace velmo
