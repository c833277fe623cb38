// Complex FFTs of more than a few points (fft_small.cpp has those): in rows and columns of working memory as long as
// there is room for all of them (fft_direct.cpp), in rows of the destination (scatter-inl.h) or in sweeps over columns
// (large-inl.h).
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "transform/fft_large.cpp"
#include <hwy/foreach_target.h>

#include "transform/large-inl.h"
#include "transform/scatter-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace fft {

template <Arrangement arrangement, class T>
void NotSmall(const ComplexCall<T>& call) {
  constexpr int kArrays = arrangement == Arrangement::kPlanes ? 2 : 1;
  if constexpr (kLanes<T> >= 4) {
    if (usesScatter<T>(call.order, kArrays) && call.srcRe != call.dstRe) {
      return WithPoints<arrangement>(call, [&](const auto& points, const auto& to) ORPSP_INLINED {
        WithFirstCount<T>(call.order, [&](auto count) ORPSP_INLINED { ScatterFrom<count>(call, points, to); });
      });
    }
  }
  if (call.order < kFirstLargeOrder<T>) return Direct<arrangement>(call);
  WithPoints<arrangement>(call, [&](const auto& points, const auto& to) ORPSP_INLINED { Sweeps(call, points, to); });
}

template <class T>
void FillComplexTables(int order, const QuarterSine<T>& sine, T* twiddles, int32_t* reversed) {
  if (order <= kSmallOrder<T>) return;
  if (order < kFirstLargeOrder<T>) {
    FillDirect(order, sine, twiddles, reversed);
  } else {
    FillLarge(order, sine, twiddles);
  }
  if (usesScatter<T>(order, 1)) FillScatter(order, sine, twiddles);
}

#define ORPS_INSTANTIATE(T)                                                  \
  template void NotSmall<Arrangement::kPairs>(const ComplexCall<T>&);        \
  template void NotSmall<Arrangement::kSwappedPairs>(const ComplexCall<T>&); \
  template void NotSmall<Arrangement::kPlanes>(const ComplexCall<T>&);       \
  template void FillComplexTables(int, const QuarterSine<T>&, T*, int32_t*)
ORPS_INSTANTIATE(float);
ORPS_INSTANTIATE(double);
#undef ORPS_INSTANTIATE

}  // namespace fft
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();
