#pragma once

#include "surfaces/BubbleControlsModel.h"
#include "ui/FloatingPanel.h"

#include <array>
#include <optional>

namespace velmo {

/// A capsule with a button for each size of the bubble and one to put it away. A panel of its own, as large as its row:
/// it resizes itself with the model. Main thread.
class BubbleControlsView final : public FloatingPanel {
    Q_OBJECT
public:
    /// `model` is borrowed and must outlive the view.
    explicit BubbleControlsView(BubbleControlsModel& model);

    static constexpr int kButtons = 4; ///< the sizes, then the one that closes
    /// In own coordinates.
    QRectF buttonRect(int index) const;
    /// The row without its shadow.
    QRectF capsule() const;

protected:
    QRegion mouseRegion() const override;
    QPainterPath outline() const override;
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    QSize fittingSize() const;
    std::optional<int> buttonAt(QPointF place) const;
    void setHovered(std::optional<int> index);
    void paintCapsule(QPainter& painter) const;
    void paintButton(QPainter& painter, int index) const;
    void press(int index);

    BubbleControlsModel& model_;
    std::optional<int> hovered_;
    std::optional<int> pressed_;
};

} // namespace velmo
