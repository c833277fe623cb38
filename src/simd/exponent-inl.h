// Pairs of doubles scaled by powers of two, so that their squares neither overflow nor underflow.
#if defined(ORPSP_SIMD_EXPONENT_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_SIMD_EXPONENT_INL_H_
#undef ORPSP_SIMD_EXPONENT_INL_H_
#else
#define ORPSP_SIMD_EXPONENT_INL_H_
#endif

#include <hwy/highway.h>

#include "simd/map-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// Biased exponents, away from their ends so that 2^x and 2^-x are normal.
constexpr uint64_t kLeastExponent = 1, kMostExponent = 2045, kUnitExponent = 1023;

// The larger part of each number, as bits: these order magnitudes, and a NaN above all of them.
template <class V>
HWY_INLINE auto LargerPart(V pairs) {
  constexpr hn::RebindToUnsigned<hn::DFromV<V>> du;
  const auto magnitude = hn::BitCast(du, hn::Abs(pairs));
  return hn::Max(magnitude, hn::Reverse2(du, magnitude));
}

template <class V>
HWY_INLINE V ExponentOf(V bits) {
  constexpr hn::DFromV<V> du;
  return hn::Min(hn::Max(hn::ShiftRight<52>(bits), hn::Set(du, kLeastExponent)), hn::Set(du, kMostExponent));
}

// 2^-x for the biased exponent of 2^x.
template <class V>
HWY_INLINE auto InversePowerOfTwo(V exponent) {
  constexpr hn::DFromV<V> du;
  return hn::BitCast(hn::RebindToFloat<decltype(du)>{},
                     hn::ShiftLeft<52>(hn::Sub(hn::Set(du, 2 * kUnitExponent), exponent)));
}

// v * 2^(up - down) for biased exponents, in two factors that are within range.
template <class V, class U>
HWY_INLINE V TimesPowerOfTwo(V v, U up, U down) {
  constexpr hn::DFromV<U> du;
  const auto shift = hn::Sub(hn::Add(up, hn::Set(du, 4 * kUnitExponent)), down);  // positive
  const auto firstHalf = hn::ShiftRight<1>(shift), secondHalf = hn::Sub(shift, firstHalf);
  const auto factor = [=](auto half) HWY_ATTR {
    return hn::BitCast(hn::DFromV<V>{}, hn::ShiftLeft<52>(hn::Sub(half, hn::Set(du, kUnitExponent))));
  };
  return hn::Mul(hn::Mul(v, factor(firstHalf)), factor(secondHalf));
}

// |z|^2 in both lanes of a pair.
template <class V>
HWY_INLINE V SquareOfPairs(V pairs) {
  const auto squares = hn::Mul(pairs, pairs);
  return hn::Add(squares, hn::Reverse2(hn::DFromV<V>{}, squares));
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif
