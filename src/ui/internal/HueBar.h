#pragma once

#include <QSlider>

namespace velmo {

/// The round of hues, 0 to 359, as a bar.
class HueBar final : public QSlider {
    Q_OBJECT
public:
    explicit HueBar(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    void goTo(double x);
};

} // namespace velmo
