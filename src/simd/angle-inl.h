// Angles of vectors, float and double: arc tangent of a quotient, sine and cosine. Errors stay below 1 unit in the last
// place over the whole range; docs/accuracy.md has the measured ones.
#if defined(ORPSP_SIMD_ANGLE_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_SIMD_ANGLE_INL_H_
#undef ORPSP_SIMD_ANGLE_INL_H_
#else
#define ORPSP_SIMD_ANGLE_INL_H_
#endif

#include "simd/maths-inl.h"
#include "simd/quarter_turns.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

template <class T>
struct AngleConstants;
template <>
struct AngleConstants<float> {
  static constexpr float kEighth = 0x1.921fb6p-1F, kEighthRest = -0x1.777a5cp-26F;  // pi / 4
  static constexpr float kThreeEighthsRest = -0x1.99bc5cp-28F;  // 3 pi / 4 less the rounded product 3 * kEighth
  // Magnitudes between kLeast and kMost have a quotient whose remainder is a normal number. Others are scaled by kDown
  // above kLarge and by kUp below its reciprocal.
  static constexpr float kLeast = 0x1p-100F, kMost = 0x1p100F, kLarge = 0x1p50F, kDown = 0x1p-80F, kUp = 0x1p95F;
  // (atan(a) - a) / a^3 by a^2
  static constexpr float kArctan[] = {-0x1.555548p-2F, 0x1.9990fep-3F, -0x1.23a952p-3F, 0x1.b13560p-4F,
                                      -0x1.ee2ac0p-5F};
  // (sin(r) - r) / r^3 and (cos(r) - 1 + r^2 / 2) / r^4 by r^2
  static constexpr float kSine[] = {-0x1.555546p-3F, 0x1.110756p-7F, -0x1.994b40p-13F};
  static constexpr float kCosine[] = {0x1.55554ap-5F, -0x1.6c0c28p-10F, 0x1.99e86ap-16F};
};
template <>
struct AngleConstants<double> {
  static constexpr double kEighth = 0x1.921fb54442d18p-1, kEighthRest = 0x1.1a62633145c07p-55;
  static constexpr double kThreeEighthsRest = 0x1.a79394c9e8a0ap-54;
  static constexpr double kLeast = 0x1p-900, kMost = 0x1p900, kLarge = 0x1p450, kDown = 0x1p-700, kUp = 0x1p800;
  static constexpr double kArctan[] = {-0x1.555555555553cp-2, 0x1.9999999995698p-3,  -0x1.24924922a2520p-3,
                                       0x1.c71c70e1cea71p-4,  -0x1.745cf862bc5bfp-4, 0x1.3b1110a7c1f5dp-4,
                                       -0x1.10eb57e541f9fp-4, 0x1.df09ca5596238p-5,  -0x1.9cb9cd9d93c3bp-5,
                                       0x1.3795e5f6ff6ebp-5,  -0x1.24ddcfd9ba45bp-6};
  static constexpr double kSine[] = {-0x1.5555555555549p-3, 0x1.111111110f841p-7,   -0x1.a01a019c0a266p-13,
                                     0x1.71de3570faf18p-19, -0x1.ae5e60c284a79p-26, 0x1.5d915d7901f2bp-33};
  static constexpr double kCosine[] = {0x1.555555555554bp-5,   -0x1.6c16c16c14f47p-10, 0x1.a01a019c7cd45p-16,
                                       -0x1.27e4f7e53a532p-22, 0x1.1ee9d3d9e4271p-29,  -0x1.8fa28f90e27a3p-37};
};

// ---- Arc tangent

// A quotient as a number and its rounding error.
template <class V>
struct Quotient {
  V value, rest;
};

// (n + nRest) / (m + mRest), where the rests are rounding errors.
template <class D, class V>
HWY_INLINE Quotient<V> Divide(D d, V n, V nRest, V m, V mRest) {
  V value, reciprocal;
  if constexpr (std::is_same_v<hn::TFromD<D>, float>) {
    value = hn::Div(n, m);
    reciprocal = hn::ApproximateReciprocal(m);
  } else {
    reciprocal = hn::Div(hn::Set(d, 1.0), m);
    value = hn::Mul(n, reciprocal);
  }
  const auto remainder = hn::Add(Residual(d, value, m, n), hn::NegMulAdd(value, mRest, nRest));
  return {value, hn::Mul(remainder, reciprocal)};
}

// base + atan(smaller / larger), or minus that where `subtracts`, with the sign of y. base is 0, pi/2 or pi, given as
// 0, 2 or 4 eighths of a turn; magnitudes are within the bounds above (the smaller one may be zero).
//
// atan(s / l) is pi / 4 - atan((l - s) / (l + s)) where s / l > tan(pi / 8): all that remains is a multiple k of pi / 4
// and an arc tangent of at most tan(pi / 8).
template <class D, class V, class M, class T = hn::TFromD<D>>
HWY_INLINE V AngleOf(D d, V y, V smaller, V larger, V eighths, M subtracts) {
  using C = AngleConstants<T>;
  const auto isNearDiagonal = hn::Gt(smaller, hn::Mul(larger, hn::Set(d, T{0.4140625})));
  // Sum and difference with their rounding errors [Dekker 1971].
  const auto sum = hn::Add(larger, smaller), difference = hn::Sub(larger, smaller);
  const auto sumRest = hn::Sub(smaller, hn::Sub(sum, larger));
  const auto differenceRest = hn::Sub(hn::Sub(larger, difference), smaller);
  const auto a =
      Divide(d, hn::IfThenElse(isNearDiagonal, difference, smaller), hn::IfThenElseZero(isNearDiagonal, differenceRest),
             hn::IfThenElse(isNearDiagonal, sum, larger), hn::IfThenElseZero(isNearDiagonal, sumRest));

  const auto one = hn::Set(d, T{1}), minusOne = hn::Set(d, T{-1});
  const auto k = hn::Add(eighths, hn::IfThenElseZero(isNearDiagonal, hn::IfThenElse(subtracts, minusOne, one)));
  const auto eighth = hn::Set(d, C::kEighth), eighthRest = hn::Set(d, C::kEighthRest);
  const auto base = hn::Mul(k, eighth);
  V baseRest;
  if constexpr (kHasFma) {
    baseRest = hn::MulAdd(k, eighthRest, hn::MulSub(k, eighth, base));
  } else {  // only 3 * kEighth is rounded
    baseRest = hn::IfThenElse(hn::Eq(k, hn::Set(d, T{3})), hn::Set(d, C::kThreeEighthsRest), hn::Mul(k, eighthRest));
  }

  const auto flip = hn::IfThenElseZero(hn::Xor(subtracts, isNearDiagonal), hn::SignBit(d));
  const auto z = hn::Mul(a.value, a.value), term = hn::Xor(a.value, flip), rest = hn::Xor(a.rest, flip);
  const auto rounded = hn::Add(base, term);
  const auto lost = hn::Add(hn::Add(hn::Sub(base, rounded), term), baseRest);
  // The quotient's rest counts by the derivative, about 1 - z.
  const auto small = hn::Add(hn::NegMulAdd(rest, z, rest), lost);
  const auto series = hn::MulAdd(hn::Mul(z, term), Polynomial(d, z, C::kArctan), small);
  return hn::CopySign(hn::Add(rounded, series), y);
}

template <class D, class V, class T = hn::TFromD<D>>
HWY_INLINE V Arctan(D d, V x) {
  const auto one = hn::Set(d, T{1}), magnitude = hn::Abs(x);
  // A NaN stays in both, being the second operand; an infinity becomes what has no remainder.
  const auto larger = hn::Min(hn::Set(d, AngleConstants<T>::kMost), hn::Max(one, magnitude));
  const auto isSteep = hn::Gt(magnitude, one);
  return AngleOf(d, x, hn::Min(one, magnitude), larger, hn::IfThenElseZero(isSteep, hn::Set(d, T{2})), isSteep);
}

// The angle of (x, y), given the magnitudes of both in order.
template <class D, class V, class M, class T = hn::TFromD<D>>
HWY_INLINE V AngleInPlane(D d, V y, V smaller, V larger, M isSteep, M isLeft) {
  const auto ofAxis = hn::IfThenElse(isSteep, hn::Set(d, T{2}), hn::IfThenElseZero(isLeft, hn::Set(d, T{4})));
  return AngleOf(d, y, smaller, larger, ofAxis, hn::Xor(isSteep, isLeft));
}

template <class D, class V>
HWY_INLINE auto IsNegative(D d, V x) {
  constexpr hn::RebindToSigned<D> di;
  return hn::RebindMask(d, hn::Lt(hn::BitCast(di, x), hn::Zero(di)));
}

// Magnitudes, in order, that AngleOf takes as they are.
template <class D, class V, class T = hn::TFromD<D>>
HWY_INLINE auto IsWithinBounds(D d, V smaller, V larger) {
  using C = AngleConstants<T>;
  return hn::And(hn::Ge(smaller, hn::Set(d, C::kLeast)), hn::Le(larger, hn::Set(d, C::kMost)));
}

template <class D, class V, class T = hn::TFromD<D>>
HWY_NOINLINE V Arctan2OfAny(D d, V y, V x) {
  using C = AngleConstants<T>;
  const auto infinity = hn::Set(d, kInfinity<T>), one = hn::Set(d, T{1});
  auto h = hn::Abs(y), w = hn::Abs(x);
  const auto isSteep = hn::Gt(h, w), isLeft = IsNegative(d, x);
  // (1, 1) has the angle of two infinities, (1, 0) that of two zeros, up to the signs.
  const auto areInfinite = hn::And(hn::Eq(h, infinity), hn::Eq(w, infinity));
  const auto areZero = hn::Eq(hn::Max(h, w), hn::Zero(d));
  h = hn::IfThenElse(areInfinite, one, h);
  w = hn::IfThenElse(hn::Or(areInfinite, areZero), one, w);
  const auto larger = hn::Max(h, w), smaller = hn::Min(w, h);
  // What is within the bounds stays as it is, so that it gets the bits that it gets without unusual neighbours.
  const auto isUsual = IsWithinBounds(d, smaller, larger);
  const auto isLarge = hn::Gt(larger, hn::Set(d, C::kLarge)), isSmall = hn::Lt(larger, hn::Set(d, 1 / C::kLarge));
  const auto unusualScale =
      hn::IfThenElse(isLarge, hn::Set(d, C::kDown), hn::IfThenElse(isSmall, hn::Set(d, C::kUp), one));
  const auto scale = hn::IfThenElse(isUsual, one, unusualScale);
  const auto p = hn::Mul(larger, scale), q = hn::Mul(smaller, scale);
  // A quotient too small for a remainder is the angle's tangent and the angle; scaling could have cut digits.
  const auto counts = hn::And(hn::Ge(q, hn::Set(d, C::kLeast)), hn::Lt(larger, infinity));
  const auto result =
      AngleInPlane(d, y, hn::IfThenElseZero(counts, q), hn::IfThenElse(counts, p, one), isSteep, isLeft);
  const auto tangent = hn::CopySign(hn::Div(smaller, larger), y);
  const auto isTangent = hn::Not(hn::Or(counts, hn::Or(isSteep, isLeft)));
  const auto isNan = hn::Or(hn::IsNaN(x), hn::IsNaN(y));
  return hn::IfThenElse(isNan, hn::Add(x, y), hn::IfThenElse(isTangent, tangent, result));
}

// The angle of (x, y) in [-pi, pi], zeros and infinities as C's atan2 has them.
template <class D, class V, class T = hn::TFromD<D>>
HWY_INLINE V Arctan2(D d, V y, V x) {
  const auto h = hn::Abs(y), w = hn::Abs(x);
  const auto larger = hn::Max(h, w), smaller = hn::Min(w, h);  // a NaN comes out of one of them
  if (HWY_UNLIKELY(!hn::AllTrue(d, IsWithinBounds(d, smaller, larger)))) return Arctan2OfAny(d, y, x);
  return AngleInPlane(d, y, smaller, larger, hn::Gt(h, w), IsNegative(d, x));
}

// ---- Sine and cosine

template <class V>
struct SineCosine {
  V sine, cosine;
};

// x less its nearest multiple of pi/2: r + rest, and that multiple modulo 4 in the lower bits of `quadrant`.
template <class V>
struct Reduction {
  V r, rest;
  hn::Vec<hn::RebindToUnsigned<hn::DFromV<V>>> quadrant;

  // The lanes of the mask, and those of `other` elsewhere: what a lane gets does not depend on its neighbours.
  HWY_INLINE Reduction Where(hn::Mask<hn::DFromV<V>> mask, Reduction other) const {
    constexpr hn::RebindToUnsigned<hn::DFromV<V>> du;
    return {hn::IfThenElse(mask, r, other.r), hn::IfThenElse(mask, rest, other.rest),
            hn::IfThenElse(hn::RebindMask(du, mask), quadrant, other.quadrant)};
  }
};

HWY_NOINLINE Reduction<Doubles> ReduceLarge(Doubles x) {
  constexpr hn::ScalableTag<double> d;
  constexpr hn::ScalableTag<uint64_t> du;
  constexpr size_t kLanes = HWY_MAX_BYTES / sizeof(double);
  double at[kLanes], r[kLanes], rest[kLanes];
  uint64_t quadrant[kLanes];
  hn::StoreU(x, d, at);
  for (size_t i = 0; i < kLanes; ++i) quadrant[i] = quarterTurns(at[i], r + i, rest + i);
  return {hn::LoadU(d, r), hn::LoadU(d, rest), hn::LoadU(du, quadrant)};
}

// [Cody, Waite 1980] with pi/2 in three parts; of the first two, multiples below 2^20 are exact.
HWY_INLINE Reduction<Doubles> Reduce(hn::ScalableTag<double> d, Doubles x) {
  constexpr hn::ScalableTag<uint64_t> du;
  const auto round = hn::Set(d, 0x1.8p52);
  const auto shifted = hn::MulAdd(x, hn::Set(d, 0x1.45f306dc9c883p-1), round);
  const auto n = hn::Sub(shifted, round);
  const auto first = hn::NegMulAdd(n, hn::Set(d, 0x1.921fb544p+0), x);
  const auto product = hn::Mul(n, hn::Set(d, 0x1.0b4611a6p-34));
  const auto second = hn::Sub(first, product);
  const auto lost = hn::Sub(hn::Sub(first, second), product);  // [Dekker 1971]
  const auto tail = hn::MulSub(n, hn::Set(d, 0x1.3198a2e037073p-69), lost);
  const auto r = hn::Sub(second, tail);  // -0 stays
  const Reduction<Doubles> usual{r, hn::Sub(hn::Sub(second, r), tail), hn::BitCast(du, shifted)};
  const auto isUsual = hn::Le(hn::Abs(x), hn::Set(d, 0x1p20));
  return HWY_LIKELY(hn::AllTrue(d, isUsual)) ? usual : usual.Where(isUsual, ReduceLarge(x));
}

// Single precision by double, whose digits suffice for every float.
template <class V>
HWY_NOINLINE Reduction<V> ReduceByDoubles(V x) {
  constexpr hn::DFromV<V> d;
  constexpr hn::RebindToUnsigned<decltype(d)> du;
  constexpr hn::Half<decltype(du)> dh;
  constexpr hn::ScalableTag<double> dw;
  const auto lower = Reduce(dw, LowerDoubles(d, x)), upper = Reduce(dw, UpperDoubles(d, x));
  const auto quadrant = hn::Combine(du, hn::TruncateTo(dh, upper.quadrant), hn::TruncateTo(dh, lower.quadrant));
  const auto r = FromDoubles(d, lower.r, upper.r);
  const auto rest = FromDoubles(d, hn::Sub(lower.r, LowerDoubles(d, r)), hn::Sub(upper.r, UpperDoubles(d, r)));
  return {r, rest, quadrant};
}

template <class D, class V>
HWY_INLINE Reduction<V> Reduce(D d, V x) {
  static_assert(std::is_same_v<hn::TFromD<D>, float>);
  if constexpr (!kHasFma) {
    return ReduceByDoubles(x);
  } else {
    // pi/2 in three parts, the first two positive so that -0 stays. The first difference is exact: it has no bits but
    // those of x and of the constant.
    const auto round = hn::Set(d, 0x1.8p23F);
    const auto shifted = hn::MulAdd(x, hn::Set(d, 0x1.45f306p-1F), round);
    const auto n = hn::Sub(shifted, round);
    const auto first = hn::NegMulAdd(n, hn::Set(d, 0x1.921fb4p+0F), x);
    const auto part = hn::Set(d, 0x1.4442d2p-24F), product = hn::Mul(n, part);
    const auto r = hn::Sub(first, product);
    const auto lost = hn::NegMulAdd(n, hn::Set(d, -0x1.ee59dap-50F), hn::NegMulAdd(n, part, product));
    const auto rest = hn::Add(hn::Sub(hn::Sub(first, r), product), lost);
    const Reduction<V> usual{r, rest, hn::BitCast(hn::RebindToUnsigned<D>{}, shifted)};
    const auto isUsual = hn::Le(hn::Abs(x), hn::Set(d, 0x1p16F));
    return HWY_LIKELY(hn::AllTrue(d, isUsual)) ? usual : usual.Where(isUsual, ReduceByDoubles(x));
  }
}

template <class D, class V, class U, class T = hn::TFromD<D>>
HWY_INLINE SineCosine<V> SineCosineOfReduced(D d, V r, V rest, U quadrant) {
  using C = AngleConstants<T>;
  constexpr hn::RebindToUnsigned<D> du;
  using Bits = hn::TFromD<decltype(du)>;
  const auto z = hn::Mul(r, r);
  // With the sign of r, even of zero.
  const auto sine = hn::CopySign(hn::Add(r, hn::MulAdd(hn::Mul(z, r), Polynomial(d, z, C::kSine), rest)), r);
  const auto one = hn::Set(d, T{1}), half = hn::Mul(z, hn::Set(d, T{0.5})), most = hn::Sub(one, half);
  const auto lost = hn::Sub(hn::Sub(one, most), half);  // [Dekker 1971]
  const auto series = hn::NegMulAdd(r, rest, hn::Mul(hn::Mul(z, z), Polynomial(d, z, C::kCosine)));
  const auto cosine = hn::Add(most, hn::Add(lost, series));

  constexpr int kTop = 8 * sizeof(T) - 1;
  const auto isOdd = hn::RebindMask(d, hn::TestBit(quadrant, hn::Set(du, Bits{1})));
  const auto signOf = [=](U q) HWY_ATTR { return hn::BitCast(d, hn::ShiftLeft<kTop>(hn::ShiftRight<1>(q))); };
  return {hn::Xor(hn::IfThenElse(isOdd, cosine, sine), signOf(quadrant)),
          hn::Xor(hn::IfThenElse(isOdd, sine, cosine), signOf(hn::Add(quadrant, hn::Set(du, Bits{1}))))};
}

template <class D, class V>
HWY_INLINE SineCosine<V> SinCos(D d, V x) {
  const Reduction<V> reduced = Reduce(d, x);
  return SineCosineOfReduced(d, reduced.r, reduced.rest, reduced.quadrant);
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif
