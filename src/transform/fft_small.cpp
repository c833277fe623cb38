// The tables of complex FFTs of few points.
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "transform/fft_small.cpp"
#include <hwy/foreach_target.h>

#include "transform/fft_engine-inl.h"
#include "transform/small-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace fft {
namespace {

template <int order, bool isScaled, Arrangement arrangement, class T>
OrpStatus SmallPairs(const T* src, T* dst, T factor) {
  const auto points = CallerPointsOf<arrangement, T>(src, nullptr, dst, nullptr);
  SmallTransform<order, isScaled>(points.src, points.dst, factor);
  return StsOk;
}
template <int order, bool isScaled, class T>
OrpStatus SmallPlanes(const T* srcRe, const T* srcIm, T* dstRe, T* dstIm, T factor) {
  const auto points = CallerPointsOf<Arrangement::kPlanes>(srcRe, srcIm, dstRe, dstIm);
  SmallTransform<order, isScaled>(points.src, points.dst, factor);
  return StsOk;
}

template <class T, Arrangement arrangement, int... order>
constexpr typename Small<T, arrangement>::Table tableOf(std::integer_sequence<int, order...>) {
  if constexpr (arrangement == Arrangement::kPlanes) {
    return {{{&SmallPlanes<order, false, T>...}, {&SmallPlanes<order, true, T>...}}};
  } else {
    return {{{&SmallPairs<order, false, arrangement, T>...}, {&SmallPairs<order, true, arrangement, T>...}}};
  }
}

}  // namespace

template <class T, Arrangement arrangement>
constinit const typename Small<T, arrangement>::Table Small<T, arrangement>::table =
    tableOf<T, arrangement>(std::make_integer_sequence<int, kSmallOrder<T> + 1>{});

template struct Small<float, Arrangement::kPairs>;
template struct Small<float, Arrangement::kSwappedPairs>;
template struct Small<float, Arrangement::kPlanes>;
template struct Small<double, Arrangement::kPairs>;
template struct Small<double, Arrangement::kSwappedPairs>;
template struct Small<double, Arrangement::kPlanes>;

}  // namespace fft
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();
