#pragma once

#include "base/Color.h"
#include "base/Geometry.h"
#include "platform/Screens.h"

#include <QRect>

#include <memory>
#include <optional>
#include <vector>

class QWidget;

namespace velmo {

class PointerBubblePanel;
class SpotPanel;

/// What the overlay shows on one screen: the dimming with its disc, and the bubble on the pointer. Each is a window of
/// its own that lets the mouse through, and is on the screen only while there is something of it to see. Points are
/// in the screen's own coordinates, y up. Main thread.
class PointerFXView {
public:
    /// Makes the windows; none is shown.
    explicit PointerFXView(const Screen& screen);
    ~PointerFXView();
    PointerFXView(const PointerFXView&) = delete;
    PointerFXView& operator=(const PointerFXView&) = delete;

    void place(const Screen& screen);
    /// Nothing is shown, and the spot stands at `mouse`. Without colours no bubble will be painted.
    void begin(Point mouse, std::vector<Color> colors);
    /// Nothing is shown any more.
    void end();

    /// The spot stands at once where it would have come to.
    void jumpTo(Point mouse) { spotCenter_ = mouse; }
    /// A bubble that shows already begins anew.
    void startBubble(double now) { bubbleStart_ = now; }
    /// One tick: the spot follows the mouse and comes up or goes; `now` in seconds. True while anything is to be seen.
    bool step(Point mouse, double now, bool spotlight);

    Size size() const { return screen_.frame.size(); }
    Point spotCenter() const { return spotCenter_; }
    double spotAlpha() const { return spotAlpha_; } ///< 0 to 1
    std::optional<double> bubbleStart() const { return bubbleStart_; }
    const QWidget& spot() const;
    const QWidget& bubble() const;

private:
    void showSpot();
    void showBubble(Point mouse, double now);

    Screen screen_;
    QRect place_; // in Qt's coordinates
    Point spotCenter_;
    double spotAlpha_ = 0;
    std::optional<double> bubbleStart_;
    bool drewSomething_ = false;
    std::unique_ptr<SpotPanel> spot_;
    std::unique_ptr<PointerBubblePanel> bubble_;
};

} // namespace velmo
