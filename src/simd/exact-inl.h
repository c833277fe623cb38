// Rounding of results that are known in double precision only: the elements whose value lies too close to a tie are
// computed exactly (simd/exact.h).
#if defined(ORPSP_SIMD_EXACT_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_SIMD_EXACT_INL_H_
#undef ORPSP_SIMD_EXACT_INL_H_
#else
#define ORPSP_SIMD_EXACT_INL_H_
#endif

#include "simd/exact.h"
#include "simd/maths-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// `rounded`, but in the lanes of the mask fix(in...).
template <class Fix, class... In>
HWY_NOINLINE Doubles Mended(Doubles rounded, hn::Mask<hn::ScalableTag<double>> mask, const Fix& fix, In... in) {
  constexpr hn::ScalableTag<double> d;
  struct Lanes {
    alignas(HWY_MAX_BYTES) double at[HWY_MAX_BYTES / sizeof(double)];
  };
  Lanes results, marks;
  hn::Store(rounded, d, results.at);
  hn::Store(hn::IfThenElseZero(mask, hn::Set(d, 1.0)), d, marks.at);
  const auto stored = [d](Doubles v) HWY_ATTR {
    Lanes lanes;
    hn::Store(v, d, lanes.at);
    return lanes;
  };
  const auto mend = [&](const auto&... lanes) HWY_ATTR {
    for (size_t i = 0; i < hn::Lanes(d); ++i)
      if (marks.at[i] != 0) results.at[i] = static_cast<double>(fix(lanes.at[i]...));
  };
  mend(stored(in)...);
  return hn::Load(d, results.at);
}

// The integer next to `value` (>= 0), which has an error of less than `tolerance` where it is below `limit`; beyond
// that it saturates. fix(in..., floor(value)) is the exact one.
template <class Fix, class... In>
HWY_INLINE Doubles RoundedExactly(Doubles value, double limit, double tolerance, const Fix& fix, In... in) {
  constexpr hn::ScalableTag<double> d;
  const auto clamped = hn::Min(value, hn::Set(d, limit)), rounded = hn::Round(clamped);
  const auto isDoubtful = hn::Gt(hn::Abs(hn::Sub(clamped, rounded)), hn::Set(d, 0.5 - tolerance));
  if (HWY_LIKELY(hn::AllFalse(d, isDoubtful))) return rounded;
  return Mended(rounded, isDoubtful, fix, in..., hn::Floor(clamped));
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif
