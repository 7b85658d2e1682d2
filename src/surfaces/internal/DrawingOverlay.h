#pragma once

#include "surfaces/DrawingView.h"
#include "ui/FloatingPanel.h"

#include <QRegion>

#include <functional>

namespace velmo {

/// The clear window over a whole screen that carries the canvas. It lets the mouse through unless `take` was called.
/// Without a compositing manager it is cut to its ink and takes the mouse from where it has no window. Main thread.
class DrawingOverlay final : public FloatingPanel {
    Q_OBJECT
public:
    /// `place` in Qt's coordinates of the desktop.
    DrawingOverlay(const QRect& place, DrawingView::Services services, std::function<DrawingTip()> tip);

    DrawingView& view() { return view_; }
    const DrawingView& view() const { return view_; }
    /// The mouse draws; comes to the front.
    void take();
    /// The mouse goes to what is behind.
    void letThrough();

protected:
    QRegion seenRegion() const override { return seen_; }
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    // What is cut off is no place of the canvas for Qt; all of the mouse is the canvas's all the same.
    void mousePressEvent(QMouseEvent* event) override { toView(event); }
    void mouseMoveEvent(QMouseEvent* event) override { toView(event); }
    void mouseReleaseEvent(QMouseEvent* event) override { toView(event); }

private:
    void cutOut(const QRegion& area);
    void toView(QMouseEvent* event);

    DrawingView view_;
    QRegion seen_; // the ink, where no compositing manager runs
};

} // namespace velmo
