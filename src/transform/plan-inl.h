// FFTs of 2^order points inside other transforms and filters of a width: without checks, exports and memory of their
// own. A plan is the record of a specification without a tag (fft.h), and a part of its user's record:
//
//   fft::PlacePlan(regions, order, isReal, plan);  // first counted, then placed (frame/state.h)
//   fft::FillPlan(plan, sines);                    // fft::planSineBytes for the time of the call
//   fft::RealToSpectrum<PermLayout>(plan, x, spectrum, work);  // fft::PlanWorkBytes
//   fft::MultiplySpectra<PermLayout, false>(spectrum, filter, spectrum, n);
//   fft::SpectrumToReal<PermLayout>(plan, spectrum, x, work);
//
// Plans of complex points run TransformPairs and TransformPlanes. No factor applies, unless the user sets it with its
// switches: forward and inverse multiply by the number of points.
#if defined(ORPSP_TRANSFORM_PLAN_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_TRANSFORM_PLAN_INL_H_
#undef ORPSP_TRANSFORM_PLAN_INL_H_
#else
#define ORPSP_TRANSFORM_PLAN_INL_H_
#endif

#include "transform/fft_engine-inl.h"
#include "transform/fft_real-inl.h"
#include "transform/fft_sizes.h"
#include "transform/fft_split-inl.h"
#include "transform/spectra-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace fft {
namespace {

// Bytes on a multiple of 64: while a plan is filled, and for each call that may run at the same time.
template <class T>
constexpr size_t planSineBytes(int order) {
  return order > kStaticSineOrder ? sizeof(T) * ((size_t{1} << order) / 4 + 1) : 0;
}
template <class T>
HWY_INLINE size_t PlanWorkBytes(int order, bool isReal) {
  return complexWorkBytes<T>(order - int{isReal});
}

// Makes a plan and takes the memory of its tables.
template <class T, class Regions>
HWY_INLINE void PlacePlan(Regions& regions, int order, bool isReal, FftSpec<T>& plan) {
  const int complexOrder = order - int{isReal};
  plan = {};
  plan.order = order;
  plan.twiddles = regions.template take<T>(complexTwiddleBytes<T>(complexOrder) / sizeof(T), 64);
  plan.reversed = regions.template take<int32_t>(complexIndexBytes<T>(complexOrder) / sizeof(int32_t), 64);
  plan.split = regions.template take<T>(isReal ? splitLength(order) : 0, 64);
}

template <class T>
HWY_INLINE void FillPlan(const FftSpec<T>& plan, void* sines) {
  if (plan.twiddles == nullptr && plan.split == nullptr) return;
  const QuarterSine<T> sine =
      plan.order > kStaticSineOrder ? fillSine(plan.order, static_cast<T*>(sines)) : staticSine<T>();
  const int complexOrder = plan.order - (plan.split == nullptr ? 0 : 1);
  if (plan.twiddles != nullptr) FillComplexTables<T>(complexOrder, sine, plan.twiddles, plan.reversed);
  if (plan.split != nullptr) FillSplitTable<T>(plan.order, sine, plan.split);
}

}  // namespace
}  // namespace fft
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif  // include guard
