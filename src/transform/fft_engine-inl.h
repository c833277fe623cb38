// The complex FFT of one width, as other transforms use it.
#if defined(ORPSP_TRANSFORM_FFT_ENGINE_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_TRANSFORM_FFT_ENGINE_INL_H_
#undef ORPSP_TRANSFORM_FFT_ENGINE_INL_H_
#else
#define ORPSP_TRANSFORM_FFT_ENGINE_INL_H_
#endif

#include <hwy/highway.h>

#include "transform/fft.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {

// One transform of 2^order points: dst[k] = factor * sum over n of src[n] exp(-+ 2 pi i n k / 2^order), the sign
// minus unless isInverse. Real and imaginary parts stand at re[n * step] and im[n * step]: step 2 with im = re + 1 for
// pairs, step 1 for two arrays. src and dst are the same array or do not overlap. Reads from `work` (64-byte aligned,
// complexWorkBytes(order)) and writes to it; orders 0 to 5 need neither work nor tables.
template <class T>
struct ComplexCall {
  int order;
  bool isInverse, isScaled;  // by factor
  T factor;
  const T* twiddles;
  const int32_t* reversed;
  int step;
  const T *srcRe, *srcIm;
  T *dstRe, *dstIm;
  void* work;
};

// The transform that a record describes. (The order is less by one for real transforms.)
template <class T>
HWY_INLINE ComplexCall<T> CallOf(const FftSpec<T>& spec, int order, bool isInverse, void* work, int step = 0,
                                 const T* srcRe = nullptr, const T* srcIm = nullptr, T* dstRe = nullptr,
                                 T* dstIm = nullptr) {
  return {.order = order,
          .isInverse = isInverse,
          .isScaled = (isInverse ? spec.scalesInverse : spec.scalesForward) != 0,
          .factor = spec.factor,
          .twiddles = spec.twiddles,
          .reversed = spec.reversed,
          .step = step,
          .srcRe = srcRe,
          .srcIm = srcIm,
          .dstRe = dstRe,
          .dstIm = dstIm,
          .work = work};
}

// Defined in fft_complex.cpp for float and double.
template <class T>
void TransformComplex(const ComplexCall<T>& call);

// Fills the tables of 2^order points, order >= 6, in the bytes that complexTwiddleBytes and complexIndexBytes say
// (transform/fft_sizes.h).
template <class T>
void FillComplexTables(int order, const QuarterSine<T>& sine, T* twiddles, int32_t* reversed);

}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif  // include guard
