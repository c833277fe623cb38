// Exponential, logarithm, cube root and hypotenuse of vectors, float and double. Errors stay below 1 unit in the last
// place over the whole range; docs/accuracy.md has the measured ones.
//
// [Cody, Waite 1980] W. J. Cody, W. Waite: Software Manual for the Elementary Functions. Reduction of arguments by
//   constants in two parts, the first one short enough for exact products.
// [Dekker 1971] T. J. Dekker: A floating-point technique for extending the available precision. Numer. Math. 18.
// [Estrin 1960] G. Estrin: Organization of computer systems: the fixed plus variable structure computer. Proc. WJCC.
// [Tang 1990] P. T. P. Tang: Table-driven implementation of the logarithm function. ACM TOMS 16(4); the form of the
//   logarithm by s = f / (2 + f).
// Polynomials are minimax ones [Remez 1934], computed for these kernels with coefficients rounded one after another.
#if defined(ORPSP_SIMD_MATHS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_SIMD_MATHS_INL_H_
#undef ORPSP_SIMD_MATHS_INL_H_
#else
#define ORPSP_SIMD_MATHS_INL_H_
#endif

#include <hwy/highway.h>

#include <limits>

#include "simd/map-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

inline constexpr bool kHasFma = HWY_TARGET != HWY_SSSE3;

// c[0] + c[1] x + c[2] x^2 + ... [Estrin 1960]: pairs of terms, pairs of these, and so on. The shorter chain of
// dependent operations lets more vectors be on their way at the same time.
template <size_t count, class V>
HWY_INLINE V SumOfTerms(const V (&term)[count], V x) {
  if constexpr (count == 1) {
    return term[0];
  } else {
    V pair[(count + 1) / 2];
    for (size_t i = 0; i < count / 2; ++i) pair[i] = hn::MulAdd(term[2 * i + 1], x, term[2 * i]);
    if constexpr (count % 2 == 1) pair[count / 2] = term[count - 1];
    return SumOfTerms(pair, hn::Mul(x, x));
  }
}
template <class D, class V, class T, size_t count>
HWY_INLINE V Polynomial(D d, V x, const T (&c)[count]) {
  V pair[(count + 1) / 2];
  for (size_t i = 0; i < count / 2; ++i) pair[i] = hn::MulAdd(hn::Set(d, c[2 * i + 1]), x, hn::Set(d, c[2 * i]));
  if constexpr (count % 2 == 1) pair[count / 2] = hn::Set(d, c[count - 1]);
  return SumOfTerms(pair, hn::Mul(x, x));
}

template <class T>
struct Ieee;
template <>
struct Ieee<float> {
  using Bits = uint32_t;
  static constexpr int kMantissaBits = 23;
  static constexpr Bits kBias = 127;
  static constexpr Bits kDomainNan = 0xFFC00000u;
};
template <>
struct Ieee<double> {
  using Bits = uint64_t;
  static constexpr int kMantissaBits = 52;
  static constexpr Bits kBias = 1023;
  static constexpr Bits kDomainNan = 0xFFF8000000000000u;
};
template <class T>
inline constexpr int kMantissaBits = Ieee<T>::kMantissaBits;

template <class T>
inline constexpr T kInfinity = std::numeric_limits<T>::infinity();
template <class T>
inline constexpr T kLeastNormal = std::numeric_limits<T>::min();

// The NaN of arguments outside a function's domain.
template <class D, class T = hn::TFromD<D>>
HWY_INLINE hn::Vec<D> DomainNan(D d) {
  return hn::BitCast(d, hn::Set(hn::RebindToUnsigned<D>{}, Ieee<T>::kDomainNan));
}

// 2^n for integers n as lanes of unsigned or signed integers, in the exponent range of normal numbers.
template <class D, class I, class T = hn::TFromD<D>>
HWY_INLINE hn::Vec<D> TwoTo(D d, I n) {
  using Bits = hn::TFromV<I>;
  return hn::BitCast(
      d, hn::ShiftLeft<kMantissaBits<T>>(hn::Add(n, hn::Set(hn::DFromV<I>{}, static_cast<Bits>(Ieee<T>::kBias)))));
}

// ---- Lanes of float in two halves of double

template <class D>
using HalvesTag = hn::RepartitionToWide<D>;  // for D of float

template <class D, class V>
HWY_INLINE auto LowerDoubles(D, V v) {
  return hn::PromoteTo(HalvesTag<D>{}, hn::LowerHalf(v));
}
template <class D, class V>
HWY_INLINE auto UpperDoubles(D, V v) {
  return hn::PromoteTo(HalvesTag<D>{}, hn::UpperHalf(hn::Half<D>{}, v));
}
template <class D, class W>
HWY_INLINE hn::Vec<D> FromDoubles(D d, W lower, W upper) {
  constexpr hn::Half<D> dh;
  return hn::Combine(d, hn::DemoteTo(dh, upper), hn::DemoteTo(dh, lower));
}

// ---- Products with their rounding error

// c - a * b, rounded once (or as if the product had twice the digits).
template <class D, class V>
HWY_INLINE V Residual(D d, V a, V b, V c) {
  if constexpr (kHasFma) {
    return hn::NegMulAdd(a, b, c);
  } else if constexpr (std::is_same_v<hn::TFromD<D>, float>) {
    const auto half = [](auto x, auto y, auto z) HWY_ATTR { return hn::Sub(z, hn::Mul(x, y)); };
    return FromDoubles(d, half(LowerDoubles(d, a), LowerDoubles(d, b), LowerDoubles(d, c)),
                       half(UpperDoubles(d, a), UpperDoubles(d, b), UpperDoubles(d, c)));
  } else {  // [Dekker 1971]
    struct Parts {
      V high, low;
    };
    const auto split = [=](V v) HWY_ATTR {
      const auto high = hn::BitCast(
          d, hn::And(hn::BitCast(hn::RebindToUnsigned<D>{}, v), hn::Set(hn::RebindToUnsigned<D>{}, ~0x7FFFFFFull)));
      return Parts{high, hn::Sub(v, high)};
    };
    const Parts p = split(a), q = split(b);
    auto rest = hn::Sub(c, hn::Mul(p.high, q.high));
    rest = hn::Sub(hn::Sub(rest, hn::Mul(p.high, q.low)), hn::Mul(p.low, q.high));
    return hn::Sub(rest, hn::Mul(p.low, q.low));
  }
}

// ---- Exponential: e^x = 2^n e^r with |r| <= ln 2 / 2 [Cody, Waite 1980]

template <class T>
struct ExpConstants;
template <>
struct ExpConstants<float> {
  // Beyond these, results are zero and infinity.
  static constexpr float kLeast = -104, kMost = 89;
  static constexpr float kLog2E = 0x1.715476p+0F, kLn2High = 0x1.62e4p-1F, kLn2Low = 0x1.7f7d1cp-20F;
  static constexpr float kRound = 0x1.8p23F;
  // (e^r - 1 - r) / r^2
  static constexpr float kSeries[] = {0x1.fffffcp-2F, 0x1.555492p-3F, 0x1.5558f2p-5F, 0x1.123a20p-7F, 0x1.6a23dcp-10F};
};
template <>
struct ExpConstants<double> {
  static constexpr double kLeast = -746, kMost = 710;
  static constexpr double kLog2E = 0x1.71547652b82fep+0, kLn2High = 0x1.62e42fefa38p-1, kLn2Low = 0x1.ef35793c7673p-45;
  static constexpr double kRound = 0x1.8p52;
  static constexpr double kSeries[] = {0x1.000000000000ap-1,  0x1.55555555554fap-3,  0x1.555555555083fp-5,
                                       0x1.1111111127cedp-7,  0x1.6c16c18438e49p-10, 0x1.a01a012a149fdp-13,
                                       0x1.a01999e1f37ecp-16, 0x1.71df25ab29fcdp-19, 0x1.28ad9bd9eeff4p-22,
                                       0x1.ad7f45df0478cp-26};
};

// e^r for |r| <= ln 2 / 2
template <class D, class V, class T = hn::TFromD<D>>
HWY_INLINE V ExpOfReduced(D d, V r) {
  const auto one = hn::Set(d, T{1}), sum = hn::Add(one, r);
  const auto lost = hn::Add(hn::Sub(one, sum), r);  // [Dekker 1971]
  return hn::Add(sum, hn::MulAdd(Polynomial(d, r, ExpConstants<T>::kSeries), hn::Mul(r, r), lost));
}

#if HWY_TARGET == HWY_AVX3
HWY_INLINE hn::Vec512<float> Scale(hn::Vec512<float> v, hn::Vec512<float> n) {
  return hn::Vec512<float>{_mm512_scalef_ps(v.raw, n.raw)};
}
HWY_INLINE hn::Vec512<double> Scale(hn::Vec512<double> v, hn::Vec512<double> n) {
  return hn::Vec512<double>{_mm512_scalef_pd(v.raw, n.raw)};
}
#endif

template <class D, class V>
HWY_INLINE V Exp(D d, V x) {
  using C = ExpConstants<hn::TFromD<D>>;
  x = hn::Min(hn::Set(d, C::kMost), hn::Max(hn::Set(d, C::kLeast), x));  // in this order a NaN stays
  const auto round = hn::Set(d, C::kRound);
  const auto shifted = hn::MulAdd(x, hn::Set(d, C::kLog2E), round);  // n in the lower bits
  const auto n = hn::Sub(shifted, round);
  const auto r = hn::NegMulAdd(n, hn::Set(d, C::kLn2Low), hn::NegMulAdd(n, hn::Set(d, C::kLn2High), x));
  const auto mantissa = ExpOfReduced(d, r);
#if HWY_TARGET == HWY_AVX3
  if constexpr (sizeof(V) == 64) return Scale(mantissa, n);
#endif
  // In two steps, since 2^n may be no normal number.
  constexpr hn::RebindToUnsigned<D> du;
  using Bits = hn::TFromD<decltype(du)>;
  const auto exponent = hn::Sub(hn::BitCast(du, shifted), hn::BitCast(du, round));
  const auto first = hn::Sub(hn::ShiftRight<1>(hn::Add(exponent, hn::Set(du, Bits{4096}))), hn::Set(du, Bits{2048}));
  return hn::Mul(hn::Mul(mantissa, TwoTo(d, first)), TwoTo(d, hn::Sub(exponent, first)));
}

// ---- Logarithm: x = 2^e m with m in [sqrt 1/2, sqrt 2)

// Notes elements with which a function has a singularity or which lie outside its domain.
template <class T>
struct DomainWatch {
  Watch<T> singular, outside;

  HWY_INLINE OrpStatus Status() const {
    if (HWY_UNLIKELY(outside.Found())) return StsDomain;
    return HWY_UNLIKELY(singular.Found()) ? StsSingularity : StsOk;
  }
};

template <class T>
struct LnConstants;
template <>
struct LnConstants<float> {
  static constexpr uint32_t kRootOfHalf = 0x3F3504F3u;
  static constexpr float kLn2High = 0x1.62e4p-1F, kLn2Low = 0x1.7f7d1cp-20F;
  static constexpr float kInteger = 0x1p23F;  // with the exponent in its lower bits: its value plus 2^23
  // (ln(1 + f) - f + f^2 / 2) / f^3
  static constexpr float kSeries[] = {0x1.555554p-2F, -0x1.000226p-2F, 0x1.99a008p-3F, -0x1.547246p-3F,
                                      0x1.22da26p-3F, -0x1.0d8542p-3F, 0x1.055b34p-3F, -0x1.38b4f2p-4F};
};
template <>
struct LnConstants<double> {
  static constexpr uint64_t kRootOfHalf = 0x3FE6A09E667F3BCDu;
  static constexpr double kLn2High = 0x1.62e42fefa38p-1, kLn2Low = 0x1.ef35793c7673p-45;
  static constexpr double kInteger = 0x1p52;
  // (ln((1 + s) / (1 - s)) - 2s) / s^3 by s^2
  static constexpr double kSeries[] = {0x1.5555555555593p-1, 0x1.999999997fb32p-2, 0x1.24924942179edp-2,
                                       0x1.c71c51e7f52ffp-3, 0x1.7466462d834d8p-3, 0x1.39a0f4e0a6e47p-3,
                                       0x1.2f0d902f1185fp-3};
};

// x = 2^e m with m from sqrt(1/2) to sqrt(2), for normal x > 0.
template <class V>
struct ExponentAndMantissa {
  V e, m;
};
template <class D, class V, class T = hn::TFromD<D>>
HWY_INLINE ExponentAndMantissa<V> Parted(D d, V x) {
  using C = LnConstants<T>;
  using Bits = typename Ieee<T>::Bits;
  constexpr hn::RebindToUnsigned<D> du;
  constexpr Bits kBias = Ieee<T>::kBias, kOne = kBias << kMantissaBits<T>;
  const auto bits = hn::BitCast(du, x);
  const auto biased = hn::ShiftRight<kMantissaBits<T>>(hn::Add(bits, hn::Set(du, kOne - C::kRootOfHalf)));
  const auto integer = hn::BitCast(d, hn::Or(biased, hn::BitCast(du, hn::Set(d, C::kInteger))));
  const auto m = hn::Sub(hn::Add(bits, hn::Set(du, kOne)), hn::ShiftLeft<kMantissaBits<T>>(biased));
  return {hn::Sub(integer, hn::Set(d, C::kInteger + static_cast<T>(kBias))), hn::BitCast(d, m)};
}

// ln(x) + ln(2) * more for normal x > 0.
template <class D, class V, class T = hn::TFromD<D>>
HWY_INLINE V LnOfNormal(D d, V x, V more) {
  using C = LnConstants<T>;
  const auto parted = Parted(d, x);
  const auto e = hn::Add(parted.e, more), f = hn::Sub(parted.m, hn::Set(d, T{1}));
  const auto square = hn::Mul(f, f), low = hn::Mul(e, hn::Set(d, C::kLn2Low));
  if constexpr (std::is_same_v<T, float>) {
    const auto series = hn::MulAdd(Polynomial(d, f, C::kSeries), f, hn::Set(d, -0.5F));
    return hn::MulAdd(e, hn::Set(d, C::kLn2High), hn::Add(f, hn::MulAdd(square, series, low)));
  } else {  // [Estrin 1960] G. Estrin: Organization of computer systems: the fixed plus variable structure computer.
            // Proc. WJCC.
            // [Tang 1990]: ln(1 + f) = f - h + s (h + R), where h = f^2 / 2
    const auto s = hn::Div(f, hn::Add(f, hn::Set(d, T{2})));
    const auto z = hn::Mul(s, s), half = hn::Mul(square, hn::Set(d, T{0.5}));
    const auto rest = hn::MulAdd(s, hn::MulAdd(z, Polynomial(d, z, C::kSeries), half), low);
    return hn::MulAdd(e, hn::Set(d, C::kLn2High), hn::Sub(f, hn::Sub(half, rest)));
  }
}

template <class D, class V, class T = hn::TFromD<D>>
HWY_NOINLINE V LnOfAny(D d, V x, const DomainWatch<T>& watch) {
  const auto zero = hn::Zero(d);
  const auto isSmall = hn::Lt(x, hn::Set(d, kLeastNormal<T>)), isZero = hn::Eq(x, zero), isNegative = hn::Lt(x, zero);
  watch.singular.Note(isZero);
  watch.outside.Note(isNegative);
  constexpr T kUp = 2 / std::numeric_limits<T>::epsilon();  // 2^(kMantissaBits + 1)
  auto result = LnOfNormal(d, hn::IfThenElse(isSmall, hn::Mul(x, hn::Set(d, kUp)), x),
                           hn::IfThenElseZero(isSmall, hn::Set(d, T{-1 - kMantissaBits<T>})));
  result = hn::IfThenElse(hn::Lt(x, hn::Set(d, kInfinity<T>)), result, hn::Add(x, x));  // infinity and NaN
  result = hn::IfThenElse(isZero, hn::Set(d, -kInfinity<T>), result);
  return hn::IfThenElse(isNegative, DomainNan(d), result);
}

template <class D, class V, class T = hn::TFromD<D>>
HWY_INLINE V Ln(D d, V x, const DomainWatch<T>& watch) {
  const auto usual = hn::And(hn::Ge(x, hn::Set(d, kLeastNormal<T>)), hn::Lt(x, hn::Set(d, kInfinity<T>)));
  if (HWY_UNLIKELY(!hn::AllTrue(d, usual))) return LnOfAny(d, x, watch);
  return LnOfNormal(d, x, hn::Zero(d));
}

// ---- Cube root: by its reciprocal, which Newton's method (of third order) finds without divisions

// In: normal x > 0. The root with most of its digits, and 1 / (3 root^2).
template <class D, class V>
HWY_INLINE V CubrtEstimate(D d, V x, V& slope) {
  constexpr hn::RebindToSigned<D> di;
  // The bits of x are nearly its logarithm: theirs divided by -3 are nearly those of x^(-1/3).
  const auto third = hn::Mul(hn::ConvertTo(d, hn::BitCast(di, x)), hn::Set(d, 1 / 3.0F));
  const auto bits = hn::Sub(hn::Set(di, 0x54A21D2A), hn::ConvertTo(di, third));
  auto y = hn::BitCast(d, bits);
  for (int step = 0; step < 2; ++step) {
    const auto rest = hn::NegMulAdd(hn::Mul(hn::Mul(x, y), y), y, hn::Set(d, 1.0F));
    y = hn::MulAdd(hn::Mul(y, rest), hn::MulAdd(rest, hn::Set(d, 2 / 9.0F), hn::Set(d, 1 / 3.0F)), y);
  }
  const auto square = hn::Mul(y, y);
  slope = hn::Mul(square, hn::Set(d, 1 / 3.0F));
  return hn::Mul(x, square);
}

// Single precision; the last step has its residual from double. Correctly rounded but for near ties.
template <class D, class V>
HWY_INLINE V Cubrt(D d, V x) {
  const auto magnitude = hn::Abs(x);
  const auto isSmall = hn::Lt(magnitude, hn::Set(d, kLeastNormal<float>));
  const auto normal = hn::IfThenElse(isSmall, hn::Mul(magnitude, hn::Set(d, 0x1p24F)), magnitude);
  V slope;
  const auto root = CubrtEstimate(d, normal, slope);
  const auto residual = [](auto v, auto t) HWY_ATTR { return hn::Sub(v, hn::Mul(hn::Mul(t, t), t)); };
  const auto rest = FromDoubles(d, residual(LowerDoubles(d, normal), LowerDoubles(d, root)),
                                residual(UpperDoubles(d, normal), UpperDoubles(d, root)));
  auto result = hn::MulAdd(rest, slope, root);
  result = hn::IfThenElse(isSmall, hn::Mul(result, hn::Set(d, 0x1p-8F)), result);
  // Zero, infinity and NaN are their own roots.
  const auto usual = hn::And(hn::Gt(magnitude, hn::Zero(d)), hn::Lt(magnitude, hn::Set(d, kInfinity<float>)));
  return hn::IfThenElse(usual, hn::CopySign(result, x), hn::Add(x, x));
}

// ---- Hypotenuse: sqrt(a^2 + b^2)

template <class T>
struct HypotConstants;
template <>
struct HypotConstants<float> {
  // Between these, neither the square nor its rounding error leaves the range of numbers; what lies outside is scaled.
  static constexpr float kLeast = 0x1p-50F, kMost = 0x1p60F, kUp = 0x1p100F, kDown = 0x1p-70F;
};
template <>
struct HypotConstants<double> {
  static constexpr double kLeast = 0x1p-450, kMost = 0x1p500, kUp = 0x1p640, kDown = 0x1p-600;
};

// v * y for an approximation y of 1 / (2 root), where root = sqrt(square).
template <class D, class V>
HWY_INLINE V OverTwice(D d, V v, V square, V root) {
  if constexpr (std::is_same_v<hn::TFromD<D>, float>) {
    return hn::Mul(hn::Mul(v, hn::Set(d, 0.5F)), hn::ApproximateReciprocalSqrt(square));
  }
#if HWY_TARGET == HWY_AVX3
  if constexpr (std::is_same_v<V, hn::Vec512<double>>)
    return hn::Mul(hn::Mul(v, hn::Set(d, 0.5)), V{_mm512_rsqrt14_pd(square.raw)});
#endif
  return hn::Div(v, hn::Add(root, root));
}

// For magnitudes in order, the larger one within the bounds above: of the smaller one's square less may be lost than
// would count.
template <class D, class V>
HWY_INLINE V HypotOfOrdered(D d, V larger, V smaller) {
  const auto p = hn::Mul(larger, larger), q = hn::Mul(smaller, smaller);
  const auto sum = hn::Add(p, q);
  const auto rounding = hn::Sub(q, hn::Sub(sum, p));                                              // [Dekker 1971]
  const auto errors = hn::Add(Residual(d, larger, larger, p), Residual(d, smaller, smaller, q));  // negative ones
  const auto root = hn::Sqrt(sum);
  // The root's own rounding error counts as well.
  const auto rest = hn::Add(Residual(d, root, root, sum), hn::Sub(rounding, errors));
  return hn::Add(root, OverTwice(d, rest, sum, root));
}

template <class D, class V, class T = hn::TFromD<D>>
HWY_NOINLINE V HypotOfAny(D d, V larger, V smaller) {
  using C = HypotConstants<T>;
  const auto isLarge = hn::Gt(larger, hn::Set(d, C::kMost)), isSmall = hn::Lt(larger, hn::Set(d, C::kLeast));
  const auto one = hn::Set(d, T{1});
  const auto scaleOf = [=](T large, T small) HWY_ATTR {
    return hn::IfThenElse(isLarge, hn::Set(d, large), hn::IfThenElse(isSmall, hn::Set(d, small), one));
  };
  const auto scale = scaleOf(C::kDown, C::kUp), back = scaleOf(1 / C::kDown, 1 / C::kUp);
  const auto infinity = hn::Set(d, kInfinity<T>), zero = hn::Zero(d);
  const auto isFinite = hn::And(hn::Gt(larger, zero), hn::Lt(larger, infinity));
  const auto root = HypotOfOrdered(d, hn::IfThenElse(isFinite, hn::Mul(larger, scale), one), hn::Mul(smaller, scale));
  const auto result = hn::IfThenElse(isFinite, hn::Mul(root, back), hn::Add(larger, smaller));
  return hn::IfThenElse(hn::Or(hn::Eq(larger, infinity), hn::Eq(smaller, infinity)), infinity, result);
}

template <class D, class V, class T = hn::TFromD<D>>
HWY_INLINE V Hypot(D d, V a, V b) {
  using C = HypotConstants<T>;
  a = hn::Abs(a);
  b = hn::Abs(b);
  // A NaN comes out of one of them: these instructions give their second operand if one is NaN.
  const auto larger = hn::Max(a, b), smaller = hn::Min(b, a);
  const auto usual = hn::And(hn::Ge(larger, hn::Set(d, C::kLeast)), hn::Le(larger, hn::Set(d, C::kMost)));
  if (HWY_UNLIKELY(!hn::AllTrue(d, usual))) return HypotOfAny(d, larger, smaller);
  return HypotOfOrdered(d, larger, smaller);
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif
