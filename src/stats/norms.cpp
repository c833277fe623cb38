// Norms of a vector and of a difference.
#include "orpsp/stats/norms.h"

#include "frame/entry.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "stats/norms.cpp"
#include <hwy/foreach_target.h>

#include "simd/complex-inl.h"
#include "simd/forms-inl.h"
#include "stats/integer_sums-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// A norm is a struct with Of<R, T>(len, vectors...) of elements T, of one vector or of the difference of two, and of
// integers also Scaled<R>(scale, len, vectors...).

// ---- x[n] in lanes of d

template <class D, class V>
HWY_INLINE hn::Vec<D> Value(D d, V v) {
  return Lift(d, v);
}
template <class D, class V>
HWY_INLINE hn::Vec<D> Value(D d, V a, V b) {
  return hn::Sub(Lift(d, a), Lift(d, b));
}

// x[n] of complex elements, in double precision.
template <class V>
HWY_INLINE Parts<Doubles> PartsOf(V a, V b) {
  const auto one = PartsOf(a), other = PartsOf(b);
  return {hn::Sub(one.re, other.re), hn::Sub(one.im, other.im)};
}

// ---- Terms

struct Magnitude {
  HWY_INLINE auto operator()(auto d, auto... v) const { return hn::Abs(Value(d, v...)); }
};

struct MagnitudeSquared {
  HWY_INLINE auto operator()(auto d, auto... v) const {
    const auto x = Value(d, v...);
    return hn::Mul(x, x);
  }
};

HWY_INLINE Doubles SquareOf(Parts<Doubles> x) { return hn::Add(hn::Mul(x.re, x.re), hn::Mul(x.im, x.im)); }

struct ComplexMagnitudeSquared {
  HWY_INLINE auto operator()(auto, auto... v) const { return SquareOf(PartsOf(v...)); }
};

constexpr double kLeastSquare = 0x1p-900, kMostSquare = 0x1p1000;  // of those that lost nothing

template <class T>
struct ComplexMagnitude {
  template <class D>
  HWY_INLINE hn::Vec<D> operator()(D d, auto... v) const {
    const auto x = PartsOf(v...);
    const auto square = SquareOf(x);
    if constexpr (std::is_same_v<T, Orp64fc>) {
      const auto usual = hn::And(hn::Ge(square, hn::Set(d, kLeastSquare)), hn::Le(square, hn::Set(d, kMostSquare)));
      const auto isZero = hn::Eq(hn::Or(x.re, x.im), hn::Zero(d));
      if (HWY_UNLIKELY(!hn::AllTrue(d, hn::Or(usual, isZero)))) return Scaled(d, x);
    }
    return hn::Sqrt(square);
  }

  template <class D>
  static HWY_NOINLINE hn::Vec<D> Scaled(D d, Parts<Doubles> x) {
    const auto one = hn::Set(d, 1.0), up = hn::Set(d, 0x1p600), down = hn::Set(d, 0x1p-600);
    const auto largest = hn::Max(hn::Abs(x.re), hn::Abs(x.im));
    const auto isLarge = hn::Gt(largest, hn::Set(d, 0x1p450)), isSmall = hn::Lt(largest, hn::Set(d, 0x1p-450));
    const auto scale = hn::IfThenElse(isLarge, down, hn::IfThenElse(isSmall, up, one));
    const auto back = hn::IfThenElse(isLarge, up, hn::IfThenElse(isSmall, down, one));
    return hn::Mul(hn::Sqrt(SquareOf({hn::Mul(x.re, scale), hn::Mul(x.im, scale)})), back);
  }
};

// ---- The largest of terms that are not negative, a NaN if one of them is

template <class T, class Term>
struct LargestOf {
  using D = hn::ScalableTag<T>;
  static constexpr size_t kVectors = 4, kPer = hn::MaxLanes(D{});
  hn::Vec<D> largest[kVectors], sum[kVectors];  // maximum takes no notice of a NaN
  Term term;

  explicit HWY_INLINE LargestOf(Term t = {}) : term(t) {
    Unrolled<kVectors>([this](auto k) ORPSP_INLINED { largest[k] = sum[k] = hn::Zero(D{}); });
  }
  HWY_INLINE void Add(size_t k, auto... v) {
    const auto x = term(D{}, v...);
    largest[k] = hn::Max(x, largest[k]);
    sum[k] = hn::Add(x, sum[k]);
  }
  HWY_INLINE T Total() const {
    constexpr D d;
    const auto all = hn::Max(hn::Max(largest[0], largest[1]), hn::Max(largest[2], largest[3]));
    const auto sums = hn::Add(hn::Add(sum[0], sum[1]), hn::Add(sum[2], sum[3]));
    const auto isNan = hn::IsNaN(sums);
    if (HWY_UNLIKELY(!hn::AllFalse(d, isNan))) return std::numeric_limits<T>::quiet_NaN();
    return hn::GetLane(hn::MaxOfLanes(d, all));
  }
};

template <class T, class Term, class... S>
HWY_INLINE T Largest(Term term, size_t len, const S&... src) {
  LargestOf<T, Term> acc(term);
  Accumulate(acc, len, src...);
  return acc.Total();
}

// The square of elements times a power of two.
struct SquareTimes {
  double factor;
  HWY_INLINE auto operator()(auto d, auto... v) const {
    const auto x = PartsOf(v...);
    return SquareOf({hn::Mul(x.re, hn::Set(d, factor)), hn::Mul(x.im, hn::Set(d, factor))});
  }
};

// The result where the largest square overflowed or underflowed. (0, infinity and NaN stay what they are.)
template <class... S>
HWY_NOINLINE double LargestMagnitudeScaled(double square, size_t len, const S&... src) {
  const double scale = square > 1 ? 0x1p-600 : 0x1p600;
  return Root(Largest<double>(SquareTimes{scale}, len, src...)) / scale;
}

// ---- Norms of floating point

struct Inf {
  template <class R, class T>
  static HWY_NOINLINE R Of(size_t len, auto... p) {
    if constexpr (!isComplex<T>) {
      return Largest<R>(Magnitude{}, len, Vector<T>{p}...);
    } else {
      const double square = Largest<double>(ComplexMagnitudeSquared{}, len, PlanesFor<double>(p)...);
      const bool isUsual = square >= kLeastSquare && square <= kMostSquare;
      if (std::is_same_v<R, double> && !isUsual)
        return static_cast<R>(LargestMagnitudeScaled(square, len, PlanesFor<double>(p)...));
      return static_cast<R>(Root(square));
    }
  }
};

struct L1 {
  template <class R, class T>
  static HWY_NOINLINE R Of(size_t len, auto... p) {
    constexpr size_t kLanes = kUsualLanes<R>;
    if constexpr (isComplex<T>) {
      return Accumulated<SumOf<R, kLanes, ComplexMagnitude<T>>>(len, PlanesFor<double>(p)...).sum.Total();
    } else if constexpr (std::is_same_v<R, float>) {
      return static_cast<float>(SumInBlocks<SumOf<float, kLanes, Magnitude>>(len, Vector<T>{p}...));
    } else {
      return Accumulated<SumOf<R, kLanes, Magnitude>>(len, Vector<T>{p}...).sum.Total();
    }
  }
};

struct L2 {
  template <class R, class T>
  static HWY_NOINLINE R Of(size_t len, auto... p) {
    using Acc = SumOf<R, kUsualLanes<R>, MagnitudeSquared>;
    const size_t count = len * Element<T>::kLanes;
    return Root(Accumulated<Acc>(count, Vector<Lane<T>>{lanes(p)}...).sum.Total());
  }
};

// ---- Norms of 16-bit integers, which are exact

using Unsigned16 = hn::Vec<hn::ScalableTag<uint16_t>>;
constexpr hn::ScalableTag<uint16_t> kTag16;
constexpr hn::ScalableTag<uint32_t> kTag32;

template <class V>
HWY_INLINE Unsigned16 Magnitude16(V v) {
  return hn::BitCast(kTag16, hn::Abs(v));  // 32768 too
}
template <class V>
HWY_INLINE Unsigned16 Magnitude16(V a, V b) {
  return hn::BitCast(kTag16, hn::Sub(hn::Max(a, b), hn::Min(a, b)));
}

struct LargestOf16 : OfVectors<2> {
  Unsigned16 largest;
  HWY_INLINE LargestOf16() : largest(hn::Zero(kTag16)) {}
  HWY_INLINE void Add(size_t, auto... v) { largest = hn::Max(largest, Magnitude16(v...)); }
  HWY_INLINE void Flush() {}
  HWY_INLINE uint64_t Total() const {
    alignas(HWY_MAX_BYTES) uint16_t lane[HWY_MAX_BYTES / 2];
    hn::Store(largest, kTag16, lane);
    uint64_t all = 0;
    for (const uint16_t one : lane) all = HWY_MAX(all, one);
    return all;
  }
};

struct SumOf16 : OfVectors<2> {
  HalfSums<uint32_t> sums;
  HWY_INLINE void Add(size_t, auto... v) { sums.Add(hn::BitCast(kTag32, Magnitude16(v...))); }
  HWY_INLINE void Flush() { sums.Flush(); }
  HWY_INLINE uint64_t Total() const { return sums.TotalOfHalves(); }
};

struct SquaresOf16 : OfVectors<2> {
  HalfSums<uint32_t> low, high;  // halves of the squares, which are unsigned numbers of 32 bits
  HWY_INLINE void Add(size_t, auto a, auto b) {
    const auto x = Magnitude16(a, b);
    low.Add(hn::BitCast(kTag32, hn::Mul(x, x)));
    high.Add(hn::BitCast(kTag32, hn::MulHigh(x, x)));
  }
  HWY_INLINE void Flush() {
    low.Flush();
    high.Flush();
  }
  HWY_INLINE uint64_t Total() const { return low.TotalOfHalves() + (high.TotalOfHalves() << 16); }
};

template <class Acc>
HWY_NOINLINE uint64_t ExactTotal(size_t len, auto... p) {
  return Accumulated<Acc>(len, Vector<Orp16s>{p}...).Total();
}

template <class Acc>
struct Exact {
  template <class R, class T>
  static HWY_INLINE R Of(size_t len, auto... p) {
    return static_cast<R>(static_cast<int64_t>(ExactTotal<Acc>(len, p...)));
  }
  template <class R>
  static HWY_INLINE R Scaled(int scale, size_t len, auto... p) {
    return static_cast<R>(scaledTotal(ExactTotal<Acc>(len, p...), scale, kRange<R>));
  }
};
template <class Acc>
struct ExactRoot {
  template <class R, class T>
  static HWY_INLINE R Of(size_t len, auto... p) {
    return floatRoot(ExactTotal<Acc>(len, p...));
  }
  template <class R>
  static HWY_INLINE R Scaled(int scale, size_t len, auto... p) {
    return static_cast<R>(scaledRoot(ExactTotal<Acc>(len, p...), 1, scale, kRange<R>));
  }
};
using ExactInf = Exact<LargestOf16>;
using ExactL1 = Exact<SumOf16>;

// ---- Calling forms

template <class Norm, class T, class R>
OrpStatus norm(const T* pSrc, int len, R* pNorm) {
  ORPS_CHECK_VECTOR(len, pSrc, pNorm);
  put(pNorm, Norm::template Of<R, T>(toSize(len), pSrc));
  return StsOk;
}

template <class Norm, class T, class R>
OrpStatus normSfs(const T* pSrc, int len, R* pNorm, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrc, pNorm);
  put(pNorm, Norm::template Scaled<R>(scaleFactor, toSize(len), pSrc));
  return StsOk;
}

template <class Norm, class T, class R>
OrpStatus difference(const T* pSrc1, const T* pSrc2, int len, R* pNorm) {
  ORPS_CHECK_VECTOR(len, pSrc1, pSrc2, pNorm);
  put(pNorm, Norm::template Of<R, T>(toSize(len), pSrc1, pSrc2));
  return StsOk;
}

template <class Norm, class T, class R>
OrpStatus differenceSfs(const T* pSrc1, const T* pSrc2, int len, R* pNorm, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrc1, pSrc2, pNorm);
  put(pNorm, Norm::template Scaled<R>(scaleFactor, toSize(len), pSrc1, pSrc2));
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/norms.inc"
#include "frame/exports-inl.h"
