// Complex vectors as planes of real and imaginary parts, read from pairs and written as pairs or as two vectors.
//
//   Map(Power{}, pDst, len, Planes<Orp32fc>{pSrc});                  // Power is called with (d, Parts{re, im})
//   MapParts(Polar{}, IntoVectors<Orp32f>{pDstMagn, pDstPhase}, len, Planes<Orp32fc>{pSrc});
//
// Parts are in the order of the elements, at every width.
#if defined(ORPSP_SIMD_COMPLEX_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_SIMD_COMPLEX_INL_H_
#undef ORPSP_SIMD_COMPLEX_INL_H_
#else
#define ORPSP_SIMD_COMPLEX_INL_H_
#endif

#include <hwy/highway.h>

#include "simd/integer-inl.h"
#include "simd/map-inl.h"
#include "simd/round-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

template <class V>
struct Parts {
  V re, im;
};

// Pairs in two vectors: the first half of the elements, then the other.
template <class V>
struct Pairs {
  V lower, upper;
};

#if HWY_TARGET == HWY_AVX3
// The lanes of a and b by turns, from lane kFrom of both on: one permutation of both vectors.
template <size_t kFrom, class T>
HWY_INLINE hn::Vec512<T> Alternated(hn::Vec512<T> a, hn::Vec512<T> b) {
  constexpr hn::ScalableTag<T> d;
  constexpr hn::RebindToUnsigned<decltype(d)> du;
  using U = hn::TFromD<decltype(du)>;
  constexpr size_t kLanes = 64 / sizeof(T);
  struct Indices {
    alignas(64) U lane[kLanes];
    constexpr Indices() : lane() {
      for (size_t i = 0; i < kLanes; ++i) lane[i] = static_cast<U>(kFrom + i / 2 + (i % 2) * kLanes);
    }
  };
  static constexpr Indices kIndices;
  const auto indices = hn::Load(du, kIndices.lane);
  const auto one = hn::BitCast(du, a), other = hn::BitCast(du, b);
  hn::Vec512<U> result;
  if constexpr (sizeof(T) == 2) {
    result.raw = _mm512_permutex2var_epi16(one.raw, indices.raw, other.raw);
  } else if constexpr (sizeof(T) == 4) {
    result.raw = _mm512_permutex2var_epi32(one.raw, indices.raw, other.raw);
  } else {
    result.raw = _mm512_permutex2var_epi64(one.raw, indices.raw, other.raw);
  }
  return hn::BitCast(d, result);
}
#endif

template <class V>
HWY_INLINE Parts<V> Split(Pairs<V> pairs) {
  constexpr hn::DFromV<V> d;
  return {hn::ConcatEven(d, pairs.upper, pairs.lower), hn::ConcatOdd(d, pairs.upper, pairs.lower)};
}

template <class V>
HWY_INLINE Pairs<V> Join(Parts<V> parts) {
  constexpr hn::DFromV<V> d;
  if constexpr (sizeof(V) == 64) {
#if HWY_TARGET == HWY_AVX3
    return {Alternated<0>(parts.re, parts.im), Alternated<hn::MaxLanes(d) / 2>(parts.re, parts.im)};
#endif
  } else {
    const V lower = hn::InterleaveLower(d, parts.re, parts.im), upper = hn::InterleaveUpper(d, parts.re, parts.im);
    if constexpr (sizeof(V) == 32) {
      return {hn::ConcatLowerLower(d, upper, lower), hn::ConcatUpperUpper(d, upper, lower)};
    } else {
      return {lower, upper};
    }
  }
}

// Parts as the pairs of one vector of d, which has twice the lanes of a part. (Parts in half vectors come from
// computations and not from memory: a single double cannot be loaded from any address.)
template <class D, class V>
HWY_INLINE hn::Vec<D> JoinTo(D d, Parts<V> parts) {
  constexpr hn::DFromV<V> half;
  if constexpr (sizeof(hn::Vec<D>) == 64) {
#if HWY_TARGET == HWY_AVX3
    return Alternated<0>(hn::ZeroExtendVector(d, parts.re), hn::ZeroExtendVector(d, parts.im));
#endif
  } else if constexpr (sizeof(hn::Vec<D>) == 32) {
    return hn::Combine(d, hn::InterleaveUpper(half, parts.re, parts.im), hn::InterleaveLower(half, parts.re, parts.im));
  } else {
    return hn::InterleaveLower(d, hn::Vec<D>{parts.re.raw}, hn::Vec<D>{parts.im.raw});
  }
}

// A vector of pairs as two vectors of parts, in half as many lanes.
template <class V>
HWY_INLINE auto SplitHalves(V pairs) {
  constexpr hn::DFromV<V> d;
  constexpr hn::Half<decltype(d)> half;
  return Split(Pairs<hn::Vec<decltype(half)>>{hn::LowerHalf(half, pairs), hn::UpperHalf(half, pairs)});
}

// Source: complex elements as Parts.
template <class T>
struct Planes {
  using Type = T;
  static constexpr size_t kElementBytes = sizeof(Lane<T>);
  const T* p;

  template <size_t count>
  HWY_INLINE auto Load(size_t i) const {
    constexpr hn::FixedTag<Lane<T>, count> d;
    const Lane<T>* const from = lanes(p + i);
    return Split(Pairs<hn::Vec<decltype(d)>>{hn::LoadU(d, from), hn::LoadU(d, from + count)});
  }
  template <size_t count>
  HWY_INLINE auto LoadFew(size_t few) const {
    constexpr hn::FixedTag<Lane<T>, count> d;
    const size_t inLower = HWY_MIN(2 * few, count), inUpper = 2 * few - inLower;
    Pairs<hn::Vec<decltype(d)>> pairs{HWY_NAMESPACE::LoadFew(d, lanes(p), inLower), hn::Zero(d)};
    if (inUpper != 0) pairs.upper = HWY_NAMESPACE::LoadFew(d, lanes(p) + count, inUpper);
    return Split(pairs);
  }
  HWY_INLINE Planes From(size_t i) const { return {p + i}; }
  HWY_INLINE bool IsAt(const void* other) const { return p == other; }
};

// ---- Pairs of floats or 16-bit integers as planes of double, where squares neither overflow nor underflow

template <class V>
HWY_INLINE Parts<Doubles> ToDoubles(V pairs) {
  constexpr hn::ScalableTag<double> df64;
  if constexpr (std::is_same_v<hn::TFromV<V>, float>) {
    const auto parts = SplitHalves(pairs);
    return {hn::PromoteTo(df64, parts.re), hn::PromoteTo(df64, parts.im)};
  } else {
    const auto lanes = hn::BitCast(hn::Rebind<int32_t, decltype(df64)>{}, pairs);
    return {hn::PromoteTo(df64, hn::ShiftRight<16>(hn::ShiftLeft<16>(lanes))),
            hn::PromoteTo(df64, hn::ShiftRight<16>(lanes))};
  }
}

// Back, rounded to nearest, ties to even; integers saturate.
template <class D>
HWY_INLINE hn::Vec<D> ToPairs(D d, Parts<Doubles> parts) {
  constexpr hn::ScalableTag<double> df64;
  if constexpr (std::is_same_v<hn::TFromD<D>, float>) {
    constexpr hn::Rebind<float, decltype(df64)> df32;
    return JoinTo(d, Parts<hn::Vec<decltype(df32)>>{hn::DemoteTo(df32, parts.re), hn::DemoteTo(df32, parts.im)});
  } else {
    constexpr hn::Rebind<int32_t, decltype(df64)> di32;
    const auto re = NearestInt32(ClampTo<Orp16s>(parts.re)), im = NearestInt32(ClampTo<Orp16s>(parts.im));
    return hn::BitCast(d, hn::Or(hn::And(re, hn::Set(di32, 0xFFFF)), hn::ShiftLeft<16>(im)));
  }
}

// ---- re^2 + im^2 of integer pairs, exactly

// In lanes of an element's width: only the greatest comes out negative.
template <class V>
HWY_INLINE auto SumOfSquares(V pairs) {
  if constexpr (sizeof(hn::TFromV<V>) == 2) {
    return SumOfPairs(pairs, pairs);
  } else {
    const auto odd = OddLanes(pairs);
    return hn::Add(hn::MulEven(pairs, pairs), hn::MulEven(odd, odd));
  }
}

// As floats, rounded.
HWY_INLINE auto FloatSumOfSquares(auto d, auto pairs) { return hn::Abs(hn::ConvertTo(d, SumOfSquares(pairs))); }
template <class V>
HWY_INLINE auto FloatSumOfSquares(auto d, V re, V im) {
  constexpr hn::Twice<hn::DFromV<V>> pairs;
  return FloatSumOfSquares(d, JoinTo(pairs, Parts<V>{re, im}));
}

// Operation: Finish::Finished makes a 32-bit result of the sum, which is narrowed to 16 bits with saturation.
template <class Finish>
struct OfSumsOfSquares : Finish {
  HWY_INLINE auto operator()(auto d, auto pairs) const { return hn::DemoteTo(d, this->Finished(SumOfSquares(pairs))); }
  HWY_INLINE auto operator()(auto d, auto re, auto im) const {
    const auto lower = hn::InterleaveLower(d, re, im), upper = hn::InterleaveUpper(d, re, im);
    return Pack(this->Finished(SumOfSquares(lower)), this->Finished(SumOfSquares(upper)));
  }
};

// ---- Destinations of an operation that returns Parts

struct StoreToCache {
  HWY_INLINE void operator()(auto v, auto d, auto* p) const { hn::StoreU(v, d, p); }
};
struct StorePastCaches {
  HWY_INLINE void operator()(auto v, auto d, auto* p) const { hn::Stream(v, d, p); }
};

// Two vectors of real elements.
template <class T>
struct IntoVectors {
  using Part = T;
  static constexpr size_t kElementBytes = 2 * sizeof(T);
  T *re, *im;

  template <class Put = StoreToCache, class V>
  HWY_INLINE void Store(Parts<V> parts, size_t i, Put put = {}) const {
    constexpr hn::DFromV<V> d;
    put(parts.re, d, re + i);
    put(parts.im, d, im + i);
  }
  template <class V>
  HWY_INLINE void StoreFew(Parts<V> parts, size_t few) const {
    constexpr hn::DFromV<V> d;
    HWY_NAMESPACE::StoreFew(parts.re, d, re, few);
    HWY_NAMESPACE::StoreFew(parts.im, d, im, few);
  }
  // Elements up to the first one at a multiple of `bytes`, or none if alignment is out of reach.
  HWY_INLINE size_t UpToBoundary(size_t bytes) const {
    const size_t behind = reinterpret_cast<uintptr_t>(re) % bytes;
    return behind % sizeof(T) == 0 ? (bytes - behind) / sizeof(T) % (bytes / sizeof(T)) : 0;
  }
  HWY_INLINE bool IsAligned(size_t i, size_t bytes) const {
    return (reinterpret_cast<uintptr_t>(re + i) | reinterpret_cast<uintptr_t>(im + i)) % bytes == 0;
  }
  HWY_INLINE bool Has(const auto& source) const { return source.IsAt(re) || source.IsAt(im); }
};

// One vector of complex elements.
template <class T>
struct IntoPairs {
  using Part = Lane<T>;
  static constexpr size_t kElementBytes = sizeof(T);
  T* p;

  template <class Put = StoreToCache, class V>
  HWY_INLINE void Store(Parts<V> parts, size_t i, Put put = {}) const {
    constexpr hn::DFromV<V> d;
    const auto pairs = Join(parts);
    put(pairs.lower, d, lanes(p + i));
    put(pairs.upper, d, lanes(p + i) + hn::MaxLanes(d));
  }
  template <class V>
  HWY_INLINE void StoreFew(Parts<V> parts, size_t few) const {
    constexpr hn::DFromV<V> d;
    const auto pairs = Join(parts);
    const size_t inLower = HWY_MIN(2 * few, hn::MaxLanes(d)), inUpper = 2 * few - inLower;
    HWY_NAMESPACE::StoreFew(pairs.lower, d, lanes(p), inLower);
    if (inUpper != 0) HWY_NAMESPACE::StoreFew(pairs.upper, d, lanes(p) + hn::MaxLanes(d), inUpper);
  }
  HWY_INLINE size_t UpToBoundary(size_t bytes) const {
    const size_t behind = reinterpret_cast<uintptr_t>(p) % bytes;
    return behind % sizeof(T) == 0 ? (bytes - behind) / sizeof(T) % (bytes / sizeof(T)) : 0;
  }
  HWY_INLINE bool IsAligned(size_t i, size_t bytes) const { return reinterpret_cast<uintptr_t>(p + i) % bytes == 0; }
  HWY_INLINE bool Has(const auto& source) const { return source.IsAt(p); }
};

// into[i] = op(tag of a part, src[i]...) for every i < len, as Map does it: a source may be a destination itself.
template <class Op, class Into, class... S>
HWY_INLINE void MapParts(const Op& op, const Into& into, size_t len, const S&... src) {
  using T = typename Into::Part;
  constexpr size_t kStep = HWY_MAX_BYTES / HWY_MAX(kWorkBytes<Op>, std::max({sizeof(T), S::kElementBytes...}));
  constexpr size_t kBoundary = kStep * sizeof(T);
  constexpr hn::FixedTag<T, kStep> d;
  if (HWY_UNLIKELY(len < kStep)) {
    into.StoreFew(op(d, src.template LoadFew<kStep>(len)...), len);
    return;
  }
  const size_t end = len - kStep;
  const auto last = op(d, src.template Load<kStep>(end)...);
  size_t i = 0;
  if (len >= 8 * kStep) {
    const auto first = op(d, src.template Load<kStep>(0)...);
    i = into.UpToBoundary(kBoundary);
    if (HWY_UNLIKELY(len >= kStreamBytes / Into::kElementBytes) && kBoundary >= 16 && into.IsAligned(i, kBoundary) &&
        !(into.Has(src) || ...)) {
      for (; i < end; i += kStep) into.Store(op(d, src.template Load<kStep>(i)...), i, StorePastCaches{});
      hwy::FlushStream();
    } else {
      for (; i < end; i += kStep) into.Store(op(d, src.template Load<kStep>(i)...), i);
    }
    into.Store(first, 0);
  } else {
    for (; i < end; i += kStep) into.Store(op(d, src.template Load<kStep>(i)...), i);
  }
  into.Store(last, end);
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif
