#pragma once

#include "base/Geometry.h"
#include "compositor/ZoomControls.h"

#include <optional>

namespace velmo {

/// The clocked motion of the zoom window, the spotlight and the column: pure arithmetic, no thread of its own,
/// no allocation. Everything eases by a first-order step, value += (target - value) * min(dt * k, 1).
///
/// At factor s the window is a square of side 1/s in normalised screen space. While the factor is under way the
/// window scales about one fixed point of the screen, so that a zoom is one straight movement with no separate pan.
class ZoomMotion {
public:
    /// A zoom window: its lower left corner and its side.
    struct Window {
        Point o;
        double w = 1;
        friend bool operator==(const Window&, const Window&) = default;
    };

    /// Advances everything to `seconds` (host clock). Time that runs back moves nothing; a gap counts as at most 0.1 s.
    void step(const ZoomControls& controls, double seconds);

    /// Motion goes on although the screen sends no picture. Lets go a little before the last residue is gone.
    bool isMoving(const ZoomControls& controls) const;

    double scale() const { return scale_; }
    void setScale(double scale) { scale_ = scale; }
    Point center() const { return center_; }
    Point centerTarget() const { return centerTarget_; }
    std::optional<double> lastStep() const { return lastStep_; }
    Point spot() const { return spot_; }
    double spotAlpha() const { return spotAlpha_; }
    Point ringPos() const { return ringPos_; }
    double colT() const { return colT_; }
    double zoomTarget() const { return zoomTarget_; }
    const std::optional<Window>& zoomFrom() const { return zoomFrom_; }
    const std::optional<Point>& zoomFixed() const { return zoomFixed_; }

private:
    double advanceClock(double seconds);
    void retarget(const ZoomControls& controls, double target);
    void moveAboutFixedPoint(const ZoomControls& controls, double target);
    void settle(const ZoomControls& controls, double dt);

    double scale_ = 1.0;
    Point center_{0.5, 0.5};
    Point centerTarget_{0.5, 0.5};
    std::optional<double> lastStep_;
    Point spot_{0.5, 0.5};
    double spotAlpha_ = 0.0;
    Point ringPos_{0.5, 0.5};
    double colT_ = 0.0;
    double zoomTarget_ = 1.0;
    std::optional<Window> zoomFrom_;
    std::optional<Point> zoomFixed_;
};

} // namespace velmo
