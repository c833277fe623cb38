// Complex FFTs of as many points as there is working memory for.
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "transform/fft_direct.cpp"
#include <hwy/foreach_target.h>

#include "transform/direct-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace fft {

template <Arrangement arrangement, class T>
void Direct(const ComplexCall<T>& call) {
  WithPoints<arrangement>(call, [&](const auto& points, const auto& to) ORPSP_INLINED {
    WithFirstCount<T>(call.order, [&](auto count) ORPSP_INLINED { DirectFrom<count>(call, points, to); });
  });
}

template <class T>
void FillDirect(int order, const QuarterSine<T>& sine, T* twiddles, int32_t* reversed) {
  const BetweenTwiddles<T> between(order, twiddles);
  FillBetween(order, sine, between);
  FillColumnTwiddles(columnsOrder<T>(order), sine, between.columns);
  FillReversed(columnsOrder<T>(order), reversed);
}

#define ORPS_INSTANTIATE(T)                                                \
  template void Direct<Arrangement::kPairs>(const ComplexCall<T>&);        \
  template void Direct<Arrangement::kSwappedPairs>(const ComplexCall<T>&); \
  template void Direct<Arrangement::kPlanes>(const ComplexCall<T>&);       \
  template void FillDirect(int, const QuarterSine<T>&, T*, int32_t*)
ORPS_INSTANTIATE(float);
ORPS_INSTANTIATE(double);
#undef ORPS_INSTANTIATE

}  // namespace fft
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();
