#pragma once

#include <QTimer>
#include <QWidget>

namespace velmo {

/// The dot of the bar: red and pulsing while recording, amber and still while paused. Its timer runs only while it
/// can be seen.
class RecordingDot final : public QWidget {
    Q_OBJECT
public:
    explicit RecordingDot(QWidget* parent = nullptr);
    void setPaused(bool paused);

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void runTimer();

    QTimer pulse_;
    int step_ = 0;
    bool paused_ = false;
};

} // namespace velmo
