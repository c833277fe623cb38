// Sqrt and Magnitude.
#include "frame/entry.h"
#include "frame/parallel.h"
#include "orpsp/vector/complex.h"
#include "orpsp/vector/elementary.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/root.cpp"
#include <hwy/foreach_target.h>

#include "simd/complex-inl.h"
#include "simd/exact-inl.h"
#include "simd/forms-inl.h"
#include "simd/maths-inl.h"
#include "simd/round-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// ---- Real roots

template <class T>
struct Root : Watch<T> {
  HWY_INLINE auto operator()(auto d, auto v) const {
    this->Note(hn::Lt(v, hn::Zero(d)));
    return hn::Sqrt(v);  // of a negative number the instruction makes the NaN that is documented
  }
};

// Roots of integers n < 2^32, exact in W as they are. A root times 2^-s is a tie or differs from the next one by more
// than 1 / (8 y^2) of itself, y being the result: double knows the difference, and float for y < 2^10.
template <class W>
struct IntegerRoot : Watch<W> {
  static constexpr size_t kWorkBytes = sizeof(W);
  W unit;

  HWY_INLINE auto operator()(auto d, auto v) const {
    constexpr hn::ScalableTag<W> dw;
    const auto x = Lift(dw, v);
    if constexpr (std::is_signed_v<hn::TFromV<decltype(v)>>) this->Note(hn::Lt(x, hn::Zero(dw)));
    const auto root = hn::Sqrt(hn::Max(x, hn::Zero(dw)));
    return RoundTo<Rounding::kNearest>(d, hn::Mul(root, hn::Set(dw, unit)));
  }
};

// sqrt(n) * 2^-scale for n up to 2^63 as lanes of 64 bits, rounded, as double; from 2^32 on it saturates.
template <class V>
HWY_INLINE Doubles RoundedRootOf64(V n, int scale, double unit) {
  constexpr hn::ScalableTag<double> dw;
  constexpr hn::RebindToSigned<hn::DFromV<V>> di;
  const auto bits = hn::BitCast(di, n);
  const auto x = hn::Abs(hn::ConvertTo(dw, bits));  // the greatest unsigned one, 2^63, comes out negative
  const auto exact = [scale](double lane, double) { return roundedRoot(__builtin_bit_cast(uint64_t, lane), scale); };
  return RoundedExactly(hn::Mul(hn::Sqrt(x), hn::Set(dw, unit)), 0x1p32, 0x1p-19, exact, hn::BitCast(dw, bits));
}

// Roots of signed 64-bit integers, for results below 2^32.
struct LongRoot : Watch<double> {
  static constexpr size_t kWorkBytes = sizeof(double);
  int scale;
  double unit;

  template <class V>
  HWY_INLINE auto operator()(auto d, V v) const {
    constexpr hn::DFromV<V> dn;
    const auto isNegative = hn::Lt(v, hn::Zero(dn));
    Note(hn::RebindMask(hn::ScalableTag<double>{}, isNegative));
    const auto rounded = RoundedRootOf64(hn::IfThenZeroElse(isNegative, v), scale, unit);
    if constexpr (sizeof(hn::TFromD<decltype(d)>) == 8) {
      return hn::ConvertTo(d, rounded);
    } else {
      return RoundTo<Rounding::kNearest>(d, rounded);
    }
  }
};

template <class Op, class D, class S, class... Constants>
HWY_NOINLINE bool MapRoot(D* dst, size_t len, S source, Constants... constants) {
  const Op op{{}, constants...};
  Map(op, dst, len, source);
  return op.Found();
}

// ---- Complex roots: with w = sqrt((|z| + |re z|) / 2) the principal root is w + i im z / 2w, or its parts change
// places where re z < 0

// w, where squares neither overflow nor underflow.
template <class V>
HWY_INLINE V LargerRootPart(V re, V im) {
  constexpr hn::DFromV<V> d;
  const auto norm = hn::Sqrt(hn::Add(hn::Mul(re, re), hn::Mul(im, im)));
  return hn::Sqrt(hn::Mul(hn::Add(norm, hn::Abs(re)), hn::Set(d, 0.5)));
}

// The root of re + i im, given w.
template <class V>
HWY_INLINE Parts<V> RootFrom(V re, V im, V larger) {
  constexpr hn::DFromV<V> d;
  const auto quotient = hn::Mul(hn::Div(hn::Abs(im), larger), hn::Set(d, 0.5));
  const auto smaller = hn::IfThenZeroElse(hn::Eq(larger, hn::Zero(d)), quotient);
  const auto isLeft = hn::Lt(re, hn::Zero(d));
  return {hn::IfThenElse(isLeft, smaller, larger), hn::CopySign(hn::IfThenElse(isLeft, larger, smaller), im)};
}

// Infinities and NaN: an infinite imaginary part makes both parts infinite, an infinite real one the part on its axis.
template <class V>
HWY_NOINLINE Parts<V> RootOfSpecial(V re, V im, Parts<V> root) {
  constexpr hn::DFromV<V> d;
  const auto infinity = hn::Set(d, kInfinity<double>), zero = hn::Zero(d);
  const auto isLeft = hn::Lt(re, zero);
  // Off the axis is zero with the sign of the other part, or that part if it is NaN.
  const auto isNan = hn::IsNaN(im);
  const auto off = hn::IfThenElse(isNan, im, zero);
  const Parts<V> onAxis{hn::IfThenElse(isLeft, off, infinity), hn::IfThenElse(isLeft, infinity, off)};
  const auto signedIm = hn::IfThenElse(isNan, onAxis.im, hn::CopySign(onAxis.im, im));
  const auto isOnAxis = hn::Eq(hn::Abs(re), infinity), isUpward = hn::Eq(hn::Abs(im), infinity);
  return {hn::IfThenElse(isUpward, infinity, hn::IfThenElse(isOnAxis, onAxis.re, root.re)),
          hn::IfThenElse(isUpward, im, hn::IfThenElse(isOnAxis, signedIm, root.im))};
}

struct ComplexFloatRoot {
  template <class V>
  static HWY_INLINE Parts<V> Finished(V re, V im, V larger) {
    constexpr hn::DFromV<V> d;
    const auto root = RootFrom(re, im, larger);
    const auto infinity = hn::Set(d, kInfinity<double>);
    const auto isFinite = hn::And(hn::Lt(hn::Abs(re), infinity), hn::Lt(hn::Abs(im), infinity));
    return HWY_LIKELY(hn::AllTrue(d, isFinite)) ? root : RootOfSpecial(re, im, root);
  }
  template <class V>
  HWY_INLINE Parts<V> operator()(auto d, Parts<V> z) const {
    if constexpr (std::is_same_v<hn::TFromV<V>, float>) {
      const auto half = [](auto re, auto im) HWY_ATTR { return Finished(re, im, LargerRootPart(re, im)); };
      const auto lower = half(LowerDoubles(d, z.re), LowerDoubles(d, z.im));
      const auto upper = half(UpperDoubles(d, z.re), UpperDoubles(d, z.im));
      return {FromDoubles(d, lower.re, upper.re), FromDoubles(d, lower.im, upper.im)};
    } else {
      const auto larger = hn::Max(hn::Abs(z.re), hn::Abs(z.im));
      const auto usual = hn::And(hn::Ge(larger, hn::Set(d, 0x1p-400)), hn::Le(larger, hn::Set(d, 0x1p400)));
      if (HWY_UNLIKELY(!hn::AllTrue(d, usual))) return Scaled(z, larger);
      return Finished(z.re, z.im, LargerRootPart(z.re, z.im));
    }
  }
  // w of z scaled by 2^700 or 2^-700, and back by the root of that. Of the smaller part nothing is lost.
  template <class V>
  static HWY_NOINLINE Parts<V> Scaled(Parts<V> z, V magnitude) {
    constexpr hn::DFromV<V> d;
    const auto isLarge = hn::Gt(magnitude, hn::Set(d, 0x1p400)), isSmall = hn::Lt(magnitude, hn::Set(d, 0x1p-400));
    const auto choose = [=](double large, double small) HWY_ATTR {
      return hn::IfThenElse(isLarge, hn::Set(d, large), hn::IfThenElse(isSmall, hn::Set(d, small), hn::Set(d, 1.0)));
    };
    const auto by = choose(0x1p-700, 0x1p700);
    const auto larger = LargerRootPart(hn::Mul(z.re, by), hn::Mul(z.im, by));
    return Finished(z.re, z.im, hn::Mul(larger, choose(0x1p350, 0x1p-350)));
  }
};

struct ComplexIntegerRoot {
  static constexpr size_t kWorkBytes = sizeof(double);
  int scale;
  double unit;

  HWY_INLINE auto operator()(auto d, auto v) const {
    const auto z = ToDoubles(v);
    const auto root = RootFrom(z.re, z.im, LargerRootPart(z.re, z.im));
    return ToPairs(d, Parts<Doubles>{Rounded(z.re, z.im, root.re), Rounded(hn::Neg(z.re), z.im, root.im)});
  }

  // The part whose square is (|z| + a) / 2, rounded.
  HWY_INLINE Doubles Rounded(Doubles a, Doubles b, Doubles part) const {
    constexpr hn::ScalableTag<double> dw;
    const auto exact = [this](double aLane, double bLane, double below) {
      return roundedHalfAngleRoot(static_cast<int>(aLane), static_cast<int>(bLane), scale, static_cast<int64_t>(below));
    };
    const auto value = hn::Mul(hn::Abs(part), hn::Set(dw, unit));
    return hn::CopySign(RoundedExactly(value, 0x1p15, 0x1p-30, exact, a, b), part);
  }
};

// ---- Magnitudes

struct FloatMagnitude {
  HWY_INLINE auto operator()(auto d, auto re, auto im) const { return Hypot(d, re, im); }
  HWY_INLINE auto operator()(auto d, auto parts) const { return Hypot(d, parts.re, parts.im); }
};

struct Magnitude16ToFloat {
  HWY_INLINE auto operator()(auto d, auto... parts) const { return hn::Sqrt(FloatSumOfSquares(d, parts...)); }
};

struct RootOfSum {
  double unit;

  template <class V>
  HWY_INLINE V Finished(V sum) const {
    constexpr hn::DFromV<V> d;
    constexpr hn::Half<decltype(d)> dh;
    constexpr hn::RepartitionToWide<hn::Rebind<float, decltype(d)>> dw;
    const auto rounded = [=, this](auto n) HWY_ATTR {
      const auto root = hn::Mul(hn::Sqrt(hn::Abs(hn::PromoteTo(dw, n))), hn::Set(dw, unit));
      return hn::DemoteTo(dh, hn::Round(hn::Min(root, hn::Set(dw, 32767.0))));
    };
    return hn::Combine(d, rounded(hn::UpperHalf(dh, sum)), rounded(hn::LowerHalf(dh, sum)));
  }
};

using Magnitude16 = OfSumsOfSquares<RootOfSum>;

struct Magnitude32 {
  int scale;
  double unit;

  HWY_INLINE auto operator()(auto d, auto pairs) const {
    return RoundTo<Rounding::kNearest>(d, RoundedRootOf64(SumOfSquares(pairs), scale, unit));
  }
};

// ---- Forms

template <class Op, class D, class... S>
HWY_NOINLINE bool MapWithoutWarning(const Op& op, D* dst, size_t len, S... source) {
  Map(op, dst, len, source...);
  return false;
}

// Map for a call that two threads may share from the length `from` on.
template <int from, class Op, class D, class... S>
OrpStatus MapInParts(const Op& op, D* dst, int len, S... source) {
  inParts<from>(
      len, [=](size_t i, size_t count) HWY_ATTR { return MapWithoutWarning(op, dst + i, count, source.From(i)...); });
  return StsOk;
}

template <int from, class T>
OrpStatus root(const T* pSrc, T* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  const bool negative = inParts<from>(
      len, [=](size_t i, size_t count) HWY_ATTR { return MapRoot<Root<T>>(pDst + i, count, Vector<T>{pSrc + i}); });
  return negative ? StsDomain : StsOk;
}

template <int from, class T, class D>
OrpStatus rootSfs(const T* pSrc, D* pDst, int len, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  const double unit = UnitOfScale(scaleFactor);
  const bool negative = inParts<from>(len, [=](size_t i, size_t count) HWY_ATTR {
    const Vector<T> source{pSrc + i};
    if constexpr (sizeof(T) == 8) {
      return MapRoot<LongRoot>(pDst + i, count, source, scaleFactor, unit);
    } else {
      if constexpr (sizeof(T) <= 2) {
        if (sizeof(T) == 1 || scaleFactor >= -1)
          return MapRoot<IntegerRoot<float>>(pDst + i, count, source, static_cast<float>(unit));
      }
      return MapRoot<IntegerRoot<double>>(pDst + i, count, source, unit);
    }
  });
  return negative ? StsDomain : StsOk;
}

// 64-bit roots scaled up need more than double precision.
OrpStatus longRootSfs(const Orp64s* pSrc, Orp64s* pDst, int len, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  if (scaleFactor >= 0) return rootSfs<kNever>(pSrc, pDst, len, scaleFactor);
  bool negative = false;
  for (size_t i = 0; i < toSize(len); ++i) {
    const Orp64s n = get(pSrc + i);
    negative |= n < 0;
    put(pDst + i, Orp64s{n < 0 ? 0 : roundedRoot(static_cast<uint64_t>(n), scaleFactor)});
  }
  return negative ? StsDomain : StsOk;
}

template <int from, class T>
OrpStatus complexRoot(const T* pSrc, T* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  inParts<from>(len, [=](size_t i, size_t count) HWY_ATTR {
    MapParts(ComplexFloatRoot{}, IntoPairs<T>{pDst + i}, count, Planes<T>{pSrc + i});
    return false;
  });
  return StsOk;
}

template <int from>
OrpStatus complexRootSfs(const Orp16sc* pSrc, Orp16sc* pDst, int len, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  const ComplexIntegerRoot op{scaleFactor, UnitOfScale(scaleFactor)};
  return MapInParts<from>(op, pDst, len, Vector<Orp16sc>{pSrc});
}

template <class Op, int from, class T, class D>
OrpStatus magnitude(const T* pSrcRe, const T* pSrcIm, D* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrcRe, pSrcIm, pDst);
  return MapInParts<from>(Op{}, pDst, len, Vector<T>{pSrcRe}, Vector<T>{pSrcIm});
}

template <class Op, int from, class T, class D>
OrpStatus magnitude(const T* pSrc, D* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  using Source = std::conditional_t<isFloat<T>, Planes<T>, Vector<T>>;
  return MapInParts<from>(Op{}, pDst, len, Source{pSrc});
}

template <int from>
OrpStatus magnitudeSfs(const Orp16s* pSrcRe, const Orp16s* pSrcIm, Orp16s* pDst, int len, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrcRe, pSrcIm, pDst);
  const Magnitude16 op{{UnitOfScale(scaleFactor)}};
  return MapInParts<from>(op, pDst, len, Vector<Orp16s>{pSrcRe}, Vector<Orp16s>{pSrcIm});
}

template <int from, class T, class D>
OrpStatus magnitudeSfs(const T* pSrc, D* pDst, int len, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  const double unit = UnitOfScale(scaleFactor);
  if constexpr (sizeof(T) == 4) {
    return MapInParts<from>(Magnitude16{{unit}}, pDst, len, Vector<T>{pSrc});
  } else {
    return MapInParts<from>(Magnitude32{scaleFactor, unit}, pDst, len, Vector<T>{pSrc});
  }
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/root.inc"
#define ORPSP_NEAREST always
#include "frame/exports-inl.h"
