// Cauchy's loss, a robust weight of residuals, and its derivatives.
#include "orpsp/speech/cauchy.h"

#include "frame/check.h"
#include "frame/entry.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "speech/cauchy.cpp"
#include <hwy/foreach_target.h>

#include "simd/complex-inl.h"
#include "simd/maths-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// ---- The loss, in double precision: there, squares of floats neither overflow nor underflow

// ln(1 + u) for u >= 0 with a relative error below 1e-10, without the fused operations that only some widths have:
// 1 + u = 2^e (1 + f), and ln(1 + f) = 2 artanh(f / (2 + f)).
HWY_INLINE Doubles LnOf1Plus(Doubles u) {
  constexpr double kTerms[] = {1, 1.0 / 3, 1.0 / 5, 1.0 / 7, 1.0 / 9, 1.0 / 11};
  constexpr double kLn2 = 0.693147180559945309;
  const auto one = hn::Set(kDoubles, 1.0), two = hn::Set(kDoubles, 2.0);
  const auto sum = Parted(kDoubles, hn::Add(u, one));
  // Where e is 0 the sum may have lost digits of u.
  const auto f = hn::IfThenElse(hn::Eq(sum.e, hn::Zero(kDoubles)), u, hn::Sub(sum.m, one));
  const auto ratio = hn::Div(f, hn::Add(f, two)), square = hn::Mul(ratio, ratio);
  auto series = hn::Set(kDoubles, kTerms[5]);
  for (int i = 5; i-- > 0;) series = hn::Add(hn::Mul(series, square), hn::Set(kDoubles, kTerms[i]));
  const auto ln = hn::Add(hn::Mul(sum.e, hn::Set(kDoubles, kLn2)), hn::Mul(hn::Mul(ratio, two), series));
  return hn::IfThenElse(hn::Lt(u, hn::Set(kDoubles, kInfinity<double>)), ln, u);  // infinity and NaN
}

struct Loss {
  static constexpr size_t kWorkBytes = sizeof(double);
  double inverse, scale;

  template <class D, class V>
  HWY_INLINE V operator()(D d, V x) const {
    const auto ratio = hn::Mul(hn::PromoteTo(kDoubles, x), hn::Set(kDoubles, inverse));
    return hn::DemoteTo(d, hn::Mul(LnOf1Plus(hn::Mul(ratio, ratio)), hn::Set(kDoubles, scale)));
  }
};

// ---- Its derivatives, of x and r = 1 / (s^2 + x^2)

struct First {
  template <class V>
  static HWY_INLINE V At(V x, V, V r) {
    return hn::Mul(x, r);
  }
};
struct Second {
  template <class V>
  static HWY_INLINE V At(V x, V s, V r) {
    return hn::Mul(hn::Mul(hn::Mul(hn::Sub(s, x), hn::Add(s, x)), r), r);
  }
};

template <class Derivative, class D, class V, class T = hn::TFromD<D>>
HWY_INLINE V DerivativeAt(D d, V x, T scale) {
  const auto s = hn::Set(d, scale);
  return Derivative::At(x, s, hn::Div(hn::Set(d, T{1}), hn::Add(hn::Mul(s, s), hn::Mul(x, x))));
}

template <class Derivative, class D, class V>
HWY_NOINLINE V DerivativeByDoubles(D d, V x, double s) {
  return FromDoubles(d, DerivativeAt<Derivative>(HalvesTag<D>{}, LowerDoubles(d, x), s),
                     DerivativeAt<Derivative>(HalvesTag<D>{}, UpperDoubles(d, x), s));
}

// In single precision no square overflows, and none underflows where it would count, if s and |x| are below kTooLarge
// and s is not below kSmall. Other lanes are computed in double precision, which has no such bounds for floats.
class Parameter {
 public:
  explicit Parameter(float s) : s_(s), bound_(s >= kSmall && s < kTooLarge ? kTooLarge : 0) {}

  template <class Derivative, class D, class V>
  HWY_INLINE V Of(D d, V x) const {
    const auto result = DerivativeAt<Derivative>(d, x, s_);
    const auto usual = hn::Lt(hn::Abs(x), hn::Set(d, bound_));
    if (HWY_LIKELY(hn::AllTrue(d, usual))) return result;
    return hn::IfThenElse(usual, result, DerivativeByDoubles<Derivative>(d, x, s_));
  }

 private:
  static constexpr float kSmall = 0x1p-50F, kTooLarge = 0x1p62F;
  float s_, bound_;  // of |x|, 0 if s is out of bounds
};

struct FirstDerivative {
  Parameter parameter;

  template <class D, class V>
  HWY_INLINE V operator()(D d, V x) const {
    return parameter.Of<First>(d, x);
  }
};
struct BothDerivatives {
  Parameter parameter;

  template <class D, class V>
  HWY_INLINE Parts<V> operator()(D d, V x) const {
    return {parameter.Of<First>(d, x), parameter.Of<Second>(d, x)};
  }
};

// ---- Calls

OrpStatus loss(float* pSrcDst, int len, float s) {
  ORPS_CHECK_VECTOR(len, pSrcDst);
  ORPS_RETURN_IF(!(s > 0), StsCauchyParam);
  const double wide = s;
  Map(Loss{1 / wide, wide * wide / 2}, pSrcDst, static_cast<size_t>(len), Vector<float>{pSrcDst});
  return StsOk;
}

OrpStatus firstDerivative(float* pSrcDst, int len, float s) {
  ORPS_CHECK_VECTOR(len, pSrcDst);
  ORPS_RETURN_IF(!(s > 0), StsCauchyParam);
  Map(FirstDerivative{Parameter(s)}, pSrcDst, static_cast<size_t>(len), Vector<float>{pSrcDst});
  return StsOk;
}

OrpStatus derivatives(float* pSrcDst, float* pDst2, int len, float s) {
  ORPS_CHECK_VECTOR(len, pSrcDst, pDst2);
  ORPS_RETURN_IF(!(s > 0), StsCauchyParam);
  MapParts(BothDerivatives{Parameter(s)}, IntoVectors<float>{pSrcDst, pDst2}, static_cast<size_t>(len),
           Vector<float>{pSrcDst});
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/cauchy.inc"
#define ORPSP_NEAREST always
#include "frame/exports-inl.h"
