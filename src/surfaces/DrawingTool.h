#pragma once

#include "settings/EnumTable.h"

#include <QString>

namespace velmo {

/// What the hand holds while it draws on the screen.
enum class DrawingTool { pen, fountain, nib, highlighter, laser, rect, ellipse, arrow, line, eraser };

template <>
struct EnumTable<DrawingTool> {
    struct Row {
        DrawingTool value;
        std::string_view raw;
        std::string_view title;
        std::string_view symbol;
        bool isShape;
    };
    static constexpr std::array<Row, 10> rows{{
        {DrawingTool::pen, "pen", "Bolígrafo", "pencil.tip", false},
        {DrawingTool::fountain, "fountain", "Pluma", "pencil.and.scribble", false},
        {DrawingTool::nib, "nib", "Pluma fuente", "signature", false},
        {DrawingTool::highlighter, "highlighter", "Resaltador", "highlighter", false},
        {DrawingTool::laser, "laser", "Puntero láser", "wand.and.rays", false},
        {DrawingTool::rect, "rect", "Rectángulo a mano", "rectangle", true},
        {DrawingTool::ellipse, "ellipse", "Elipse a mano", "circle", true},
        {DrawingTool::arrow, "arrow", "Flecha a mano", "arrow.up.right", true},
        {DrawingTool::line, "line", "Línea a mano", "line.diagonal", true},
        {DrawingTool::eraser, "eraser", "Borrador", "eraser", false},
    }};
    static_assert(rowsInOrder(rows));
};

/// Name of the icon.
inline QString symbol(DrawingTool tool) {
    return QString::fromUtf8(rowOf(tool).symbol);
}
constexpr bool isShape(DrawingTool tool) {
    return rowOf(tool).isShape;
}

} // namespace velmo
