// Numbers of half precision: by instruction where there is one, else by arithmetic with the same results, NaNs
// included.
#if defined(ORPSP_SIMD_HALF_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_SIMD_HALF_INL_H_
#undef ORPSP_SIMD_HALF_INL_H_
#else
#define ORPSP_SIMD_HALF_INL_H_
#endif

#include <hwy/highway.h>

#include "simd/round-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

#if HWY_TARGET == HWY_AVX3
HWY_INLINE auto FromHalf(hn::Vec256<uint16_t> half) { return hn::Vec512<float>{_mm512_cvtph_ps(half.raw)}; }
template <Rounding rounding>
HWY_INLINE auto ToHalf(hn::Vec512<float> v) {
  constexpr int kControl = rounding == Rounding::kZero ? _MM_FROUND_TO_ZERO : _MM_FROUND_TO_NEAREST_INT;
  return hn::Vec256<uint16_t>{_mm512_cvtps_ph(v.raw, kControl | _MM_FROUND_NO_EXC)};
}
#elif HWY_TARGET == HWY_AVX2
HWY_INLINE auto FromHalf(hn::Vec128<uint16_t> half) { return hn::Vec256<float>{_mm256_cvtph_ps(half.raw)}; }
template <Rounding rounding>
HWY_INLINE auto ToHalf(hn::Vec256<float> v) {
  constexpr int kControl = rounding == Rounding::kZero ? _MM_FROUND_TO_ZERO : _MM_FROUND_TO_NEAREST_INT;
  return hn::Vec128<uint16_t>{_mm256_cvtps_ph(v.raw, kControl | _MM_FROUND_NO_EXC)};
}
#else
template <class V>
HWY_INLINE auto FromHalf(V half) {
  constexpr hn::Rebind<float, hn::DFromV<V> > d;
  constexpr hn::Rebind<int32_t, decltype(d)> di;
  const auto bits = hn::PromoteTo(di, half);
  const auto magnitude = hn::And(bits, hn::Set(di, 0x7FFF));
  const auto sign = hn::ShiftLeft<16>(hn::Xor(bits, magnitude));
  const auto shifted = hn::ShiftLeft<13>(magnitude);
  const auto normal = hn::Add(shifted, hn::Set(di, (127 - 15) << 23));
  const auto subnormal = hn::BitCast(di, hn::Mul(hn::ConvertTo(d, magnitude), hn::Set(d, 0x1p-24F)));
  const auto quiet = hn::IfThenElseZero(hn::Gt(magnitude, hn::Set(di, 0x7C00)), hn::Set(di, 0x7FC00000));
  const auto special = hn::Or(hn::Or(shifted, hn::Set(di, 0x7F800000)), quiet);
  auto result = hn::IfThenElse(hn::Lt(magnitude, hn::Set(di, 0x0400)), subnormal, normal);
  result = hn::IfThenElse(hn::Gt(magnitude, hn::Set(di, 0x7BFF)), special, result);
  return hn::BitCast(d, hn::Or(result, sign));
}

template <Rounding rounding, class V>
HWY_INLINE auto ToHalf(V v) {
  constexpr hn::DFromV<V> d;
  constexpr hn::Rebind<int32_t, decltype(d)> di;
  constexpr hn::Rebind<uint32_t, decltype(d)> du;
  constexpr hn::Rebind<uint16_t, decltype(d)> dh;
  constexpr bool kTruncates = rounding == Rounding::kZero;
  const auto magnitude = hn::BitCast(di, hn::Abs(v));
  const auto sign = hn::And(hn::ShiftRight<16>(hn::BitCast(du, v)), hn::Set(du, 0x8000));
  auto carried = magnitude;  // rounded by adding, overflow running into the exponent
  if constexpr (!kTruncates) {
    const auto odd = hn::And(hn::ShiftRight<13>(magnitude), hn::Set(di, 1));
    carried = hn::Add(magnitude, hn::Add(odd, hn::Set(di, 0x0FFF)));
  }
  const auto rebased = hn::Sub(hn::ShiftRight<13>(carried), hn::Set(di, (127 - 15) << 10));
  const auto normal = hn::Min(rebased, hn::Set(di, kTruncates ? 0x7BFF : 0x7C00));
  const auto units = hn::Mul(hn::Abs(v), hn::Set(d, 0x1p24F));  // of the subnormal numbers
  const auto subnormal = [units]() HWY_ATTR {
    if constexpr (kTruncates) {
      return TruncatedInt32(units);
    } else {
      return NearestInt32(units);
    }
  }();
  const auto quiet = hn::IfThenElseZero(hn::Gt(magnitude, hn::Set(di, 0x7F800000)), hn::Set(di, 0x0200));
  const auto payload = hn::And(hn::ShiftRight<13>(magnitude), hn::Set(di, 0x03FF));
  const auto special = hn::Or(hn::Or(payload, quiet), hn::Set(di, 0x7C00));
  auto result = hn::IfThenElse(hn::Lt(magnitude, hn::Set(di, 0x38800000)), subnormal, normal);
  result = hn::IfThenElse(hn::Gt(magnitude, hn::Set(di, 0x7F7FFFFF)), special, result);
  return hn::TruncateTo(dh, hn::Or(hn::BitCast(du, result), sign));
}
#endif

// Source of half-precision elements as single precision.
struct HalfVector {
  using Type = Orp16f;
  static constexpr size_t kElementBytes = sizeof(float);
  const Orp16f* p;

  const Orp16u* Bits() const { return reinterpret_cast<const Orp16u*>(p); }
  template <size_t count>
  HWY_INLINE auto Load(size_t i) const {
    return FromHalf(hn::LoadU(hn::FixedTag<Orp16u, count>{}, Bits() + i));
  }
  template <size_t count>
  HWY_INLINE auto LoadFew(size_t few) const {
    return FromHalf(HWY_NAMESPACE::LoadFew(hn::FixedTag<Orp16u, count>{}, Bits(), few));
  }
  HWY_INLINE HalfVector From(size_t i) const { return {p + i}; }
  HWY_INLINE bool IsAt(const void* other) const { return p == other; }
};

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif
