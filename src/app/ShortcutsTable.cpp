#include "app/ShortcutsTable.h"

#include "ui/Painting.h"
#include "ui/Symbol.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmo {
namespace {

constexpr int kRowHeight = 33;
constexpr int kLeastRowHeight = 28;
constexpr int kInset = 12;
constexpr int kKeyColumn = 118;
constexpr int kCapHeight = 22;
constexpr int kCapPadding = 8;
constexpr int kGap = 6;
constexpr int kNoteIcon = 13;
constexpr int kBeforeNote = 16;
constexpr double kStripeRadius = 8;
constexpr double kCapRadius = 6;

int rowCount() {
    return static_cast<int>(Shortcuts::list.size());
}

double widthOf(TextStyle style, const QString& text) {
    return std::ceil(QFontMetricsF(Type::font(style)).horizontalAdvance(text));
}

double noteWidth() {
    return kBeforeNote + kNoteIcon + kGap + widthOf(TextStyle::caption, Shortcuts::takenNote());
}

} // namespace

ShortcutsTable::ShortcutsTable(QWidget* parent) : QWidget(parent) {
    setAccessibleName(Shortcuts::message());
    setState({});
}

void ShortcutsTable::setState(Shortcuts::State state) {
    state_ = std::move(state);
    setAccessibleDescription(Shortcuts::informativeText(state_));
    updateGeometry();
    update();
}

int ShortcutsTable::keyColumn() const {
    double widest = 0;
    for (const Shortcuts::Row& row : Shortcuts::list) {
        widest = std::max(widest, keys(nullptr, {}, row));
    }
    return std::max(Type::scaled(kKeyColumn), static_cast<int>(widest) + kInset);
}

QSize ShortcutsTable::sizeWith(int rowHeight) const {
    double widest = 0;
    for (const Shortcuts::Row& row : Shortcuts::list) {
        const double note = Shortcuts::isTaken(row, state_) ? noteWidth() : 0;
        widest = std::max(widest, widthOf(TextStyle::body, QString::fromUtf8(row.description)) + note);
    }
    return {kInset + keyColumn() + static_cast<int>(widest) + kInset, rowCount() * rowHeight};
}

QSize ShortcutsTable::sizeHint() const {
    return sizeWith(Type::heightFor(kRowHeight));
}

QSize ShortcutsTable::minimumSizeHint() const {
    return sizeWith(kLeastRowHeight);
}

void ShortcutsTable::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double rowHeight = static_cast<double>(height()) / rowCount();
    for (int index = 0; index < rowCount(); ++index) {
        const QRectF box(0, index * rowHeight, width(), rowHeight);
        if (index % 2 == 0) {
            Painting::roundedBox(painter, box, kStripeRadius, Theme::surface, Qt::transparent);
        }
        paintRow(painter, box, Shortcuts::list[static_cast<std::size_t>(index)]);
    }
}

void ShortcutsTable::paintRow(QPainter& painter, const QRectF& box, const Shortcuts::Row& row) const {
    keys(&painter, box.adjusted(kInset, 0, 0, 0), row);
    QRectF place = box.adjusted(kInset + keyColumn(), 0, -kInset, 0);
    const bool taken = Shortcuts::isTaken(row, state_);
    painter.setFont(Type::font(TextStyle::body));
    painter.setPen(taken ? Theme::muted : Theme::sand);
    painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft, QString::fromUtf8(row.description));
    if (!taken) {
        return;
    }
    place.setLeft(place.right() - noteWidth() + kBeforeNote);
    Symbol::paint(painter, QRectF(place.left(), place.top(), kNoteIcon, place.height()),
                  QStringLiteral("exclamationmark.triangle"), kNoteIcon, Theme::gold);
    painter.setFont(Type::font(TextStyle::caption));
    painter.setPen(Theme::gold);
    painter.drawText(place, Qt::AlignVCenter | Qt::AlignRight, Shortcuts::takenNote());
}

double ShortcutsTable::keys(QPainter* painter, const QRectF& column, const Shortcuts::Row& row) const {
    const bool taken = Shortcuts::isTaken(row, state_);
    double x = column.left();
    for (const QString& token : QString::fromUtf8(row.key).split(u' ', Qt::SkipEmptyParts)) {
        const bool cap = token.startsWith(u'⌃') || token.startsWith(u'⌥');
        const TextStyle style = cap ? TextStyle::strong : TextStyle::body;
        const QString text = shortcutText(token, state_.modifier);
        const int height = std::max(kCapHeight, Type::lineHeight(style));
        const QRectF box(x, column.center().y() - height / 2.0, widthOf(style, text) + (cap ? 2 * kCapPadding : 0),
                         height);
        x = box.right() + kGap;
        if (painter == nullptr) {
            continue;
        }
        if (cap) {
            Painting::roundedBox(*painter, box, kCapRadius, Theme::surface2, Theme::strongBorder());
        }
        painter->setFont(Type::font(style));
        painter->setPen(cap && !taken ? Theme::sand : Theme::muted);
        painter->drawText(box, Qt::AlignCenter, text);
    }
    return x - kGap - column.left();
}

} // namespace velmo
