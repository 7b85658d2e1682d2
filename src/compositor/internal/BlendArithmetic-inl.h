// How anything is laid over a picture: for files that compile themselves once for each instruction set. Values have
// `kFraction` bits, shares 15.

#if defined(VELMO_BLEND_ARITHMETIC_INL) == defined(HWY_TARGET_TOGGLE)
#ifdef VELMO_BLEND_ARITHMETIC_INL
#undef VELMO_BLEND_ARITHMETIC_INL
#else
#define VELMO_BLEND_ARITHMETIC_INL
#endif

#include "compositor/internal/PlaneLayout.h"
#include "compositor/internal/VideoWeights.h"

#include <algorithm>
#include <cstdint>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace velmo::internal {
namespace HWY_NAMESPACE {

constexpr int kFraction = 7;

#if HWY_TARGET == HWY_SCALAR

// The machine without vectors: the same arithmetic, one component at a time.
inline int scaled(int value, int share) {
    return (value * share + (1 << 14)) >> 15;
}

inline std::uint8_t over(int added, int kept, std::uint8_t below) {
    const int sum = added + scaled(below << kFraction, kept);
    return static_cast<std::uint8_t>(std::clamp((sum + (1 << (kFraction - 1))) >> kFraction, 0, 255));
}

inline int weighed(int blue, int green, int red, int alpha, const Weights& by) {
    return scaled(blue, by.blue) + scaled(green, by.green) + scaled(red, by.red) + scaled(alpha, by.alpha);
}

#else

namespace hn = hwy::HWY_NAMESPACE;

using Numbers = hn::Repartition<std::int16_t, hn::CappedTag<std::uint8_t, kBlockBytes>>;
using Number = hn::Vec<Numbers>;

HWY_API Number scaled(Number value, int share) {
    return hn::MulFixedPoint15(value, hn::Set(Numbers(), static_cast<std::int16_t>(share)));
}

HWY_API Number over(Number added, Number kept, Number below) {
    const Numbers numbers;
    const auto sum = hn::Add(added, hn::MulFixedPoint15(hn::ShiftLeft<kFraction>(below), kept));
    const auto code = hn::ShiftRight<kFraction>(hn::Add(sum, hn::Set(numbers, 1 << (kFraction - 1))));
    return hn::Min(hn::Max(code, hn::Zero(numbers)), hn::Set(numbers, 255));
}

HWY_API Number weighed(Number blue, Number green, Number red, Number alpha, const Weights& by) {
    return hn::Add(hn::Add(scaled(blue, by.blue), scaled(green, by.green)),
                   hn::Add(scaled(red, by.red), scaled(alpha, by.alpha)));
}

#endif

} // namespace HWY_NAMESPACE
} // namespace velmo::internal
HWY_AFTER_NAMESPACE();

#endif
