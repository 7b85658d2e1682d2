#pragma once

#include <QFont>
#include <QPointF>
#include <QString>

class QPainter;

namespace velmo {

enum class TextStyle {
    display,
    title,
    panelTitle,
    heading,
    cardTitle,
    body,
    label,  ///< body, medium: what names a switch
    strong, ///< body, semibold: buttons, heads of cards
    caption,
    chip,
    overline,
    micro,
    zoomHead, ///< over the zoom level of the control bar
    clock,
    countdown,
};

/// Fonts by their use. Sizes in pixels at scale 1.
namespace Type {

QFont font(TextStyle style);
/// Height of one line.
int lineHeight(TextStyle style);
/// Inter, or the first of its stand-ins that is installed.
QString family();

/// Width of `text` with every digit as wide as the widest: times that tick do not shake.
double tabularWidth(const QFont& font, const QString& text);
/// Draws `text` that way from `baseline` on, in the painter's font and pen.
void drawTabular(QPainter& painter, QPointF baseline, const QString& text);

} // namespace Type

} // namespace velmo
