// Threshold in all its groups.
//
// A comparison with a NaN is false. The minimum and maximum instructions return their second operand if one is a NaN or
// if both are zeros, which is why the element stands there: it stays as it is.
#include "orpsp/vector/threshold.h"

#include "frame/entry.h"
#include "frame/parallel.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/threshold.cpp"
#include <hwy/foreach_target.h>

#include "simd/complex-inl.h"
#include "simd/exponent-inl.h"
#include "simd/forms-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

enum class Side { kBelow, kAbove };

template <Side side, class V>
HWY_INLINE auto IsBeyond(V x, V level) {
  if constexpr (side == Side::kBelow) {
    return hn::Lt(x, level);
  } else {
    return hn::Gt(x, level);
  }
}

// Levels of magnitudes: negative ones act as 0, a NaN stays one.
template <class T>
HWY_INLINE T NotNegative(T level) {
  return level <= 0 ? T{0} : level;
}

// ---- Real elements

// No further than the level.
template <Side side, class T>
struct Limit {
  T level;
  explicit Limit(T l) : level(l) {}
  HWY_INLINE auto operator()(auto d, auto x) const {
    if constexpr (side == Side::kBelow) {
      return hn::Max(hn::Set(d, level), x);
    } else {
      return hn::Min(hn::Set(d, level), x);
    }
  }
};

// A value instead of elements beyond the level.
template <Side side, class T>
struct Replace {
  T level, value;
  Replace(T l, T v) : level(l), value(v) {}
  HWY_INLINE auto operator()(auto d, auto x) const {
    return hn::IfThenElse(IsBeyond<side>(x, hn::Set(d, level)), hn::Set(d, value), x);
  }
};

template <class T>
struct ReplaceBoth {
  Replace<Side::kBelow, T> below;
  Replace<Side::kAbove, T> above;
  ReplaceBoth(T levelLT, T valueLT, T levelGT, T valueGT) : below(levelLT, valueLT), above(levelGT, valueGT) {}
  HWY_INLINE auto operator()(auto d, auto x) const {
    const auto isBelow = IsBeyond<Side::kBelow>(x, hn::Set(d, below.level));
    return hn::IfThenElse(isBelow, hn::Set(d, below.value), above(d, x));
  }
};

// The magnitude no further than the level.
template <Side side, class T>
struct LimitAbs {
  T level;
  explicit LimitAbs(T l) : level(NotNegative(l)) {}
  HWY_INLINE auto operator()(auto d, auto x) const {
    if constexpr (isFloat<T>) {
      return hn::CopySign(Limit<side, T>(level)(d, hn::Abs(x)), x);
    } else {
      const auto most = hn::Set(d, level), least = hn::Set(d, static_cast<T>(-level));
      if constexpr (side == Side::kAbove) {
        return hn::Min(hn::Max(x, least), most);
      } else {
        return hn::IfThenElse(hn::Lt(x, hn::Zero(d)), hn::Min(x, least), hn::Max(x, most));
      }
    }
  }
};

// ---- Complex elements of 16-bit integers

// |z|^2 - 1 in 32 bits: |z|^2 itself reaches 2^31.
HWY_INLINE auto SquareLessOne(auto pairs) {
  const auto square = SumOfPairs(pairs, pairs);
  return hn::Sub(square, hn::Set(hn::DFromV<decltype(square)>{}, 1));
}

template <Side side>
struct Beyond16 {
  int32_t level, squareLessOne;
  explicit Beyond16(Orp16s l) : level(NotNegative(l)), squareLessOne(level * level - 1) {}
  HWY_INLINE auto operator()(auto pairs) const {
    const auto square = SquareLessOne(pairs);
    return IsBeyond<side>(square, hn::Set(hn::DFromV<decltype(square)>{}, squareLessOne));
  }
};

template <Side side>
struct Replace<side, Orp16sc> {
  Beyond16<side> beyond;
  Orp16sc value;
  Replace(Orp16s l, Orp16sc v) : beyond(l), value(v) {}
  HWY_INLINE auto operator()(auto d, auto pairs) const {
    constexpr hn::RepartitionToWide<decltype(d)> di32;
    const auto replacement = hn::Set(di32, get(reinterpret_cast<const int32_t*>(&value)));
    return hn::BitCast(d, hn::IfThenElse(beyond(pairs), replacement, hn::BitCast(di32, pairs)));
  }
};

// A part scaled by level / |z| is rounded exactly. The quotient q = level |part| / |z| by an approximation of 1 / |z|
// is wrong by less than 1 / 50, so that with k below it the nearest integer is k or k + 1, the latter if (2 level
// |part|)^2 > (2k + 1)^2 |z|^2. There are no ties: |z| were an integer, and the part would have as many factors of two
// as that.
template <Side side>
struct Limit<side, Orp16sc> {
  Beyond16<side> beyond;
  explicit Limit(Orp16s l) : beyond(l) {}

  template <class D, class V>
  HWY_INLINE V operator()(D d, V pairs) const {
    constexpr hn::RepartitionToWide<D> di32;
    constexpr hn::RebindToFloat<decltype(di32)> df32;
    const auto isBeyond = beyond(pairs);
    if (hn::AllFalse(di32, isBeyond)) return pairs;

    const auto square = SumOfPairs(pairs, pairs);
    const auto inverse = InverseRoot(hn::Abs(hn::ConvertTo(df32, square)));
    const auto scaled = [&](int32_t levelOfPart) HWY_ATTR {
      const auto product = SumOfPairs(pairs, hn::BitCast(d, hn::Set(di32, levelOfPart)));
      const auto sign = hn::BroadcastSignBit(product), numerator = hn::Abs(product);
      const auto below = hn::ConvertTo(di32, hn::Mul(hn::ConvertTo(df32, numerator), inverse));
      const auto rounded = hn::Add(below, RoundsUp(numerator, below, square));
      return hn::Sub(hn::Xor(rounded, sign), sign);
    };
    const auto re = scaled(beyond.level), im = scaled(beyond.level << 16);
    auto result = hn::Or(hn::And(re, hn::Set(di32, 0xFFFF)), hn::ShiftLeft<16>(im));
    const auto elements = hn::BitCast(di32, pairs);
    if constexpr (side == Side::kBelow)
      result = hn::IfThenElse(hn::Eq(elements, hn::Zero(di32)), hn::Set(di32, beyond.level), result);
    return hn::BitCast(d, hn::IfThenElse(isBeyond, result, elements));
  }

 private:
  // The processor's approximation, to 11 bits at least, after one step of Newton's method.
  template <class V>
  static HWY_INLINE V InverseRoot(V x) {
    constexpr hn::DFromV<V> d;
    const auto root = hn::ApproximateReciprocalSqrt(x);
    const auto half = hn::Mul(hn::Mul(x, hn::Set(d, 0.5F)), root);
    return hn::Mul(root, hn::Sub(hn::Set(d, 1.5F), hn::Mul(half, root)));
  }

  // 1 where the quotient is nearer to below + 1, else 0.
  template <class V>
  static HWY_INLINE V RoundsUp(V numerator, V below, V square) {
    constexpr hn::DFromV<V> di32;
    constexpr hn::RebindToUnsigned<decltype(di32)> du32;
    const auto twice = [](V v) HWY_ATTR { return hn::Add(v, v); };
    const auto a = hn::BitCast(du32, twice(numerator));
    const auto b = hn::BitCast(du32, hn::Add(twice(below), hn::Set(di32, 1)));
    const auto n = hn::BitCast(du32, square);
    const auto isLess = [=](auto p, auto q, auto r) HWY_ATTR {  // r q^2 < p^2, as the sign of the difference
      const auto bound = hn::MulEven(hn::BitCast(du32, hn::MulEven(q, q)), r);
      return hn::ShiftRight<63>(hn::Sub(bound, hn::MulEven(p, p)));
    };
    const auto even = isLess(a, b, n), odd = isLess(OddLanes(a), OddLanes(b), OddLanes(n));
    return hn::BitCast(di32, hn::Or(even, hn::ShiftLeft<32>(odd)));
  }
};

// ---- Complex elements of floats, in planes of double

template <class V>
HWY_INLINE V SquareOf(Parts<V> z) {
  return hn::Add(hn::Mul(z.re, z.re), hn::Mul(z.im, z.im));
}

// 1 for an infinite part and 0 for a finite one, with its sign.
template <class V>
HWY_INLINE V UnitOfInfinite(V part) {
  constexpr hn::DFromV<V> d;
  const auto isInfinite = hn::Eq(hn::Abs(part), hn::Inf(d));
  return hn::CopySign(hn::IfThenElseZero(isInfinite, hn::Set(d, 1.0)), part);
}

// A part raised without bound.
template <class V>
HWY_INLINE V Infinite(V part) {
  constexpr hn::DFromV<V> d;
  return hn::IfThenElse(hn::Eq(part, hn::Zero(d)), part, hn::CopySign(hn::Inf(d), part));
}

// Complex elements as one lane each.
template <class D>
using TagOfPairs = hn::RepartitionToWide<hn::RebindToUnsigned<D>>;

template <Side side>
struct Replace<side, Orp32fc> {
  static constexpr size_t kWorkBytes = sizeof(double);
  double square;
  Orp32fc value;
  Replace(Orp32f l, Orp32fc v) : square(static_cast<double>(NotNegative(l)) * NotNegative(l)), value(v) {}

  HWY_INLINE auto operator()(auto d, auto pairs) const {
    constexpr TagOfPairs<decltype(d)> du64;
    const auto isBeyond = IsBeyond<side>(SquareOf(ToDoubles(pairs)), hn::Set(hn::ScalableTag<double>{}, square));
    const auto replacement = hn::Set(du64, get(reinterpret_cast<const uint64_t*>(&value)));
    const auto elements = hn::BitCast(du64, pairs);
    return hn::BitCast(d, hn::IfThenElse(hn::RebindMask(du64, isBeyond), replacement, elements));
  }
};

template <Side side>
struct Limit<side, Orp32fc> {
  static constexpr size_t kWorkBytes = sizeof(double);
  double level;
  explicit Limit(Orp32f l) : level(NotNegative(l)) {}

  template <class D, class V>
  HWY_INLINE V operator()(D d, V pairs) const {
    constexpr hn::ScalableTag<double> df64;
    constexpr TagOfPairs<D> du64;
    auto z = ToDoubles(pairs);
    auto square = SquareOf(z);
    const auto isBeyond = IsBeyond<side>(square, hn::Set(df64, level * level));
    if (hn::AllFalse(df64, isBeyond)) return pairs;

    const auto zero = hn::Zero(df64);
    if constexpr (side == Side::kAbove) {
      const auto isInfinite = hn::Eq(square, hn::Inf(df64));
      if (HWY_UNLIKELY(!hn::AllFalse(df64, isInfinite))) {
        z = {hn::IfThenElse(isInfinite, UnitOfInfinite(z.re), z.re),
             hn::IfThenElse(isInfinite, UnitOfInfinite(z.im), z.im)};
        square = hn::IfThenElse(isInfinite, SquareOf(z), square);
      }
    }
    const auto factor = hn::Div(hn::Set(df64, level), hn::Sqrt(square));
    Parts<hn::Vec<decltype(df64)>> result{hn::Mul(z.re, factor), hn::Mul(z.im, factor)};
    if constexpr (side == Side::kBelow) {
      if (HWY_UNLIKELY(level == kInfinity)) result = {Infinite(z.re), Infinite(z.im)};
      const auto isZero = hn::Eq(square, zero);
      result.re = hn::IfThenElse(isZero, hn::Set(df64, level), result.re);
      result.im = hn::IfThenElse(isZero, zero, result.im);
    }
    const auto limited = hn::BitCast(du64, ToPairs(d, result));
    return hn::BitCast(d, hn::IfThenElse(hn::RebindMask(du64, isBeyond), limited, hn::BitCast(du64, pairs)));
  }
};

// ---- Complex elements of doubles, scaled by powers of two

// A level as fraction * 2^exponent, and elements compared with it at the level's scale, where their squares may
// overflow or vanish without harm.
struct ScaledLevel {
  double level, fraction, down;  // down: 2^-exponent
  uint64_t exponent;             // biased

  ScaledLevel(double l) : level(l) {
    exponent = HWY_MIN(HWY_MAX(get(reinterpret_cast<const uint64_t*>(&level)) >> 52, kLeastExponent), kMostExponent);
    const uint64_t bits = (2 * kUnitExponent - exponent) << 52;
    down = get(reinterpret_cast<const double*>(&bits));
    fraction = level * down;
  }
  template <Side side>
  HWY_INLINE auto HasBeyond(auto pairs) const {
    constexpr hn::DFromV<decltype(pairs)> d;
    const auto square = SquareOfPairs(hn::Mul(pairs, hn::Set(d, down)));
    return IsBeyond<side>(square, hn::Set(d, fraction * fraction));
  }
};

template <Side side>
struct Replace<side, Orp64fc> {
  ScaledLevel level;
  Orp64fc value;
  Replace(Orp64f l, Orp64fc v) : level(NotNegative(l)), value(v) {}
  HWY_INLINE auto operator()(auto d, auto pairs) const {
    const auto replacement = hn::OddEven(hn::Set(d, value.im), hn::Set(d, value.re));
    return hn::IfThenElse(level.template HasBeyond<side>(pairs), replacement, pairs);
  }
};

template <Side side>
struct Limit<side, Orp64fc> {
  ScaledLevel level;
  explicit Limit(Orp64f l) : level(NotNegative(l)) {}

  template <class D, class V>
  HWY_INLINE V operator()(D d, V pairs) const {
    constexpr hn::RebindToUnsigned<D> du;
    const auto isBeyond = level.template HasBeyond<side>(pairs);
    if (hn::AllFalse(d, isBeyond)) return pairs;

    V z = pairs;
    auto larger = LargerPart(z);
    if constexpr (side == Side::kAbove) {
      const auto isInfinite = hn::RebindMask(d, hn::Eq(larger, hn::BitCast(du, hn::Inf(d))));
      if (HWY_UNLIKELY(!hn::AllFalse(d, isInfinite))) {
        z = hn::IfThenElse(isInfinite, UnitOfInfinite(z), z);
        larger = LargerPart(z);
      }
    }
    // |z| = magnitude * 2^exponent. The quotient below is at most 2^level.exponent, since the magnitude is not less
    // than either part: the product does not overflow.
    const auto exponent = ExponentOf(larger);
    const auto magnitude = hn::Sqrt(SquareOfPairs(hn::Mul(z, InversePowerOfTwo(exponent))));
    const auto scaled = TimesPowerOfTwo(z, hn::Set(du, level.exponent), exponent);
    V result = hn::Mul(hn::Div(scaled, magnitude), hn::Set(d, level.fraction));
    if constexpr (side == Side::kBelow) {
      if (HWY_UNLIKELY(level.level == kInfinity)) result = Infinite(z);
      const auto ofZero = hn::OddEven(hn::Zero(d), hn::Set(d, level.level));
      result = hn::IfThenElse(hn::RebindMask(d, hn::Eq(larger, hn::Zero(du))), ofZero, result);
    }
    return hn::IfThenElse(isBeyond, result, pairs);
  }
};

// ---- Reciprocals: conj(z) / (|z| max(|z|, level))

// Reciprocal of an element without direction: positive and real, infinite with the sign of the element for level 0.
template <class D, class V>
HWY_INLINE V InverseOfZero(D d, V re, double level) {
  const auto reciprocal = hn::Set(d, static_cast<hn::TFromD<D>>(1.0 / level));
  return level > 0 ? reciprocal : hn::CopySign(reciprocal, re);
}

template <class T>
struct Inverse : Watch<T> {
  T level;
  HWY_INLINE auto operator()(auto d, auto x) const {
    const auto divisor = hn::Max(hn::Set(d, level), hn::Abs(x));
    this->Note(hn::Eq(divisor, hn::Zero(d)));
    return hn::Div(hn::CopySign(hn::Set(d, T{1}), x), divisor);
  }
};

template <>
struct Inverse<Orp32fc> : Watch<double> {
  static constexpr size_t kWorkBytes = sizeof(double);
  double level;

  HWY_INLINE auto operator()(auto d, auto pairs) const {
    constexpr hn::ScalableTag<double> df64;
    const auto zero = hn::Zero(df64), one = hn::Set(df64, 1.0);
    const auto z = ToDoubles(pairs);
    const auto square = SquareOf(z), levelSquare = hn::Set(df64, level * level);
    const auto isUsual = hn::And(hn::Gt(square, levelSquare), hn::Lt(square, hn::Inf(df64)));
    if (HWY_LIKELY(hn::AllTrue(df64, isUsual))) {
      const auto factor = hn::Div(one, square);
      return ToPairs(d, Parts<hn::Vec<decltype(df64)>>{hn::Mul(z.re, factor), hn::Neg(hn::Mul(z.im, factor))});
    }
    const auto isZero = hn::Eq(square, zero);
    if (level == 0) Note(isZero);
    const auto raised = hn::Mul(hn::Sqrt(square), hn::Set(df64, level));
    const auto factor = hn::Div(one, hn::IfThenElse(hn::Le(square, levelSquare), raised, square));
    // A factor of 0 comes from an infinite part or level; of the element the sign remains then.
    const auto isVanishing = hn::Eq(factor, zero);
    const auto product = [=](auto part) HWY_ATTR {
      return hn::IfThenElse(isVanishing, hn::CopySign(zero, part), hn::Mul(part, factor));
    };
    const auto re = hn::IfThenElse(isZero, InverseOfZero(df64, z.re, level), product(z.re));
    const auto im = hn::IfThenElse(isZero, zero, product(hn::Neg(z.im)));
    return ToPairs(d, Parts<hn::Vec<decltype(df64)>>{re, im});
  }
};

template <>
struct Inverse<Orp64fc> : Watch<double> {
  ScaledLevel level;

  HWY_INLINE auto operator()(auto d, auto z) const {
    constexpr hn::RebindToUnsigned<decltype(d)> du;
    const auto zero = hn::Zero(d);
    const auto larger = LargerPart(z);
    const auto isZero = hn::RebindMask(d, hn::Eq(larger, hn::Zero(du)));
    if (level.level == 0) Note(isZero);
    const auto isSmall = level.template HasBeyond<Side::kBelow>(z);
    // With z scaled to a magnitude near 1, the result is that quotient by 2^exponent of the element or of the level.
    const auto exponent = ExponentOf(larger);
    const auto conjugate = hn::Xor(z, hn::OddEven(hn::SignBit(d), zero));
    const auto above = hn::Mul(conjugate, InversePowerOfTwo(exponent)), square = SquareOfPairs(above);
    auto below = square, up = InversePowerOfTwo(exponent);
    if (!hn::AllFalse(d, isSmall)) {
      const auto raised = hn::Mul(hn::Sqrt(square), hn::Set(d, level.fraction));
      below = hn::IfThenElse(isSmall, raised, below);
      up = hn::IfThenElse(isSmall, hn::Set(d, level.down), up);
    }
    const auto one = hn::Set(d, 1.0);  // a small part must not lose digits on its way up
    auto result = hn::Mul(hn::Div(hn::Mul(above, hn::Max(up, one)), below), hn::Min(up, one));
    const auto isInfinite = hn::RebindMask(d, hn::Eq(larger, hn::BitCast(du, hn::Inf(d))));
    result = hn::IfThenElse(isInfinite, hn::CopySign(zero, conjugate), result);
    return hn::IfThenElse(isZero, hn::OddEven(zero, InverseOfZero(d, z, level.level)), result);
  }
};

// ---- Calls

template <class T>
using AtLeast = Limit<Side::kBelow, T>;
template <class T>
using AtMost = Limit<Side::kAbove, T>;
template <class T>
using ReplaceBelow = Replace<Side::kBelow, T>;
template <class T>
using ReplaceAbove = Replace<Side::kAbove, T>;
template <class T>
using AbsAtLeast = LimitAbs<Side::kBelow, T>;
template <class T>
using AbsAtMost = LimitAbs<Side::kAbove, T>;

template <template <class> class Op, class T, class... Levels>
HWY_NOINLINE OrpStatus threshold(const T* pSrc, T* pDst, int len, Levels... levels) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  Map(Op<T>(levels...), pDst, toSize(len), Vector<T>{pSrc});
  return StsOk;
}

enum : int { kRelLess = 0, kRelGreater = 4 };

template <class T>
OrpStatus byRelation(const T* pSrc, T* pDst, int len, Lane<T> level, int relOp) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  if (relOp == kRelLess) return threshold<AtLeast>(pSrc, pDst, len, level);
  if (relOp == kRelGreater) return threshold<AtMost>(pSrc, pDst, len, level);
  return StsBadArg;
}

template <class T>
HWY_NOINLINE bool MapInverse(T* dst, size_t len, const T* src, Lane<T> level) {
  const Inverse<T> op{{}, level};
  Map(op, dst, len, Padded<T>{{src}, 1});
  return op.Found();
}

// `from`: the length from which on two threads may share the call.
template <int from, class T>
OrpStatus inverse(const T* pSrc, T* pDst, int len, Lane<T> level) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  ORPS_RETURN_IF(level < 0, StsBadThreshold);
  if (!(level > 0)) level = 0;  // a NaN, or -0
  const bool zero =
      inParts<from>(len, [=](size_t i, size_t count) HWY_ATTR { return MapInverse(pDst + i, count, pSrc + i, level); });
  return zero ? StsDivByZero : StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/threshold.inc"
#include "frame/exports-inl.h"
