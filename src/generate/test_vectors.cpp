// Ramps and the Jaehne test vector.
#include "orpsp/generate/test_vectors.h"

#include "frame/check.h"
#include "frame/entry.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "generate/test_vectors.cpp"
#include <hwy/foreach_target.h>

#include "generate/circle-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

template <class T, class Real>
OrpStatus ramp(T* pDst, int len, Real offset, Real slope) {
  ORPS_CHECK_VECTOR(len, pDst);
  const size_t count = static_cast<size_t>(len);
  if constexpr (std::is_same_v<T, float>) {
    constexpr hn::ScalableTag<float> d;
    constexpr hn::RebindToSigned<decltype(d)> di;
    Fill(pDst, count, [=](size_t n) ORPSP_INLINED {
      const auto index = hn::ConvertTo(d, hn::Iota(di, static_cast<int32_t>(n)));
      return Group<float, float>::Of(hn::Add(hn::Mul(index, hn::Set(d, slope)), hn::Set(d, offset)));
    });
  } else {
    Fill(pDst, count, [=](size_t n) ORPSP_INLINED {
      return Group<T>::Of(hn::Add(hn::Mul(Indices(n), hn::Set(kDoubles, slope)), hn::Set(kDoubles, offset)));
    });
  }
  return StsOk;
}

template <class T>
OrpStatus jaehne(T* pDst, int len, T magnitude) {
  ORPS_CHECK_VECTOR(len, pDst);
  ORPS_RETURN_IF(magnitude < 0, StsJaehneMagnitude);
  // n^2 modulo 4 len, whole turns, so that the angle is as exact at the end as at the beginning; and what leads to that
  // of n + kDoubleLanes. Doubles hold these integers.
  const double turn = 4 * static_cast<double>(len);
  const auto period = hn::Set(kDoubles, turn), scale = hn::Set(kDoubles, static_cast<double>(magnitude));
  const auto remainder = [=](Doubles n) HWY_ATTR { return hn::Sub(n, hn::Mul(hn::Floor(hn::Div(n, period)), period)); };
  const auto n = Indices(0);
  auto square = remainder(hn::Mul(n, n));
  auto next = remainder(
      hn::Add(hn::Mul(n, hn::Set(kDoubles, 2.0 * kDoubleLanes)), hn::Set(kDoubles, 1.0 * kDoubleLanes * kDoubleLanes)));
  const auto difference = remainder(hn::Set(kDoubles, 2.0 * kDoubleLanes * kDoubleLanes));
  Fill(pDst, static_cast<size_t>(len), [&](size_t) ORPSP_INLINED {
    const auto sine = DirectionOf(hn::Div(square, period)).im;
    square = Wrapped(hn::Add(square, next), period);
    next = Wrapped(hn::Add(next, difference), period);
    return Group<T>::Of(hn::Mul(sine, scale));
  });
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/test_vectors.inc"
#define ORPSP_NEAREST always
#include "frame/exports-inl.h"
