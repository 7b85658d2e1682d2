#include "library/views/BoardPreview.h"

#include "ui/Painting.h"
#include "ui/Symbol.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QPainter>
#include <QPainterPath>

namespace velmo {

namespace {

constexpr QSize kBoard(560, 264);
constexpr int kBubble = 124;
constexpr QSize kWhole(kBoard.width() + 32, kBoard.height() + 34);

QPen chalk(const QColor& color, double width) {
    return QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

void paintBoard(QPainter& painter) {
    const QRectF board{QPointF(), QSizeF(kBoard)};
    Painting::roundedBox(painter, board, 16, Theme::over(Theme::surface2, Theme::navy), Theme::strongBorder());
    const QColor line = Theme::withOpacity(Theme::surface, 0.05);
    for (int x = 32; x < kBoard.width(); x += 32) {
        painter.fillRect(QRectF(x, 1, 1, kBoard.height() - 2), line);
    }
    for (int y = 32; y < kBoard.height(); y += 32) {
        painter.fillRect(QRectF(1, y, kBoard.width() - 2, 1), line);
    }
    Painting::roundedBox(painter, {180, 260, 200, 9}, 4.5, Theme::navyDeep, Qt::transparent);
    Painting::roundedBox(painter, {206, 255, 30, 6}, 3, Theme::sand, Qt::transparent);
    Painting::roundedBox(painter, {242, 256, 20, 5}, 2.5, Theme::sky, Qt::transparent);
}

void paintClock(QPainter& painter) {
    const QRectF pill(18, 16, 72, 26);
    Painting::roundedBox(painter, pill, 13, Theme::withOpacity(Theme::navyDeep, 0.86), Qt::transparent);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::rec);
    painter.drawEllipse(QPointF(pill.left() + 14, pill.center().y()), 4, 4);
    QFont font = Type::font(TextStyle::caption);
    font.setWeight(QFont::DemiBold);
    painter.setFont(font);
    painter.setPen(Theme::sand);
    painter.drawText(pill.adjusted(24, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("00:00"));
}

void paintCurve(QPainter& painter) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(chalk(Theme::withOpacity(Theme::sand, 0.85), 2.6));
    painter.drawLine(QPointF(70, 206), QPointF(70, 70));
    painter.drawLine(QPointF(58, 196), QPointF(274, 196));
    painter.drawPolyline(QPolygonF{{62, 80}, {70, 70}, {78, 80}});
    painter.drawPolyline(QPolygonF{{264, 188}, {274, 196}, {264, 204}});
    QPainterPath curve(QPointF(74, 192));
    curve.cubicTo({128, 188}, {126, 84}, {176, 84});
    curve.cubicTo({214, 84}, {212, 150}, {260, 152});
    painter.strokePath(curve, chalk(Theme::sky, 3.2));
    painter.setPen(chalk(Theme::gold, 2.4));
    painter.drawLine(QPointF(102, 190), QPointF(164, 78));
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::gold);
    painter.drawEllipse(QPointF(130, 140), 6, 6);
}

void paintFormula(QPainter& painter) {
    QFont font = Type::font(TextStyle::display);
    font.setWeight(QFont::Normal);
    font.setItalic(true);
    font.setPixelSize(26); // a drawing keeps its proportions
    painter.setFont(font);
    painter.setPen(Theme::sand);
    painter.drawText(QPointF(318, 90), QStringLiteral("f ′(x) = lím"));
    font.setPixelSize(14);
    painter.setFont(font);
    painter.setPen(Theme::muted);
    painter.drawText(QPointF(446, 110), QStringLiteral("h → 0"));
    painter.setPen(chalk(Theme::mint, 2.6));
    QPainterPath stroke(QPointF(318, 128));
    stroke.cubicTo({368, 124}, {420, 130}, {468, 127});
    painter.strokePath(stroke, painter.pen());
    painter.setPen(chalk(Theme::withOpacity(Theme::sand, 0.35), 2.6));
    for (const QLineF& line : {QLineF(318, 156, 430, 156), QLineF(318, 178, 402, 178), QLineF(318, 200, 418, 200)}) {
        painter.drawLine(line);
    }
}

void paintBubble(QPainter& painter) {
    const QRectF bubble(kWhole.width() - kBubble - 2, kWhole.height() - kBubble - 2, kBubble, kBubble);
    painter.setPen(QPen(Theme::skyBright, 3.5));
    painter.setBrush(Theme::over(Theme::chosen(), Theme::navyDeep));
    painter.drawEllipse(bubble.adjusted(2, 2, -2, -2));
    Symbol::paint(painter, bubble, QStringLiteral("person.crop.circle"), 64, Theme::muted);
}

} // namespace

BoardPreview::BoardPreview(QWidget* parent) : QWidget(parent) {
    setFixedSize(kWhole);
}

void BoardPreview::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintBoard(painter);
    paintClock(painter);
    paintCurve(painter);
    paintFormula(painter);
    paintBubble(painter);
}

} // namespace velmo
