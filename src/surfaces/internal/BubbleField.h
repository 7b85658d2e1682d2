#pragma once

#include "surfaces/internal/BubbleOutline.h"

#include <QRegion>
#include <QSize>

#include <cstdint>
#include <vector>

namespace velmo {

/// What of a panel's pixels is near the bubble's edge, and where they lie by it: everything about the panel that does
/// not change while ring and halo move. Made once for an outline, size and scale.
class BubbleField {
public:
    /// Pixels that lie further in show the picture alone; points. Half of the widest line and one pixel are less.
    static constexpr double kReach = 11;
    /// Steps of `distance` in a pixel.
    static constexpr double kSteps = 16;
    /// Of a whole turn.
    static constexpr int kAngles = 1024;

    BubbleField() = default;
    /// `pixels` of `scale` a point.
    BubbleField(const BubbleOutline& outline, QSize pixels, double scale);

    bool isFor(const BubbleOutline& outline, QSize pixels, double scale) const;
    const BubbleOutline& outline() const { return outline_; }
    QSize pixels() const { return pixels_; }
    double scale() const { return scale_; }

    /// A run of pixels of a row near the edge.
    struct Span {
        int y = 0;
        int begin = 0;
        int end = 0;
        std::size_t first = 0; ///< index of its first pixel in `edge`
    };
    /// A pixel near the edge.
    struct EdgePixel {
        std::uint16_t distance = 0; ///< in steps, 0 at the reach
        std::uint16_t angle = 0;    ///< clockwise from the top, around the middle
    };
    /// A run of pixels that show the picture alone.
    struct Inside {
        int y = 0;
        int begin = 0;
        int end = 0;
    };
    const std::vector<Span>& spans() const { return spans_; }
    const std::vector<EdgePixel>& edge() const { return edge_; }
    const std::vector<Inside>& insides() const { return insides_; }
    /// How many values `EdgePixel::distance` has.
    int distanceCount() const;
    /// In points; below 0 inside.
    double distanceOf(int steps) const { return steps / (kSteps * scale_) - kReach; }
    /// The pixels that the picture fills.
    QRect picture() const;
    /// All pixels near the edge, in points: what a step of the ring repaints.
    const QRegion& ringRegion() const { return ringRegion_; }

private:
    void addRow(int y);
    void makeRegion();

    BubbleOutline outline_;
    QSize pixels_;
    double scale_ = 1;
    std::vector<Span> spans_;
    std::vector<EdgePixel> edge_;
    std::vector<Inside> insides_;
    QRegion ringRegion_;
};

} // namespace velmo
