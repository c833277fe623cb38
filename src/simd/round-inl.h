// Floating point to integers: rounding by mode, saturation, and the power of two that stands for a scale factor.
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

// 2^-scale, made of the exponent's bits: 0 or infinity beyond the normal numbers.
template <class W>
HWY_INLINE W PowerOfTwo(int scale) {
  using Bits = hwy::MakeUnsigned<W>;
  constexpr int kMantissaBits = sizeof(W) == 4 ? 23 : 52;
  constexpr int kBias = sizeof(W) == 4 ? 127 : 1023;
  const int biased = kBias - HWY_MIN(HWY_MAX(scale, -kBias - 1), kBias);
  return __builtin_bit_cast(W, static_cast<Bits>(static_cast<Bits>(biased) << kMantissaBits));
}

// 2^-scale for exact results that are rounded and saturated: beyond +-100 nothing changes any more, since all but 0
// vanish or saturate.
HWY_INLINE double UnitOfScale(int scale) { return PowerOfTwo<double>(HWY_MIN(HWY_MAX(scale, -100), 100)); }

template <class T, class V, class W = hn::TFromV<V>>
HWY_INLINE V ClampTo(V v) {
  constexpr hn::DFromV<V> d;
  return hn::Min(hn::Max(v, hn::Set(d, static_cast<W>(kLeast<T>))), hn::Set(d, static_cast<W>(kMost<T>)));
}

// The instructions as they are: a number that does not fit becomes the least integer.
#define ORPSP_TO_INT32(name, type, sse, avx2, avx512) \
  template <size_t count>                             \
  HWY_INLINE auto name(hn::Vec128<type, count> v) {   \
    return hn::Vec128<int32_t, count>{sse(v.raw)};    \
  }                                                   \
  ORPSP_TO_INT32_256(name, type, avx2)                \
  ORPSP_TO_INT32_512(name, type, avx512)
#if HWY_TARGET == HWY_AVX2 || HWY_TARGET == HWY_AVX3
#define ORPSP_TO_INT32_256(name, type, avx2) \
  HWY_INLINE auto name(hn::Vec256<type> v) { return hn::Vec<hn::FixedTag<int32_t, 32 / sizeof(type)>>{avx2(v.raw)}; }
#else
#define ORPSP_TO_INT32_256(name, type, avx2)
#endif
#if HWY_TARGET == HWY_AVX3
#define ORPSP_TO_INT32_512(name, type, avx512) \
  HWY_INLINE auto name(hn::Vec512<type> v) { return hn::Vec<hn::FixedTag<int32_t, 64 / sizeof(type)>>{avx512(v.raw)}; }
#else
#define ORPSP_TO_INT32_512(name, type, avx512)
#endif
ORPSP_TO_INT32(NearestInt32, float, _mm_cvtps_epi32, _mm256_cvtps_epi32, _mm512_cvtps_epi32)
ORPSP_TO_INT32(NearestInt32, double, _mm_cvtpd_epi32, _mm256_cvtpd_epi32, _mm512_cvtpd_epi32)
ORPSP_TO_INT32(TruncatedInt32, float, _mm_cvttps_epi32, _mm256_cvttps_epi32, _mm512_cvttps_epi32)
ORPSP_TO_INT32(TruncatedInt32, double, _mm_cvttpd_epi32, _mm256_cvttpd_epi32, _mm512_cvttpd_epi32)
#undef ORPSP_TO_INT32
#undef ORPSP_TO_INT32_256
#undef ORPSP_TO_INT32_512

// What truncation makes of this is v rounded, ties away from zero: with the number below 1/2 a sum that is not exact
// never reaches the next integer from below.
template <class V, class W = hn::TFromV<V>>
HWY_INLINE V AwayBeforeTruncation(V v) {
  constexpr hn::DFromV<V> d;
  constexpr W kBelowHalf = W{0.5} - std::numeric_limits<W>::epsilon() / 4;
  return hn::Add(v, hn::CopySignToAbs(hn::Set(d, kBelowHalf), v));
}

// v as integers of the destination's type, saturated; v is no NaN.
template <Rounding rounding, class D, class V>
HWY_INLINE hn::Vec<D> RoundTo(D d, V v) {
  constexpr hn::DFromV<V> dw;
  const auto integers = [=]() HWY_ATTR {
    const auto clamped = ClampTo<hn::TFromD<D>>(v);
    if constexpr (rounding == Rounding::kZero) {
      return TruncatedInt32(clamped);
    } else if constexpr (rounding == Rounding::kAway) {
      return TruncatedInt32(AwayBeforeTruncation(clamped));
    } else if constexpr (sizeof(hn::TFromV<V>) == 4) {
      return NearestInt32(clamped);
    } else {  // the integer in the lower bits of the sum; quicker than the instruction and narrowing from 32 bits
      return hn::BitCast(hn::RebindToSigned<decltype(dw)>{}, hn::Add(clamped, hn::Set(dw, 0x1.8p52)));
    }
  }();
  using Integer = hn::TFromV<decltype(integers)>;
  if constexpr (sizeof(Integer) == sizeof(hn::TFromD<D>)) {
    return integers;
  } else {  // all are in range: the lower bits are all that is needed
    constexpr hn::RebindToUnsigned<D> du;
    return hn::BitCast(d, hn::TruncateTo(du, hn::BitCast(hn::Rebind<hwy::MakeUnsigned<Integer>, D>{}, integers)));
  }
}

// ---- Any numbers, a NaN giving 0

// The range of a destination of floats.
template <class T>
struct Range {
  static constexpr int64_t kLowest = kLeast<T>, kHighest = kMost<T>;
};
template <>
struct Range<Orp24s> {
  static constexpr int64_t kLowest = -(1 << 23), kHighest = (1 << 23) - 1;
};
template <>
struct Range<Orp24u> {
  static constexpr int64_t kLowest = 0, kHighest = (1 << 24) - 1;
};

template <Rounding rounding, class V>
HWY_INLINE auto Int64(V v) {
#if HWY_TARGET == HWY_AVX3
  return hn::Vec512<int64_t>{rounding == Rounding::kNearest ? _mm512_cvtpd_epi64(v.raw) : _mm512_cvttpd_epi64(v.raw)};
#else
  return hn::ConvertTo(hn::RebindToSigned<hn::DFromV<V>>{}, rounding == Rounding::kNearest ? hn::Round(v) : v);
#endif
}

// Whether ToIntegers leaves what is in range or a NaN to be truncated, lower bits being all that counts. Else narrowing
// must saturate.
template <class T, class W>
inline constexpr bool kTruncates = sizeof(T) == 3 || (sizeof(T) < sizeof(W) && HWY_TARGET == HWY_AVX3);

// v as integers for a destination of type T, in lanes of 32 bits or of W's width.
template <class T, Rounding rounding, class V, class W = hn::TFromV<V>>
HWY_INLINE auto ToIntegers(V v) {
  constexpr hn::DFromV<V> d;
  constexpr bool kWhole = sizeof(T) == sizeof(W);  // then W has too few bits to clamp with
  const auto lowest = hn::Set(d, static_cast<W>(Range<T>::kLowest));
  const auto highest = hn::Set(d, static_cast<W>(Range<T>::kHighest));
  // Minimum and maximum give the second operand where one is a NaN.
  if constexpr (Range<T>::kLowest == 0) {
    v = hn::Max(v, lowest);
  } else if constexpr (kTruncates<T, W>) {
    v = hn::Max(lowest, v);  // a NaN becomes the least integer, with zeros below
  } else if constexpr (!kWhole) {
    v = hn::IfThenElseZero(hn::Eq(v, v), v);
  }
  if constexpr (!kWhole) v = hn::Min(highest, v);
  if constexpr (rounding == Rounding::kAway) v = AwayBeforeTruncation(v);
  const auto integers = [v]() HWY_ATTR {
    if constexpr (sizeof(W) == 8 && (kWhole || (sizeof(T) == 4 && kTruncates<T, W>))) {
      return Int64<rounding>(v);
    } else if constexpr (rounding == Rounding::kNearest) {
      return NearestInt32(v);
    } else {
      return TruncatedInt32(v);
    }
  }();
  if constexpr (kWhole) {
    constexpr hn::DFromV<decltype(integers)> di;
    const auto number = hn::RebindMask(di, hn::Eq(v, v)), beyond = hn::RebindMask(di, hn::Ge(v, highest));
    return hn::IfThenElse(beyond, hn::Set(di, kMost<T>), hn::IfThenElseZero(number, integers));
  } else {
    return integers;
  }
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif
