// Cosine and sine of turns, where a period is 1. Without fused operations and without a library of mathematics: the
// same bits at every width and on every platform. Errors are below 3e-16, of small sines
// relative to them.
#if defined(ORPSP_GENERATE_CIRCLE_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_GENERATE_CIRCLE_INL_H_
#undef ORPSP_GENERATE_CIRCLE_INL_H_
#else
#define ORPSP_GENERATE_CIRCLE_INL_H_
#endif

#include "generate/samples-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

constexpr hn::RebindToUnsigned<hn::ScalableTag<double>> kWords;
using Words = hn::Vec<hn::RebindToUnsigned<hn::ScalableTag<double>>>;

// c0 + c1 x + ... + c6 x^6, with sums that do not wait for each other.
HWY_INLINE Doubles PolynomialByPairs(Doubles x, double c0, double c1, double c2, double c3, double c4, double c5,
                                     double c6) {
  const auto line = [x](double a, double b)
                        HWY_ATTR { return hn::Add(hn::Set(kDoubles, a), hn::Mul(hn::Set(kDoubles, b), x)); };
  const auto square = hn::Mul(x, x);
  const auto lower = hn::Add(line(c0, c1), hn::Mul(line(c2, c3), square));
  const auto upper = hn::Add(line(c4, c5), hn::Mul(hn::Set(kDoubles, c6), square));
  return hn::Add(lower, hn::Mul(upper, hn::Mul(square, square)));
}

// Cosine (re) and sine (im) of pi/2 (q + y): q is in the upper two bits of `quarter`, y from -1/2 to 1/2. Minimax
// polynomials, whose errors are below 6e-17.
HWY_INLINE Parts<Doubles> DirectionOf(Words quarter, Doubles y) {
  const auto square = hn::Mul(y, y);
  const auto c =
      hn::BitCast(kWords, PolynomialByPairs(square, 1, -1.233700550136157, 0.25366950790005294, -0.020863480737574224,
                                            0.0009192599677615443, -2.5200192424373035e-05, 4.6560038805483185e-07));
  const auto s = hn::BitCast(
      kWords, hn::Mul(y, PolynomialByPairs(square, 1.5707963267948966, -0.645964097506245, 0.07969262624606273,
                                           -0.004681754132616294, 0.00016044115259864245, -3.598649340966905e-06,
                                           5.634675098050997e-08)));
  // Odd quarters exchange both. The cosine is negative in quarters 1 and 2, the sine in 2 and 3.
  const auto isOdd = hn::And(hn::ShiftRight<62>(quarter), hn::Set(kWords, 1));
  const auto exchanged = hn::And(hn::Xor(c, s), hn::Sub(hn::Zero(kWords), isOdd));
  const auto sign = hn::Set(kWords, uint64_t{1} << 63);
  const auto signs = hn::And(hn::Xor(quarter, hn::ShiftLeft<1>(quarter)), sign);
  return {hn::BitCast(kDoubles, hn::Xor(hn::Xor(c, exchanged), signs)),
          hn::BitCast(kDoubles, hn::Xor(hn::Xor(s, exchanged), hn::And(quarter, sign)))};
}

// Cosine and sine of turns below 2^48.
HWY_INLINE Parts<Doubles> DirectionOf(Doubles turns) {
  const auto quarters = hn::Mul(turns, hn::Set(kDoubles, 4.0)), round = hn::Set(kDoubles, 0x1.8p52);
  const auto shifted = hn::Add(quarters, round);  // the nearest integer is in its lower bits
  return DirectionOf(hn::ShiftLeft<62>(hn::BitCast(kWords, shifted)), hn::Sub(quarters, hn::Sub(shifted, round)));
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif  // include guard
