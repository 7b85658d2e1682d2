#pragma once

#include <QRect>

class QPainter;

namespace velmo::internal {

/// Something to see at 1280x720: what never moves, and one part in which all movement lies.
class Scene {
public:
    static constexpr int kWidth = 1280;
    static constexpr int kHeight = 720;

    virtual ~Scene() = default;
    virtual void paintStill(QPainter& painter) const = 0;
    /// Even coordinates and size, inside the picture.
    virtual QRect movingPart() const = 0;
    /// Over the still picture, clipped to the moving part. `seconds` since any fixed moment.
    virtual void paintMoving(QPainter& painter, double seconds) const = 0;
};

} // namespace velmo::internal
