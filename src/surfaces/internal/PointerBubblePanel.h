#pragma once

#include "base/Color.h"
#include "ui/FloatingPanel.h"

#include <vector>

namespace velmo {

/// The soap bubble on the pointer: a window just large enough for it, which moves with the mouse. Main thread.
class PointerBubblePanel final : public FloatingPanel {
    Q_OBJECT
public:
    PointerBubblePanel();

    void setColors(std::vector<Color> colors) { colors_ = std::move(colors); }
    /// `radius` in points.
    void setRadius(double radius);
    /// Shows the bubble at its `age` in seconds with its middle at `center`, in Qt's coordinates of the desktop.
    void showAt(QPointF center, double age);

protected:
    QPainterPath outline() const override;
    void paintEvent(QPaintEvent* event) override;

private:
    QPointF middle() const { return QPointF(width() / 2.0, height() / 2.0); }

    std::vector<Color> colors_;
    double radius_ = 0;
    double age_ = 0;
};

} // namespace velmo
