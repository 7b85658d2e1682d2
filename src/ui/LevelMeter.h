#pragma once

#include <QWidget>

namespace velmo {

/// Loudness as 22 segments from green to red. Main thread; repaints only when a segment changes.
class LevelMeter final : public QWidget {
    Q_OBJECT
public:
    static constexpr int kSegments = 22;

    explicit LevelMeter(QWidget* parent = nullptr);

    /// 0 to 1; rises at once, falls over 120 ms by being told again.
    void setLevel(double level);
    int lit() const { return lit_; }

    /// How many segments a level from 0 to 1 lights.
    static int segmentsFor(double level);
    /// Colour of a segment that is lit, counted from 0.
    static QColor colorOf(int segment);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int lit_ = 0;
};

} // namespace velmo
