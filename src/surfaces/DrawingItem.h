#pragma once

#include "base/Geometry.h"
#include "surfaces/DrawingTool.h"

#include <QColor>
#include <QList>
#include <QtGlobal>

#include <optional>

namespace velmo {

/// What a mark on the screen is: a tool without the eraser, which leaves none. Same order as the tools.
enum class DrawingKind { pen, fountain, nib, highlighter, laser, rect, ellipse, arrow, line };

constexpr DrawingTool toolOf(DrawingKind kind) {
    return static_cast<DrawingTool>(kind);
}
constexpr bool isShape(DrawingKind kind) {
    return isShape(toolOf(kind));
}
/// Absent for the eraser.
constexpr std::optional<DrawingKind> kindOf(DrawingTool tool) {
    return tool == DrawingTool::eraser ? std::nullopt : std::optional(static_cast<DrawingKind>(tool));
}

/// One finished or running mark. A value whose copies share what they hold.
struct DrawingItem {
    DrawingKind kind = DrawingKind::pen;
    QList<Point> points;           ///< points of the view, y up; a shape has two, where it began and its corner of now
    QList<double> widths;          ///< of the fountain pen, one a point; begins with `width`
    QColor color;                  ///< with the alpha of its tool
    double width = 0;              ///< points
    quint64 seed = 1;              ///< fixes a shape's wobble for ever; unlike that of every other mark
    std::optional<double> endedAt; ///< when a laser's stroke ended, in seconds of the clock

    friend bool operator==(const DrawingItem&, const DrawingItem&) = default;
};

/// The colour and width of a tool, and what it starts with.
struct DrawingTip {
    DrawingTool tool = DrawingTool::pen;
    QColor color;     ///< as chosen
    double width = 0; ///< as chosen, points
};

/// A mark of one touch at `at`. Not for the eraser.
DrawingItem startedItem(const DrawingTip& tip, Point at, quint64 seed);

/// The places by which the eraser finds a mark.
QList<Point> eraserTestPoints(const DrawingItem& item);
/// Whether an eraser at `place` takes the mark away.
bool isErasedAt(const DrawingItem& item, Point place);

} // namespace velmo
