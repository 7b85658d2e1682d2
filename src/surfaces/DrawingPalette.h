#pragma once

#include "platform/Screens.h"
#include "ui/FloatingPanel.h"

#include <functional>
#include <vector>

class QButtonGroup;
class QHBoxLayout;

namespace velmo {

class Button;
class ScreenDrawing;

/// The row of tools, colours and widths with which the teacher draws. It writes each choice straight to the drawing
/// and shows what the drawing has. Main thread. Never takes the focus; kept out of the video.
class DrawingPalette final : public FloatingPanel {
    Q_OBJECT
public:
    static constexpr int kHeight = 50; ///< of the card

    /// Borrowed.
    explicit DrawingPalette(ScreenDrawing& drawing);
    ~DrawingPalette() override;

    /// At the top of the screen, in the middle.
    void placeOn(const Screen& screen);
    /// Goes below `area` where it would cover any of it.
    void keepClearOf(const QRect& area);
    /// Where it is, or as near as the `frame` lets it. Qt's coordinates.
    void keepInside(const QRect& frame);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void addTools(QHBoxLayout& row);
    void addColors(QHBoxLayout& row);
    void addWidths(QHBoxLayout& row);
    void addActions(QHBoxLayout& row);
    void showTip();

    ScreenDrawing& drawing_;
    QButtonGroup* tools_;  // by the tools' order
    QButtonGroup* colors_; // by index, as the widths
    QButtonGroup* widths_;
    Button* done_ = nullptr;
    QWidget* donePlace_ = nullptr; // holds the button's room in the row, without its glow
};

} // namespace velmo
