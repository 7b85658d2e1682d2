#pragma once

#include "ui/FloatingPanel.h"

#include <QImage>

namespace velmo {

/// Dims a whole screen but for a soft disc. Its opacity is how far the spotlight has come up. Main thread.
///
/// Moving the disc repaints where it was and where it is, nothing else; fading repaints nothing, the compositing
/// manager does it. Without a compositing manager a dark line shows the disc's edge and the screen stays as it is.
class SpotPanel final : public FloatingPanel {
    Q_OBJECT
public:
    SpotPanel();

    /// In own coordinates, y down.
    void setCenter(QPointF center);

protected:
    QPainterPath outline() const override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    double innerRadius() const;
    QRectF holeAround(QPointF center) const;
    const QImage& holeImage();

    QPointF center_;
    QRectF hole_;  ///< the square around the disc, on whole device pixels
    QImage image_; // made for one side in pixels
};

} // namespace velmo
