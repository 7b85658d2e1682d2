#pragma once

#include "base/Geometry.h"
#include "compositor/NameTagImage.h"
#include "settings/NameTag.h"

#include <optional>

namespace velmo {

/// The name on the stage: its place, and how it comes and goes. A value.
class PresenterTag {
public:
    static constexpr double kDelaySeconds = 0.525; ///< 70 % of the flight
    static constexpr double kInSeconds = 0.35;
    static constexpr double kOutSeconds = 0.2;

    /// For a stage that lies at `stage`, with the radius `corner`, in a window of the height `windowHeight`; `scale` is
    /// the pixels of a point. Absent when the text has no room. `now` in seconds: when the flight begins.
    static std::optional<PresenterTag> make(const NameTag::Text& text, const Rect& stage, double corner,
                                            double windowHeight, double scale, double now);

    /// Goes from how far it has come up.
    void leave(double now);
    /// 0 to 1.
    double opacity(double now) const;
    /// It changes no more.
    bool isStill(double now) const;

    const NameTag::Image& image() const { return image_; }
    const Rect& place() const { return place_; } ///< points of the window, y up

private:
    NameTag::Image image_;
    Rect place_;
    double begun_ = 0;
    std::optional<double> left_;
    double leftFrom_ = 1; ///< opacity when it left
};

} // namespace velmo
