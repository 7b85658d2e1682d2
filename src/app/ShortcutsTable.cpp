#include "app/ShortcutsTable.h"

#include "app/Shortcuts.h"
#include "ui/Painting.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace velmo {
namespace {

constexpr int kRowHeight = 33;
constexpr int kLeastRowHeight = 28;
constexpr int kInset = 12;
constexpr int kKeyColumn = 118;
constexpr int kCapHeight = 22;
constexpr int kCapPadding = 8;
constexpr int kGap = 6;
constexpr double kStripeRadius = 8;
constexpr double kCapRadius = 6;

int rowCount() {
    return static_cast<int>(Shortcuts::list.size());
}

bool isCap(const QString& token) {
    return token.startsWith(u'⌃') || token.startsWith(u'⌥');
}

} // namespace

ShortcutsTable::ShortcutsTable(QWidget* parent) : QWidget(parent) {
    setAccessibleName(Shortcuts::message());
    setAccessibleDescription(Shortcuts::informativeText());
}

int ShortcutsTable::widestDescription() const {
    const QFontMetrics metrics(Type::font(TextStyle::body));
    int widest = 0;
    for (const Shortcuts::Row& row : Shortcuts::list) {
        widest = std::max(widest, metrics.horizontalAdvance(QString::fromUtf8(row.description)));
    }
    return widest;
}

QSize ShortcutsTable::sizeHint() const {
    return {kInset + kKeyColumn + widestDescription() + kInset, rowCount() * kRowHeight};
}

QSize ShortcutsTable::minimumSizeHint() const {
    return {sizeHint().width(), rowCount() * kLeastRowHeight};
}

void ShortcutsTable::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double rowHeight = static_cast<double>(height()) / rowCount();
    for (int index = 0; index < rowCount(); ++index) {
        const Shortcuts::Row& row = Shortcuts::list[static_cast<std::size_t>(index)];
        const QRectF box(0, index * rowHeight, width(), rowHeight);
        if (index % 2 == 0) {
            Painting::roundedBox(painter, box, kStripeRadius, Theme::surface, Qt::transparent);
        }
        paintKeys(painter, box.adjusted(kInset, 0, 0, 0), QString::fromUtf8(row.key));
        painter.setFont(Type::font(TextStyle::body));
        painter.setPen(Theme::sand);
        painter.drawText(box.adjusted(kInset + kKeyColumn, 0, -kInset, 0), Qt::AlignVCenter | Qt::AlignLeft,
                         QString::fromUtf8(row.description));
    }
}

void ShortcutsTable::paintKeys(QPainter& painter, const QRectF& column, const QString& keys) const {
    const QFont capFont = Type::font(TextStyle::strong);
    const QFont plainFont = Type::font(TextStyle::body);
    double x = column.left();
    for (const QString& token : keys.split(u' ', Qt::SkipEmptyParts)) {
        const bool cap = isCap(token);
        const QFont& font = cap ? capFont : plainFont;
        const double textWidth = std::ceil(QFontMetricsF(font).horizontalAdvance(token));
        const QRectF box(x, column.center().y() - kCapHeight / 2.0, textWidth + (cap ? 2 * kCapPadding : 0),
                         kCapHeight);
        if (cap) {
            Painting::roundedBox(painter, box, kCapRadius, Theme::surface2, Theme::strongBorder());
        }
        painter.setFont(font);
        painter.setPen(cap ? Theme::sand : Theme::muted);
        painter.drawText(box, Qt::AlignCenter, token);
        x = box.right() + kGap;
    }
}

} // namespace velmo
