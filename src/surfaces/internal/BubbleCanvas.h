#pragma once

#include "surfaces/RingMotion.h"
#include "surfaces/internal/BubbleField.h"

#include <QImage>

#include <array>
#include <cstdint>
#include <vector>

namespace velmo {

/// Paints a bubble with all its layers into one image in one pass: tint, shadow, glow, picture, ring. Soft edges and
/// lines are tables over the distance from the edge, so that a step of the ring or another width costs the pixels near
/// the edge and nothing is blurred or stroked. Allocates when the size changes and not afterwards.
class BubbleCanvas {
public:
    enum class Part {
        all,
        edge, ///< only what ring and halo touch; the rest is as it was
    };

    /// True when it is another place: the next `paint` must be of all.
    bool setPlace(const BubbleOutline& outline, QSize pixels, double scale);
    /// Size of the picture that `paint` takes.
    QSize pictureSize() const { return field_.picture().size(); }
    const QRegion& ringRegion() const { return field_.ringRegion(); }

    void paint(Part part, const RingState& state, const QImage& picture);
    /// Premultiplied.
    const QImage& image() const { return image_; }

private:
    /// What the layers are at one distance from the edge, 0 to 255.
    struct Profile {
        std::uint8_t tint = 0;
        std::uint8_t glow = 0;
        std::uint8_t picture = 0;
        std::uint8_t ring = 0;
    };
    /// What the profiles are made of.
    struct ProfileKey {
        RingState::Soft tint;
        RingState::Soft glow;
        RingState::Line glowLine;
        RingState::Line ring;
        friend bool operator==(const ProfileKey&, const ProfileKey&) = default;
    };

    void makeShadow(const RingState::Shadow& shadow);
    void makeProfiles(const RingState& state);
    void makeAngles(const RingState& state);
    void paintSpan(const BubbleField::Span& span, const QImage& picture);

    BubbleField field_;
    QImage image_;
    RingState::Shadow shadow_;
    std::vector<std::uint8_t> shadows_; // by pixel near the edge
    ProfileKey profileKey_;
    std::vector<Profile> profiles_; // by distance
    std::array<std::uint32_t, BubbleField::kAngles> angles_{};
    std::uint32_t halo_ = 0;
};

} // namespace velmo
