#pragma once

#include "session/Collaborators.h"
#include "surfaces/DrawingTool.h"
#include "surfaces/DrawingView.h"
#include "ui/Theme.h"

#include <QObject>
#include <QRect>

#include <array>
#include <functional>
#include <memory>

namespace velmo {

class DrawingOverlay;
class DrawingPalette;

/// The teacher draws on the screen while it is recorded. The ink is in the video, since its window is one of those
/// that the recording keeps; the palette is not. Main thread; made once.
class ScreenDrawing final : public QObject, public DrawingPort {
    Q_OBJECT
public:
    using Tool = DrawingTool;

    static constexpr std::array colors = {Theme::nsColor(0xFF453A), Theme::nsColor(0xFFD60A), Theme::nsColor(0x30D158),
                                          Theme::nsColor(0x64D2FF), Theme::nsColor(0x0A84FF), Theme::nsColor(0xFF375F),
                                          Theme::nsColor(0xFFFFFF), Theme::nsColor(0x0D1B2A)};
    static constexpr std::array widths = {3.0, 5.0, 9.0}; ///< points

    /// References borrowed; they outlive the drawing. The functions may be empty: with `bringBubblesToFront` the
    /// cameras stay above the ink, with `script` the palette does not cover what is being read.
    struct Services {
        const Clock& clock;
        MainTimers& timers;
        std::function<void()> bringBubblesToFront = {};
        std::function<QRect()> script = {}; ///< where the script stands; an empty rectangle while it is hidden
    };
    explicit ScreenDrawing(Services services);
    ~ScreenDrawing() override;

    /// Makes the windows anew. The overlay is on the screen, unseen, until `parkPrepared`.
    void prepare(const Screen& screen) override;
    /// The windows go from the screen and live on.
    void parkPrepared() override;
    void toggle() override;
    /// Does nothing without the windows.
    void startDrawing();
    /// The mouse is free again; what was drawn stays to be seen.
    void finishDrawing();
    void undo();
    void clear();
    void teardown() override;
    /// The same from `prepare` to `teardown`.
    std::optional<WindowId> overlayWindowID() const override;

    bool drawing() const { return drawing_; }
    bool hasStrokes() const { return hasStrokes_; }
    Tool tool() const { return tool_; }
    int colorIndex() const { return colorIndex_; }
    int widthIndex() const { return widthIndex_; }
    QColor currentColor() const;
    double currentWidth() const;
    void setTool(Tool tool);
    /// Any index: it wraps around, as that of the widths does.
    void setColorIndex(int index);
    void setWidthIndex(int index);

    /// Null before `prepare` and after `teardown`.
    DrawingOverlay* overlay() const { return overlay_.get(); }
    DrawingPalette* palette() const { return palette_.get(); }

signals:
    void drawingChanged();
    void hasStrokesChanged();
    /// Tool, colour or width.
    void tipChanged();

private:
    void setDrawing(bool drawing);
    void setHasStrokes(bool has);

    Services services_;
    std::unique_ptr<DrawingOverlay> overlay_;
    std::unique_ptr<DrawingPalette> palette_;
    Tool tool_ = Tool::pen;
    int colorIndex_ = 0;
    int widthIndex_ = 1;
    bool drawing_ = false;
    bool mergedMovements_ = false; ///< Qt::AA_CompressHighFrequencyEvents as it was before drawing
    bool hasStrokes_ = false;
};

} // namespace velmo
