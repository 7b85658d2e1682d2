#pragma once

#include <array>
#include <cstdint>

namespace velmo::internal {

/// The gain of the spotlight over the squared distance from its middle.
///
/// Light falls evenly from the inner radius to the outer, where `1 - 0.78 * alpha` of it is left: that is said of
/// linear light. Code values are its 2.2th root, so the gain on them is the 2.2th root of the gain on light.
class LightProfile {
public:
    static constexpr double kInnerRadius = 0.17; ///< of the height of the frame
    static constexpr double kOuterRadius = kInnerRadius * 1.45;

    /// Distances are whole numbers of which this many make the outer radius.
    static constexpr int kUnitsPerRadius = 1 << 14;
    /// A squared distance, shifted right by this, is an index; from `kOutside` on it stays there.
    static constexpr int kIndexShift = 17;
    static constexpr int kOutside = 1 << 11;
    /// A gain of 1, or the nearest to it that 15 bits hold: no code value is changed by it.
    static constexpr int kWholeGain = (1 << 15) - 1;

    LightProfile() { gains_.fill(kWholeGain); }

    /// Works out the gains for an opacity from 0 to 1, if it is another than the last.
    void prepare(double alpha);

    /// In 1/2^15.
    const std::int32_t* gains() const { return gains_.data(); }
    int outsideGain() const { return gains_[kOutside]; }

private:
    double alpha_ = 0;
    std::array<std::int32_t, kOutside + 1> gains_{};
};

} // namespace velmo::internal
