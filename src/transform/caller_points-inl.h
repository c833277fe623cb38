// The caller's points as the algorithms see them: source and destination, as rows of columns where there are columns.
#if defined(ORPSP_TRANSFORM_CALLER_POINTS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_TRANSFORM_CALLER_POINTS_INL_H_
#undef ORPSP_TRANSFORM_CALLER_POINTS_INL_H_
#else
#define ORPSP_TRANSFORM_CALLER_POINTS_INL_H_
#endif

#include "transform/columns-inl.h"
#include "transform/fft_engine-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace fft {
namespace {

template <class Source, class Destination>
struct CallerPoints {
  Source src;
  Destination dst;

  bool IsInPlace() const { return src.IsAt(dst); }
  // Rows of kRow columns from a point on, `step` points from row to row.
  PointRows<Source> From(size_t point, size_t step) const { return {src.From(point), step}; }
  PointRows<Destination> To(size_t point, size_t step) const { return {dst.From(point), step}; }
};

template <Arrangement arrangement, class T>
HWY_INLINE auto CallerPointsOf(const T* srcRe, const T* srcIm, T* dstRe, T* dstIm) {
  if constexpr (arrangement == Arrangement::kPlanes) {
    return CallerPoints<PlanarPoints<const T>, PlanarPoints<T>>{{srcRe, srcIm}, {dstRe, dstIm}};
  } else {
    constexpr bool isSwapped = arrangement == Arrangement::kSwappedPairs;
    return CallerPoints<PairedPoints<const T, isSwapped>, PairedPoints<T, isSwapped>>{{srcRe}, {dstRe}};
  }
}

// Calls run(points, to): `to` makes the rows that the last pass stores into, which multiply by the factor if the call
// has one.
template <Arrangement arrangement, class T, class Run>
HWY_INLINE void WithPoints(const ComplexCall<T>& call, const Run& run) {
  const auto points = CallerPointsOf<arrangement>(call.srcRe, call.srcIm, call.dstRe, call.dstIm);
  if (call.isScaled) {
    run(points, [&](size_t point, size_t step) ORPSP_INLINED {
      return ScaledRows<T, decltype(points.To(point, step))>{points.To(point, step), call.factor};
    });
  } else {
    run(points, [&](size_t point, size_t step) ORPSP_INLINED { return points.To(point, step); });
  }
}

}  // namespace
}  // namespace fft
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif  // include guard
