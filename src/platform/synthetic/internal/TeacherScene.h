#pragma once

#include "platform/synthetic/internal/Scene.h"

namespace velmo::internal {

/// A teacher in a warm room, who speaks, blinks, breathes and moves the head a little.
class TeacherScene final : public Scene {
public:
    void paintStill(QPainter& painter) const override;
    QRect movingPart() const override { return {296, 64, 688, 656}; }
    void paintMoving(QPainter& painter, double seconds) const override;
};

} // namespace velmo::internal
