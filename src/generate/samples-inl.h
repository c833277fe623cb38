// Samples from vectors of doubles.
#if defined(ORPSP_GENERATE_SAMPLES_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_GENERATE_SAMPLES_INL_H_
#undef ORPSP_GENERATE_SAMPLES_INL_H_
#else
#define ORPSP_GENERATE_SAMPLES_INL_H_
#endif

#include "simd/map-inl.h"
#include "simd/round-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

constexpr hn::ScalableTag<double> kDoubles;
constexpr size_t kLanes = HWY_MAX_BYTES / sizeof(double);

// n, n + 1, ...
HWY_INLINE Doubles indices(size_t n) { return hn::Iota(kDoubles, static_cast<double>(n)); }

// Rounded to nearest, ties to even; integers saturate, a NaN gives 0.
template <class D>
HWY_INLINE hn::Vec<D> ToSamples(D d, Doubles v) {
  using T = hn::TFromD<D>;
  if constexpr (std::is_same_v<T, double>) {
    return v;
  } else if constexpr (std::is_same_v<T, float>) {
    return hn::DemoteTo(d, v);
  } else {
    return RoundTo<Rounding::kNearest>(d, hn::IfThenElseZero(hn::Eq(v, v), v));
  }
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif  // include guard
