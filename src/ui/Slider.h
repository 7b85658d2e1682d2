#pragma once

#include <QSlider>

namespace velmo {

/// A value between two ends, on a thin track. A click on the track goes there. Main thread.
class Slider final : public QSlider {
    Q_OBJECT
public:
    /// `name` is what assistive technology calls it.
    explicit Slider(const QString& name, QWidget* parent = nullptr);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    void goTo(double x);
    double knobX() const;

    bool byKeyboard_ = false;
};

} // namespace velmo
