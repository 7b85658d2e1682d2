#pragma once

#include "ui/Fade.h"

#include <QWidget>

namespace velmo {

/// Loudness as 22 segments from green to red. Main thread; repaints only when a segment changes.
class LevelMeter final : public QWidget {
    Q_OBJECT
public:
    static constexpr int kSegments = 22;

    explicit LevelMeter(QWidget* parent = nullptr);

    /// 0 to 1; rises at once and falls by itself: from all segments to none in 120 ms, at once while hidden.
    void setLevel(double level);
    int lit() const { return lit_; }

    /// How many segments a level from 0 to 1 lights.
    static int segmentsFor(double level);
    /// Colour of a segment that is lit, counted from 0.
    static QColor colorOf(int segment);

protected:
    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void light(int segments);

    int lit_ = 0;
    int wanted_ = 0;
    Fade fall_; ///< of the segments that are lit; runs only while there are more than wanted
};

} // namespace velmo
