// The complex FFT of one width, in parts that are compiled by themselves.
#if defined(ORPSP_TRANSFORM_FFT_ENGINE_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_TRANSFORM_FFT_ENGINE_INL_H_
#undef ORPSP_TRANSFORM_FFT_ENGINE_INL_H_
#else
#define ORPSP_TRANSFORM_FFT_ENGINE_INL_H_
#endif

#include <hwy/highway.h>

#include <type_traits>

#include "transform/fft.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace fft {

// How the complex points of a transform stand. All transforms are forward ones: an inverse transform is one with real
// and imaginary parts exchanged, which for planes is up to the caller.
enum class Arrangement { kPairs, kSwappedPairs, kPlanes };
constexpr Arrangement pairsFor(bool isInverse) { return isInverse ? Arrangement::kSwappedPairs : Arrangement::kPairs; }

// The largest order that is quicker without tables, or has too few points for Direct. Working memory holds all points
// of a transform up to the first large order.
template <class T>
constexpr int kSmallOrder = HWY_TARGET == HWY_SSSE3 ? 7 : 9;
template <class T>
constexpr int kFirstLargeOrder = sizeof(T) == 4 ? 18 : 17;

// Transforms of up to 2^kSmallOrder points, by scaling and order, of pairs (source, destination, factor) or planes
// (real and imaginary parts of the source, of the destination, factor). With a status, so that a call can end in a jump
// to one of them. Defined in fft_small.cpp.
template <class T, Arrangement arrangement>
struct Small {
  static constexpr bool kIsPlanes = arrangement == Arrangement::kPlanes;
  using OfPairs = OrpStatus (*)(const T* src, T* dst, T factor);
  using OfPlanes = OrpStatus (*)(const T* srcRe, const T* srcIm, T* dstRe, T* dstIm, T factor);
  struct Table {
    std::conditional_t<kIsPlanes, OfPlanes, OfPairs> of[2][kSmallOrder<T> + 1];
  };
  static const Table table;
};
extern template struct Small<float, Arrangement::kPairs>;
extern template struct Small<float, Arrangement::kSwappedPairs>;
extern template struct Small<float, Arrangement::kPlanes>;
extern template struct Small<double, Arrangement::kPairs>;
extern template struct Small<double, Arrangement::kSwappedPairs>;
extern template struct Small<double, Arrangement::kPlanes>;

// A transform of 2^order points, order > kSmallOrder: dst[k] = factor * sum over n of src[n] exp(-2 pi i n k /
// 2^order). Pairs are given by the first number of their arrays. src and dst are the same array or do not overlap.
// Reads from `work` (64-byte aligned, complexWorkBytes(order)) and writes to it.
template <class T>
struct ComplexCall {
  int order;
  bool isScaled;  // by factor
  T factor;
  const T* twiddles;
  const int32_t* reversed;
  void* work;
  const T *srcRe, *srcIm;
  T *dstRe, *dstIm;

  ComplexCall(const FftSpec<T>& spec, int transformOrder, bool scales, void* memory, const T* re, const T* im, T* toRe,
              T* toIm)
      : order(transformOrder),
        isScaled(scales),
        factor(spec.factor),
        twiddles(spec.twiddles),
        reversed(spec.reversed),
        work(memory),
        srcRe(re),
        srcIm(im),
        dstRe(toRe),
        dstIm(toIm) {}
  ComplexCall(const FftSpec<T>& spec, int transformOrder, bool scales, void* memory, const T* src, T* dst)
      : ComplexCall(spec, transformOrder, scales, memory, src, nullptr, dst, nullptr) {}
};

// By any algorithm (defined in fft_large.cpp), and by the one for orders below kFirstLargeOrder (fft_direct.cpp).
template <Arrangement arrangement, class T>
void NotSmall(const ComplexCall<T>& call);
template <Arrangement arrangement, class T>
void Direct(const ComplexCall<T>& call);

// Whether the factor of a record applies.
template <bool isInverse, class T>
HWY_INLINE bool IsScaled(const FftSpec<T>& spec) {
  return (isInverse ? spec.scalesInverse : spec.scalesForward) != 0;
}

// The transform of 2^order points by the tables and the factor of a record, whose own order is greater by one if it is
// of real points. Orders 0 to 5 need neither work nor tables. src and dst as in ComplexCall.
template <Arrangement arrangement, class T, class... P>
HWY_INLINE void TransformPoints(const FftSpec<T>& spec, int order, bool isScaled, void* work, P*... points) {
  if (order <= kSmallOrder<T>) {
    Small<T, arrangement>::table.of[isScaled][order](points..., spec.factor);
  } else {
    NotSmall<arrangement>(ComplexCall<T>(spec, order, isScaled, work, points...));
  }
}
template <bool isInverse, class T>
HWY_INLINE void TransformPairs(const FftSpec<T>& spec, int order, const T* src, T* dst, void* work) {
  TransformPoints<pairsFor(isInverse)>(spec, order, IsScaled<isInverse>(spec), work, src, dst);
}
template <bool isInverse, class T>
HWY_INLINE void TransformPlanes(const FftSpec<T>& spec, int order, const T* srcRe, const T* srcIm, T* dstRe, T* dstIm,
                                void* work) {
  constexpr Arrangement kPlanes = Arrangement::kPlanes;
  const bool isScaled = IsScaled<isInverse>(spec);
  if constexpr (isInverse) return TransformPoints<kPlanes>(spec, order, isScaled, work, srcIm, srcRe, dstIm, dstRe);
  TransformPoints<kPlanes>(spec, order, isScaled, work, srcRe, srcIm, dstRe, dstIm);
}

// Fills the tables of 2^order points, order >= 6, in the bytes that complexTwiddleBytes and complexIndexBytes say
// (transform/fft_sizes.h).
template <class T>
void FillComplexTables(int order, const QuarterSine<T>& sine, T* twiddles, int32_t* reversed);
template <class T>
void FillDirect(int order, const QuarterSine<T>& sine, T* twiddles, int32_t* reversed);  // below kFirstLargeOrder

}  // namespace fft
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif  // include guard
