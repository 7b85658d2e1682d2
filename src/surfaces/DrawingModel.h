#pragma once

#include "surfaces/DrawingItem.h"

#include <QList>

#include <functional>
#include <optional>

namespace velmo {

/// The marks on the screen and how a hand makes them: growing strokes, the eraser, undo. A plain value, without
/// windows or timers; times are seconds of one clock that never goes back, places are points of the view, y up.
class DrawingModel {
public:
    static constexpr qsizetype kMostUndoSteps = 100;
    static constexpr double kLaserSeconds = 1.3;

    /// Gives a seed from 1 to 2^63 - 1 for each stroke.
    using Seeds = std::function<quint64()>;
    explicit DrawingModel(Seeds seeds);

    void press(const DrawingTip& tip, Point at, double now);
    /// False when the movement is too small to count.
    bool drag(Point to, double now);
    void release(double now);

    void undo();
    /// Can be undone.
    void clear();
    /// Takes away the lasers that have faded by `now`.
    void expireLasers(double now);

    const QList<DrawingItem>& strokes() const { return strokes_; }
    const std::optional<DrawingItem>& current() const { return current_; }
    const QList<DrawingItem>& lasers() const { return lasers_; }
    bool isErasing() const { return erasing_; }
    qsizetype undoSteps() const { return history_.size(); }

    /// How much of a laser is left at `now`, from 1 to 0.
    static double laserAlpha(const DrawingItem& laser, double now);

private:
    void remember();
    void erase(Point at);

    Seeds seeds_;
    QList<DrawingItem> strokes_;
    QList<QList<DrawingItem>> history_; // whole snapshots of `strokes_`
    std::optional<DrawingItem> current_;
    QList<DrawingItem> lasers_;
    double lastTime_ = 0;
    bool erasing_ = false;
};

} // namespace velmo
