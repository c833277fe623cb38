// Floating point to integers: rounding by mode, and saturation.
#if defined(ORPSP_SIMD_ROUND_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_SIMD_ROUND_INL_H_
#undef ORPSP_SIMD_ROUND_INL_H_
#else
#define ORPSP_SIMD_ROUND_INL_H_
#endif

#include <hwy/highway.h>

#include "simd/integer-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

enum class Rounding { kZero, kNearest, kAway };

template <class T, class V, class W = hn::TFromV<V>>
HWY_INLINE V ClampTo(V v) {
  constexpr hn::DFromV<V> d;
  return hn::Min(hn::Max(v, hn::Set(d, static_cast<W>(kLeast<T>))), hn::Set(d, static_cast<W>(kMost<T>)));
}

// Adding this rounds to an integer, ties to even, and leaves it in the lower bits, in two's complement.
template <class W>
inline constexpr W kNoFraction = sizeof(W) == 4 ? W{0x1.8p23} : W{0x1.8p52};

// v as integers of the destination's type, saturated; v is no NaN.
template <Rounding rounding, class D, class V>
HWY_INLINE hn::Vec<D> RoundTo(D d, V v) {
  using T = hn::TFromD<D>;
  using W = hn::TFromV<V>;
  constexpr hn::DFromV<V> dw;
  constexpr hn::Rebind<int32_t, decltype(dw)> di32;
  v = ClampTo<T>(v);
  if constexpr (rounding == Rounding::kNearest) {
    const auto rounded = hn::Add(v, hn::Set(dw, kNoFraction<W>));
    if constexpr (sizeof(W) == 8) {
      constexpr hn::RebindToUnsigned<D> du;
      return hn::BitCast(d, hn::TruncateTo(du, hn::BitCast(hn::RebindToUnsigned<decltype(dw)>{}, rounded)));
    } else {
      return hn::DemoteTo(d, hn::Sub(hn::BitCast(di32, rounded), hn::BitCast(di32, hn::Set(dw, kNoFraction<W>))));
    }
  } else {
    if constexpr (rounding == Rounding::kAway) v = hn::Add(v, hn::CopySign(hn::Set(dw, W{0.5}), v));
    if constexpr (sizeof(W) == 8) {
      return hn::DemoteTo(d, hn::DemoteTo(di32, v));
    } else {
      return hn::DemoteTo(d, hn::ConvertTo(di32, v));
    }
  }
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif
