#pragma once

#include "platform/synthetic/internal/Scene.h"

namespace velmo::internal {

/// A sheet of squared paper from above, and a hand that draws a curve on it, again and again.
class HandsScene final : public Scene {
public:
    void paintStill(QPainter& painter) const override;
    QRect movingPart() const override { return {250, 70, 1030, 650}; }
    void paintMoving(QPainter& painter, double seconds) const override;
};

} // namespace velmo::internal
