// Div, Div_Round, DivC, DivCRev and Normalize.
//
// Integer quotients come from one correctly rounded division in float or double. That is exact: a quotient n / (d *
// 2^s) that is no tie differs from the nearest one, m / 2, by |2n - m d 2^s| / (2n) >= 1 / (2n) of itself, and one that
// is no integer differs from the nearest integer by at least 1 / n, so a precision of n's bits and two more keeps them
// apart; for s = -k the bits of n * 2^k count, as far as the result does not saturate.
#include "orpsp/vector/division.h"

#include <type_traits>

#include "frame/entry.h"
#include "frame/parallel.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/divide.cpp"
#include <hwy/foreach_target.h>

#include "simd/complex-inl.h"
#include "simd/exponent-inl.h"
#include "simd/forms-inl.h"
#include "simd/round-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// ---- Floating point

template <class T>
struct RealQuotient : Watch<T> {
  template <class V>
  HWY_INLINE V operator()(auto d, V divisor, V dividend) const {
    const auto zero = hn::Zero(d);
    this->Note(hn::Eq(divisor, zero));
    return hn::Div(dividend, hn::Add(divisor, zero));  // -0 becomes +0, so that the dividend's sign decides
  }
};

// The quotient of complex numbers in planes of double as numerators and denominator: a zero divisor divides part by
// part.
struct ComplexFraction {
  Parts<Doubles> above;
  Doubles below;
  hn::Mask<hn::ScalableTag<double>> isZero;

  HWY_INLINE ComplexFraction(Parts<Doubles> divisor, Parts<Doubles> dividend) {
    constexpr hn::ScalableTag<double> d;
    below = hn::Add(hn::Mul(divisor.re, divisor.re), hn::Mul(divisor.im, divisor.im));
    isZero = hn::Eq(below, hn::Zero(d));
    above.re = hn::Add(hn::Mul(dividend.re, divisor.re), hn::Mul(dividend.im, divisor.im));
    above.im = hn::Sub(hn::Mul(dividend.im, divisor.re), hn::Mul(dividend.re, divisor.im));
    above.re = hn::IfThenElse(isZero, dividend.re, above.re);
    above.im = hn::IfThenElse(isZero, dividend.im, above.im);
  }
};

template <class T>
struct ComplexFloatQuotient;

// Squares of finite floats neither overflow nor underflow in double.
template <>
struct ComplexFloatQuotient<Orp32fc> : Watch<double> {
  static constexpr size_t kWorkBytes = sizeof(double);

  HWY_INLINE auto operator()(auto d, auto divisor, auto dividend) const {
    const ComplexFraction fraction(ToDoubles(divisor), ToDoubles(dividend));
    Note(fraction.isZero);
    // Two roundings in double where one division for each part would do with one: single precision does not notice.
    const auto reciprocal = hn::Div(hn::Set(hn::ScalableTag<double>{}, 1.0), fraction.below);
    return ToPairs(d, Parts<Doubles>{hn::Mul(fraction.above.re, reciprocal), hn::Mul(fraction.above.im, reciprocal)});
  }
};

// Both operands are scaled by powers of two to magnitudes near 1, and the quotient back.
template <>
struct ComplexFloatQuotient<Orp64fc> : Watch<double> {
  template <class V>
  HWY_INLINE V operator()(auto d, V divisor, V dividend) const {
    constexpr hn::RebindToUnsigned<decltype(d)> du;
    const auto norm = LargerPart(divisor);
    const auto isZero = hn::RebindMask(d, hn::Eq(norm, hn::Zero(du)));
    Note(isZero);
    const auto above = ExponentOf(LargerPart(dividend)), below = ExponentOf(norm);
    const V a = hn::Mul(dividend, InversePowerOfTwo(above)), c = hn::Mul(divisor, InversePowerOfTwo(below));

    const auto signOfImaginary = hn::OddEven(hn::SignBit(d), hn::Zero(d));
    const auto direct = hn::Mul(a, hn::DupEven(c));                   // ac, bc
    const auto crossed = hn::Mul(hn::Reverse2(d, a), hn::DupOdd(c));  // bd, ad
    const auto quotient = hn::Div(hn::Add(direct, hn::Xor(crossed, signOfImaginary)), SquareOfPairs(c));
    const auto result = TimesPowerOfTwo(quotient, above, below);
    return hn::IfThenElse(isZero, hn::Div(dividend, hn::Zero(d)), result);
  }
};

template <class T>
using FloatQuotient = std::conditional_t<isComplex<T>, ComplexFloatQuotient<T>, RealQuotient<T>>;

// ---- Integers

// In place of a zero divisor the least normal number: quotients by it saturate, even after any scaling, but for 0.
template <class V, class M, class W = hn::TFromV<V>>
HWY_INLINE V NotZero(V divisor, M isZero) {
  return hn::IfThenElse(isZero, hn::Set(hn::DFromV<V>{}, std::numeric_limits<W>::min()), divisor);
}

template <class W, Rounding rounding>
struct IntegerQuotient : Watch<W> {
  static constexpr size_t kWorkBytes = sizeof(W);
  W unit;  // 2^-scale

  HWY_INLINE auto operator()(auto d, auto divisor, auto dividend) const {
    constexpr hn::ScalableTag<W> dw;
    const auto below = Lift(dw, divisor);
    const auto isZero = hn::Eq(below, hn::Zero(dw));
    this->Note(isZero);
    const auto above = hn::Mul(Lift(dw, dividend), hn::Set(dw, unit));
    return RoundTo<rounding>(d, hn::Div(above, NotZero(below, isZero)));
  }
};

struct ComplexIntegerQuotient : Watch<double> {
  static constexpr size_t kWorkBytes = sizeof(double);
  double unit;

  HWY_INLINE auto operator()(auto d, auto divisor, auto dividend) const {
    constexpr hn::ScalableTag<double> df64;
    auto above = ToDoubles(dividend);
    above.re = hn::Mul(above.re, hn::Set(df64, unit));
    above.im = hn::Mul(above.im, hn::Set(df64, unit));
    const ComplexFraction fraction(ToDoubles(divisor), above);
    Note(fraction.isZero);
    const auto below = NotZero(fraction.below, fraction.isZero);
    return ToPairs(d, Parts<Doubles>{hn::Div(fraction.above.re, below), hn::Div(fraction.above.im, below)});
  }
};

// (x - shift) / divisor
template <class T>
struct IntegerNormal {
  static constexpr size_t kWorkBytes = Element<T>::kLanes * sizeof(double);
  double unit, divisor;

  HWY_INLINE auto operator()(auto d, auto shift, auto v) const {
    constexpr hn::Rebind<double, decltype(d)> df64;
    constexpr hn::Rebind<int32_t, decltype(d)> di32;
    const auto difference = hn::PromoteTo(df64, hn::Sub(hn::PromoteTo(di32, v), hn::PromoteTo(di32, shift)));
    const auto quotient = hn::Div(hn::Mul(difference, hn::Set(df64, unit)), hn::Set(df64, divisor));
    return RoundTo<Rounding::kNearest>(d, quotient);
  }
};

template <class T>
struct FloatNormal {
  T divisor;
  HWY_INLINE auto operator()(auto d, auto shift, auto v) const {
    return hn::Div(hn::Sub(v, shift), hn::Set(d, divisor));
  }
};

// ---- Kernels: true if a divisor was zero

template <class Op, class D, class Below, class Above, class... Unit>
HWY_NOINLINE bool MapQuotient(D* dst, size_t len, Below below, Above above, Unit... unit) {
  const Op op{{}, unit...};
  Map(op, dst, len, below, above);
  return op.Found();
}

// 32-bit quotients times 2^up, 20 < up <= 64, where double is no longer enough. From 64 on every nonzero one saturates.
HWY_NOINLINE bool MapLargeQuotient(Orp32s* dst, size_t len, const Orp32s* below, const Orp32s* above, int up) {
  bool zero = false;
  for (size_t i = 0; i < len; ++i) {
    const int64_t divisor = get(below + i), dividend = get(above + i);
    const bool negative = (dividend < 0) != (divisor < 0);
    const auto d = static_cast<uint64_t>(divisor < 0 ? -divisor : divisor);
    const auto n = static_cast<uint64_t>(dividend < 0 ? -dividend : dividend);
    zero |= d == 0;
    uint64_t magnitude = n == 0 ? 0 : kMost<uint32_t>;
    if (d != 0 && n != 0 && up < 64) {
      const int first = HWY_MIN(up, 32), second = up - first;
      magnitude = (n << first) / d;
      if (magnitude < kMost<uint32_t>) {
        const uint64_t carried = ((n << first) % d) << second, rest = carried % d;
        magnitude = (magnitude << second) + carried / d;
        if (rest > d - rest || (rest == d - rest && (magnitude & 1) != 0)) ++magnitude;
      }
    }
    const auto most = static_cast<uint64_t>(kMost<Orp32s>);
    if (negative) {
      put(dst + i, static_cast<Orp32s>(-static_cast<int64_t>(HWY_MIN(magnitude, most + 1))));
    } else {
      put(dst + i, static_cast<Orp32s>(HWY_MIN(magnitude, most)));
    }
  }
  return zero;
}

template <Rounding rounding = Rounding::kNearest, class D, class Below, class Above>
bool mapIntegerQuotient(D* dst, size_t len, Below below, Above above, int scale) {
  const double unit = UnitOfScale(scale);
  if constexpr (isComplex<D>) {
    return MapQuotient<ComplexIntegerQuotient>(dst, len, below, above, unit);
  } else if constexpr (sizeof(D) == 1) {
    return MapQuotient<IntegerQuotient<float, rounding>>(dst, len, below, above, static_cast<float>(unit));
  } else {
    // Quotients that do not saturate are below 2^16 or 2^31, so n * 2^k has at most 47 bits, or 22 for k <= 6, ...
    if constexpr (Below::kElementBytes == 2) {
      if (scale >= -6)
        return MapQuotient<IntegerQuotient<float, rounding>>(dst, len, below, above, static_cast<float>(unit));
    }
    if constexpr (sizeof(D) == 4) {  // ... but 31 + k where all are of 32 bits
      if (scale < -20) return MapLargeQuotient(dst, len, below.p, above.p, scale < -64 ? 64 : -scale);
    }
    return MapQuotient<IntegerQuotient<double, rounding>>(dst, len, below, above, unit);
  }
}

template <int from>
OrpStatus DivideParts(int len, auto kernel) {
  return inParts<from>(len, kernel) ? StsDivByZero : StsOk;
}

// ---- Two vectors

template <int from, class T>
OrpStatus divide(const T* pSrc1, const T* pSrc2, T* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrc1, pSrc2, pDst);
  return DivideParts<from>(len, [=](size_t i, size_t count) HWY_ATTR {
    return MapQuotient<FloatQuotient<T>>(pDst + i, count, Padded<T>{{pSrc1 + i}, 1}, Vector<T>{pSrc2 + i});
  });
}

template <int from, Rounding rounding = Rounding::kNearest, class T, class D>
OrpStatus divideSfs(const T* pSrc1, const T* pSrc2, D* pDst, int len, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrc1, pSrc2, pDst);
  return DivideParts<from>(len, [=](size_t i, size_t count) HWY_ATTR {
    return mapIntegerQuotient<rounding>(pDst + i, count, Padded<T>{{pSrc1 + i}, 1}, Vector<T>{pSrc2 + i}, scaleFactor);
  });
}

template <int from, class T>
OrpStatus divideRoundSfs(const T* pSrc1, const T* pSrc2, T* pDst, int len, int rndMode, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrc1, pSrc2, pDst);
  switch (rndMode) {
    case OrpRoundZero:
      return divideSfs<from, Rounding::kZero>(pSrc1, pSrc2, pDst, len, scaleFactor);
    case OrpRoundNear:
      return divideSfs<from>(pSrc1, pSrc2, pDst, len, scaleFactor);
    case OrpRoundAway:
      return divideSfs<from, Rounding::kAway>(pSrc1, pSrc2, pDst, len, scaleFactor);
    default:
      return StsBadRoundMode;
  }
}

// ---- A vector and a constant

template <class T>
bool IsZero(T value) {
  if constexpr (isComplex<T>) {
    return value.re == 0 && value.im == 0;
  } else {
    return value == 0;
  }
}

struct PlainQuotient {
  HWY_INLINE auto operator()(auto, auto divisor, auto dividend) const { return hn::Div(dividend, divisor); }
};

template <class T>
OrpStatus divideByConstant(const T* pSrc, T val, T* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  ORPS_RETURN_IF(IsZero(val), StsDivByZeroErr);
  if constexpr (isComplex<T>) {
    MapQuotient<FloatQuotient<T>>(pDst, toSize(len), Constant<T>{val}, Vector<T>{pSrc});
  } else {
    Map(PlainQuotient{}, pDst, toSize(len), Constant<T>{val}, Vector<T>{pSrc});
  }
  return StsOk;
}

template <int from, class T>
OrpStatus divideByConstantSfs(const T* pSrc, T val, T* pDst, int len, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  ORPS_RETURN_IF(IsZero(val), StsDivByZeroErr);
  return DivideParts<from>(len, [=](size_t i, size_t count) HWY_ATTR {
    return mapIntegerQuotient(pDst + i, count, Constant<T>{val}, Vector<T>{pSrc + i}, scaleFactor);
  });
}

template <int from, class T>
OrpStatus divideConstant(const T* pSrc, T val, T* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  return DivideParts<from>(len, [=](size_t i, size_t count) HWY_ATTR {
    const Padded<T> divisors{{pSrc + i}, 1};
    if constexpr (isFloat<T>) {
      return MapQuotient<FloatQuotient<T>>(pDst + i, count, divisors, Constant<T>{val});
    } else {
      return mapIntegerQuotient(pDst + i, count, divisors, Constant<T>{val}, 0);
    }
  });
}

template <class T, class W>
OrpStatus normalize(const T* pSrc, T* pDst, int len, T vSub, W vDiv) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  ORPS_RETURN_IF(vDiv == 0, StsDivByZeroErr);
  Map(FloatNormal<W>{vDiv}, pDst, toSize(len), Constant<T>{vSub}, Vector<T>{pSrc});
  return StsOk;
}

template <class T>
OrpStatus normalizeSfs(const T* pSrc, T* pDst, int len, T vSub, int vDiv, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  ORPS_RETURN_IF(vDiv == 0, StsDivByZeroErr);
  const IntegerNormal<T> op{UnitOfScale(scaleFactor), static_cast<double>(vDiv)};
  Map(op, pDst, toSize(len), Constant<T>{vSub}, Vector<T>{pSrc});
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/divide.inc"
#define ORPSP_NEAREST intoIntegers
#include "frame/exports-inl.h"
