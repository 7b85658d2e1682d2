#pragma once

#include <QWidget>

#include <array>

namespace velmo {

/// Loudness as five columns on the bar. Repaints only when a column changes.
class LevelColumns final : public QWidget {
    Q_OBJECT
public:
    static constexpr int kColumns = 5;
    using Heights = std::array<int, kColumns>;

    explicit LevelColumns(QWidget* parent = nullptr);

    /// 0 to 1.
    void setLevel(double level);
    void setPaused(bool paused);

    /// 4 to 16 points each, for a level from 0 to 1: the middle is highest.
    static Heights heightsFor(double level);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void show(const Heights& heights);

    Heights heights_;
    bool paused_ = false;
};

} // namespace velmo
