#pragma once

#include <QColor>
#include <QPixmap>
#include <QWidget>

namespace velmo {

/// The colours of one hue: pale to strong across, light to dark downwards. The arrow keys move too.
class ColorPlane final : public QWidget {
    Q_OBJECT
public:
    explicit ColorPlane(QWidget* parent = nullptr);

    void setColor(const QColor& color);
    /// 0 to 359.
    void setHue(int hue);
    QColor color() const;

signals:
    void moved();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void goTo(double strength, double light);

    int hue_ = 0;
    double strength_ = 1; ///< 0 to 1
    double light_ = 1;    ///< 0 to 1
};

} // namespace velmo
