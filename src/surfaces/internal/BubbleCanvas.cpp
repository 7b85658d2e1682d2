#include "surfaces/internal/BubbleCanvas.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numbers>

namespace velmo {
namespace {

constexpr double kFadeFrom = 8; // points from the edge at which soft layers begin to run out towards the panel's edge

std::uint32_t div255(std::uint32_t value) {
    value += 128;
    return (value + (value >> 8)) >> 8;
}

std::uint32_t rgb(const Color& color) {
    const auto part = [](double value) {
        return static_cast<std::uint32_t>(std::lround(std::clamp(value, 0.0, 1.0) * 255));
    };
    return part(color.red) << 16 | part(color.green) << 8 | part(color.blue);
}

std::uint8_t byte(double value) {
    return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0, 1.0) * 255));
}

/// A blurred straight edge: what is left of the inside at `distance` outside.
double softEdge(double distance, double blur) {
    return 0.5 * std::erfc(distance / (blur * std::numbers::sqrt2));
}

/// 1 near the bubble, 0 where the panel ends: no soft layer is cut.
double fade(double distance) {
    const double part = std::clamp((distance - kFadeFrom) / (BubbleOutline::kPad - kFadeFrom), 0.0, 1.0);
    return 1 - part * part * (3 - 2 * part);
}

/// How much of a pixel at `distance` pixels lies on the inner side of a line.
double inner(double distance) {
    return std::clamp(0.5 - distance, 0.0, 1.0);
}

/// A pixel in its parts, of premultiplied colour.
struct Parts {
    std::uint32_t alpha;
    std::uint32_t red;
    std::uint32_t green;
    std::uint32_t blue;

    void lay(std::uint32_t color, std::uint32_t coverage) {
        const std::uint32_t rest = 255 - coverage;
        alpha = div255(alpha * rest + 255 * coverage);
        red = div255(red * rest + (color >> 16 & 0xff) * coverage);
        green = div255(green * rest + (color >> 8 & 0xff) * coverage);
        blue = div255(blue * rest + (color & 0xff) * coverage);
    }
    std::uint32_t pixel() const { return alpha << 24 | red << 16 | green << 8 | blue; }
};

} // namespace

bool BubbleCanvas::setPlace(const BubbleOutline& outline, QSize pixels, double scale) {
    if (field_.isFor(outline, pixels, scale)) {
        return false;
    }
    field_ = BubbleField(outline, pixels, scale);
    if (image_.size() != pixels) {
        image_ = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
    }
    image_.setDevicePixelRatio(scale);
    image_.fill(0);
    shadows_.clear();
    profiles_.clear();
    return true;
}

void BubbleCanvas::makeShadow(const RingState::Shadow& shadow) {
    if (shadow == shadow_ && !shadows_.empty()) {
        return;
    }
    shadow_ = shadow;
    shadows_.resize(field_.edge().size());
    for (const BubbleField::Span& span : field_.spans()) {
        for (int x = span.begin; x < span.end; ++x) {
            const std::size_t index = span.first + static_cast<std::size_t>(x - span.begin);
            const QPointF caster((x + 0.5) / field_.scale(), (span.y + 0.5) / field_.scale() - shadow.down);
            const double soft = softEdge(field_.outline().distance(caster), shadow.blur);
            shadows_[index] = byte(shadow.opacity * soft * fade(field_.distanceOf(field_.edge()[index].distance)));
        }
    }
}

void BubbleCanvas::makeProfiles(const RingState& state) {
    const ProfileKey key{state.tint, state.glow, state.glowLine, state.ring};
    if (key == profileKey_ && !profiles_.empty()) {
        return;
    }
    profileKey_ = key;
    profiles_.resize(static_cast<std::size_t>(field_.distanceCount()));
    const double scale = field_.scale();
    const auto line = [scale](const RingState::Line& of, double distance) {
        const double half = of.width / 2;
        return of.opacity * (inner((distance - half) * scale) - inner((distance + half) * scale));
    };
    for (std::size_t i = 0; i < profiles_.size(); ++i) {
        // The middle of the step, so that nothing is shifted by rounding.
        const double distance = field_.distanceOf(static_cast<int>(i)) + 0.5 / (BubbleField::kSteps * scale);
        const auto soft = [distance](const RingState::Soft& of) {
            return of.opacity > 0 ? of.opacity * softEdge(distance, of.blur) * fade(distance) : 0;
        };
        const double glow = 1 - (1 - soft(state.glow)) * (1 - line(state.glowLine, distance));
        profiles_[i] = {byte(soft(state.tint)), byte(glow), byte(inner(distance * scale)),
                        byte(line(state.ring, distance))};
    }
}

void BubbleCanvas::makeAngles(const RingState& state) {
    halo_ = rgb(state.haloColor);
    if (state.stopCount < 2) {
        angles_.fill(rgb(state.ringColor));
        return;
    }
    const auto parts = static_cast<double>(state.stopCount - 1);
    for (int i = 0; i < BubbleField::kAngles; ++i) {
        const double turn = static_cast<double>(i) / BubbleField::kAngles - state.turn;
        const double place = (turn - std::floor(turn)) * parts;
        const std::size_t stop = std::min(static_cast<std::size_t>(place), state.stopCount - 2);
        const double part = place - static_cast<double>(stop);
        const Color& a = state.stops[stop];
        const Color& b = state.stops[stop + 1];
        angles_[static_cast<std::size_t>(i)] =
            rgb({a.red + (b.red - a.red) * part, a.green + (b.green - a.green) * part,
                 a.blue + (b.blue - a.blue) * part, 1});
    }
}

void BubbleCanvas::paintSpan(const BubbleField::Span& span, const QImage& picture) {
    const QRect place = field_.picture();
    const int row = std::clamp(span.y - place.y(), 0, picture.height() - 1);
    const auto* from = reinterpret_cast<const std::uint32_t*>(picture.constScanLine(row));
    auto* to = reinterpret_cast<std::uint32_t*>(image_.scanLine(span.y));
    const BubbleField::EdgePixel* pixel = field_.edge().data() + span.first;
    const std::uint8_t* shadow = shadows_.data() + span.first;
    for (int x = span.begin; x < span.end; ++x, ++pixel, ++shadow) {
        const Profile& profile = profiles_[pixel->distance];
        const std::uint32_t open = div255((255U - *shadow) * (255U - profile.glow));
        Parts parts{255 - div255((255U - profile.tint) * open), 0, 0, 0};
        const std::uint32_t halo = std::min(div255(profile.tint * open) + profile.glow, parts.alpha);
        parts.red = div255((halo_ >> 16 & 0xff) * halo);
        parts.green = div255((halo_ >> 8 & 0xff) * halo);
        parts.blue = div255((halo_ & 0xff) * halo);
        if (profile.picture != 0) {
            parts.lay(from[std::clamp(x - place.x(), 0, picture.width() - 1)], profile.picture);
        }
        if (profile.ring != 0) {
            parts.lay(angles_[pixel->angle], profile.ring);
        }
        to[x] = parts.pixel();
    }
}

void BubbleCanvas::paint(Part part, const RingState& state, const QImage& picture) {
    makeShadow(state.shadow);
    makeProfiles(state);
    makeAngles(state);
    for (const BubbleField::Span& span : field_.spans()) {
        paintSpan(span, picture);
    }
    if (part == Part::edge) {
        return;
    }
    const QPoint origin = field_.picture().topLeft();
    for (const BubbleField::Inside& inside : field_.insides()) {
        const auto* from = reinterpret_cast<const std::uint32_t*>(picture.constScanLine(inside.y - origin.y()));
        auto* to = reinterpret_cast<std::uint32_t*>(image_.scanLine(inside.y));
        std::memcpy(to + inside.begin, from + inside.begin - origin.x(),
                    static_cast<std::size_t>(inside.end - inside.begin) * sizeof *to);
    }
}

} // namespace velmo
