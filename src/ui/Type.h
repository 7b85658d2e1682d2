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

/// Fonts by their use, as large as the desktop wants text. Main thread.
namespace Type {

/// From 1, as designed, to 2; all fonts are larger by that. What is no text keeps its size.
double scale();
/// Before the first window is made: what is made already keeps its size.
void setScale(double factor);
/// For a desktop whose font has `points`, on a screen where text is drawn with `dotsPerInch`.
double scaleFor(double points, double dotsPerInch);
/// A length along a line of text, given for scale 1.
int scaled(int length);
/// The height of a control with one line of text, given for scale 1. Up to a quarter more has room in it as it is.
int heightFor(int height);

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
