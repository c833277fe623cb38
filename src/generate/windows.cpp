// Windows: a vector times a taper that is the same from both ends.
//
// Weights are computed in double precision from operations that every width rounds alike, so that they are the same
// bits everywhere. One weight serves two elements: the loop walks from both ends to the middle.
#include "orpsp/generate/windows.h"

#include <cmath>

#include "frame/entry.h"
#include "simd/element.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "generate/windows.cpp"
#include <hwy/foreach_target.h>

#include "frame/check.h"
#include "generate/rotation-inl.h"
#include "simd/shuffle-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// ---- Weights. Begin(n) is called for n = 0, kTurnedBlock, 2 kTurnedBlock, ...; At(j) is a vector of weights, from n +
// j on.

// n times a slope.
struct Line {
  double slope;
  size_t first = 0;

  HWY_INLINE void Begin(size_t n) { first = n; }
  HWY_INLINE Doubles At(size_t j) const { return hn::Mul(Indices(first + j), hn::Set(kDoubles, slope)); }
};

// n / period, at any n.
struct Quotient {
  double period;
  double operator()(size_t n) const { return static_cast<double>(n) / period; }
  HWY_INLINE Doubles operator()(Doubles n) const { return hn::Div(n, hn::Set(kDoubles, period)); }
};

// a - c (b + g c), c = cos(2 pi n / period).
class CosineSum {
 public:
  CosineSum(double a, double b, double g, double period, size_t count)
      : angles_(Quotient{period}, {1, 0}, count), a_(a), b_(b), g_(g) {}

  HWY_INLINE void Begin(size_t n) { angles_.Begin(n); }
  HWY_INLINE Doubles At(size_t j) const {
    const auto c = angles_.Re(j);
    const auto slope = hn::Add(hn::Set(kDoubles, b_), hn::Mul(hn::Set(kDoubles, g_), c));
    return hn::Sub(hn::Set(kDoubles, a_), hn::Mul(c, slope));
  }

 private:
  Rotation<double, 64, Quotient> angles_;
  double a_, b_, g_;
};

template <size_t count>
HWY_INLINE Doubles Polynomial(const double (&coefficients)[count], Doubles x) {
  auto sum = hn::Set(kDoubles, coefficients[count - 1]);
  for (size_t i = count - 1; i-- > 0;) sum = hn::Add(hn::Set(kDoubles, coefficients[i]), hn::Mul(x, sum));
  return sum;
}

// e^x for 0 <= x <= 308, without the fused operations that only some widths have.
HWY_INLINE Doubles Exponential(Doubles x) {
  constexpr double kInverseFactorials[] = {
      1,          1,           1.0 / 2,      1.0 / 6,       1.0 / 24,       1.0 / 120,       1.0 / 720,
      1.0 / 5040, 1.0 / 40320, 1.0 / 362880, 1.0 / 3628800, 1.0 / 39916800, 1.0 / 479001600, 1.0 / 6227020800};
  // ln 2 in two parts, the first of 32 bits: its products with integers up to 2^20 are exact. [Cody and Waite 1980:
  // Software Manual for the Elementary Functions]
  constexpr double kLn2High = 0x1.62e42feep-1, kLn2Low = 0x1.a39ef35793c76p-33;
  constexpr double kMagic = 0x1.8p52;  // a sum with it has an integer in its lowest bits
  constexpr hn::RebindToSigned<hn::ScalableTag<double>> integers;
  const auto shifted = hn::Add(hn::Mul(x, hn::Set(kDoubles, 1.4426950408889634)), hn::Set(kDoubles, kMagic));
  const auto n = hn::Sub(shifted, hn::Set(kDoubles, kMagic));
  const auto rest =
      hn::Sub(hn::Sub(x, hn::Mul(n, hn::Set(kDoubles, kLn2High))), hn::Mul(n, hn::Set(kDoubles, kLn2Low)));
  const auto bits = hn::Add(hn::BitCast(integers, shifted), hn::Set(integers, 1023));
  return hn::Mul(Polynomial(kInverseFactorials, rest), hn::BitCast(kDoubles, hn::ShiftLeft<52>(bits)));
}

// The approximation of the modified Bessel function of order 0 that the header describes, for x >= 0. The coefficients
// are part of the contract.
HWY_INLINE Doubles BesselI0(Doubles x) {
  constexpr double kSmall[] = {0.9999999985, 4.0000001935, 3.9999959541, 1.777809969,
                               0.4443189384, 0.0713758187, 0.0075942968, 0.0008267816};
  constexpr double kLarge[] = {0.3989422809,  0.0124667783,  0.0017623668,  0.00026,      0.0022585672,
                               -0.0128314822, 0.0495811118,  -0.1209940805, 0.1895476618, -0.1867783276,
                               0.1113315511,  -0.0366694767, 0.0051246015};
  const auto four = hn::Set(kDoubles, 4.0);
  const auto isSmall = hn::Lt(x, four);
  const auto quarter = hn::Mul(x, hn::Set(kDoubles, 0.25));
  const auto small = Polynomial(kSmall, hn::Mul(quarter, quarter));
  if (hn::AllTrue(kDoubles, isSmall)) return small;
  const auto large = hn::Mul(hn::Div(Exponential(x), hn::Sqrt(x)), Polynomial(kLarge, hn::Div(four, x)));
  return hn::IfThenElse(isSmall, small, large);
}

class BesselQuotient {
 public:
  BesselQuotient(double alpha, size_t len) : alpha_(std::fabs(alpha)), end_(static_cast<double>(len - 1)) {
    scale_ = 1 / hn::GetLane(BesselI0(hn::Set(kDoubles, alpha_ * end_ * 0.5)));
  }

  HWY_INLINE void Begin(size_t n) { first_ = n; }
  HWY_INLINE Doubles At(size_t j) const {
    const auto n = Indices(first_ + j);
    const auto product = hn::Mul(hn::Sub(hn::Set(kDoubles, end_), n), n);
    // The product may be negative beyond the middle, where nobody asks.
    const auto root = hn::Sqrt(hn::Max(product, hn::Zero(kDoubles)));
    return hn::Mul(BesselI0(hn::Mul(hn::Set(kDoubles, alpha_), root)), hn::Set(kDoubles, scale_));
  }

 private:
  double alpha_, end_, scale_;
  size_t first_ = 0;
};

// ---- Weighting

// Lanes of an element times weights.
template <class V>
HWY_INLINE V Times(V v, Doubles weight) {
  return ToSamples(hn::DFromV<V>{}, hn::Mul(Lift(kDoubles, v), weight));
}

template <bool isUpper>
struct EachTwice {
  static constexpr size_t pick(size_t i, size_t lanes) { return (i + (isUpper ? lanes : 0)) / 2; }
};

template <class E>
HWY_INLINE Group<E> Times(Group<E> group, Doubles weights) {
  if constexpr (isComplex<E>) {
    return {{Times(group.v[0], Shuffled<EachTwice<false>>(weights, weights)),
             Times(group.v[1], Shuffled<EachTwice<true>>(weights, weights))}};
  } else {
    return {{Times(group.v[0], weights)}};
  }
}

// dst = src times the weights, and those times `unit`. In place or not: both ends are read before they are written.
template <class Weights, class E>
HWY_NOINLINE void Weigh(Weights& weights, double unit, const E* src, E* dst, size_t len) {
  const size_t count = len / 2 + len % 2;  // of weights
  const auto scale = hn::Set(kDoubles, unit);
  size_t n = 0;
  for (; n + kDoubleLanes <= count; n += kDoubleLanes) {
    if (n % kTurnedBlock == 0) weights.Begin(n);
    const auto w = hn::Mul(weights.At(n % kTurnedBlock), scale);
    const auto front = Times(Group<E>::Load(src + n), w);
    const auto back = Times(Group<E>::Load(src + (len - n - kDoubleLanes)), hn::Reverse(kDoubles, w));
    front.Store(dst + n);
    back.Store(dst + (len - n - kDoubleLanes));
  }
  if (n == count) return;
  if (n % kTurnedBlock == 0) weights.Begin(n);
  const auto w = hn::Mul(weights.At(n % kTurnedBlock), scale);
  alignas(64) double turned[2 * kDoubleLanes] = {};
  hn::Store(hn::Reverse(kDoubles, w), kDoubles, turned);
  const size_t few = count - n, fewBehind = few - len % 2;  // the middle element is one of those in front
  const auto front = Times(Group<E>::LoadFew(src + n, few), w);
  const auto back = Times(Group<E>::LoadFew(src + (len - n - fewBehind), fewBehind),
                          hn::LoadU(kDoubles, turned + (kDoubleLanes - fewBehind)));
  front.StoreFew(dst + n, few);
  back.StoreFew(dst + (len - n - fewBehind), fewBehind);
}

// ---- Windows

struct Bartlett {
  static constexpr int kLeast = 3;
  static Line Of(size_t len) { return {2 / static_cast<double>(len - 1)}; }
};

HWY_INLINE CosineSum CosineSumOf(size_t len, double a, double b, double g = 0) {
  return CosineSum(a, b, g, static_cast<double>(len - 1), len / 2 + len % 2);
}
struct Hann {
  static constexpr int kLeast = 3;
  static CosineSum Of(size_t len) { return CosineSumOf(len, 0.5, 0.5); }
};
struct Hamming {
  static constexpr int kLeast = 3;
  static CosineSum Of(size_t len) { return CosineSumOf(len, 0.54, 0.46); }
};
struct Blackman {
  static constexpr int kLeast = 3;
  // The double angle is replaced: cos(2 x) = 2 cos(x)^2 - 1.
  static CosineSum Of(size_t len, double alpha) { return CosineSumOf(len, alpha + 0.5, 0.5, alpha); }
};
struct BlackmanStd {
  static constexpr int kLeast = 3;
  static CosineSum Of(size_t len) { return Blackman::Of(len, -0.16); }
};
struct BlackmanOpt {
  static constexpr int kLeast = 4;
  static CosineSum Of(size_t len) {
    const double root = 0.5 / Direction::Of(0.5 / static_cast<double>(len - 1)).re;
    return Blackman::Of(len, -root * root);
  }
};
struct Kaiser {
  static constexpr int kLeast = 1;
  static OrpStatus Check(size_t len, double alpha) {
    return std::fabs(alpha) * static_cast<double>(len - 1) * 0.5 > 308 ? StsKaiserAlpha : StsOk;
  }
  static BesselQuotient Of(size_t len, double alpha) { return BesselQuotient(alpha, len); }
};

// Window whose parameter is a fraction of 32768.
template <class Window>
struct Q15 : Window {
  static double AlphaOf(int alphaQ15) { return alphaQ15 * 0x1p-15; }
  static OrpStatus Check(size_t len, int alphaQ15) {
    if constexpr (requires { Window::Check(len, 0.0); }) return Window::Check(len, AlphaOf(alphaQ15));
    return StsOk;
  }
  static auto Of(size_t len, int alphaQ15) { return Window::Of(len, AlphaOf(alphaQ15)); }
};

// ---- Calls

template <class Window, class E, class... Parameter>
HWY_INLINE OrpStatus WeighScaled(const E* pSrc, E* pDst, int len, int scaleFactor, Parameter... parameter) {
  ORPS_CHECK_LONGER_VECTOR(Window::kLeast, len, pSrc, pDst);
  const size_t count = static_cast<size_t>(len);
  if constexpr (requires { Window::Check(count, parameter...); }) {
    const OrpStatus status = Window::Check(count, parameter...);
    ORPS_RETURN_IF(status != StsOk, status);
  }
  if (count == 1) {  // only of a Kaiser window, which has no scaled form
    put(pDst, get(pSrc));
  } else if (std::is_same_v<Window, Bartlett> && count == 3) {  // no product: the ends are 0 whatever they were
    const E middle = get(pSrc + 1);
    put(pDst, E{});
    put(pDst + 1, middle);
    put(pDst + 2, E{});
  } else {
    auto weights = Window::Of(count, parameter...);
    Weigh(weights, UnitOfScale(scaleFactor), pSrc, pDst, count);
  }
  return StsOk;
}

template <class Window, class E, class... Parameter>
OrpStatus window(const E* pSrc, E* pDst, int len, Parameter... parameter) {
  return WeighScaled<Window>(pSrc, pDst, len, 0, parameter...);
}

template <class Window, class E>
OrpStatus windowSfs(const E* pSrc, E* pDst, int len, int alphaQ15, int scaleFactor) {
  return WeighScaled<Window>(pSrc, pDst, len, scaleFactor, alphaQ15);
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/windows.inc"
#define ORPSP_NEAREST always
#include "frame/exports-inl.h"
