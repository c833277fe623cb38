// Calls of complex FFTs.
#include "orpsp/transform/fft_complex.h"

#include "frame/check.h"
#include "frame/entry.h"
#include "simd/element.h"
#include "simd/targets.h"
#include "transform/fft_call.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "transform/fft_complex.cpp"
#include <hwy/foreach_target.h>

#include "transform/fft_engine-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// ---- Calls

template <fft::Arrangement arrangement, class T, class... P>
HWY_NOINLINE OrpStatus RunNotSmall(const FftSpec<T>& spec, bool isScaled, Orp8u* pBuffer, P*... points) {
  Workspace work;
  ORPS_RETURN_IF(!work.Provide(pBuffer, spec.workBytes), StsNoMemory);
  fft::NotSmall<arrangement>(fft::ComplexCall<T>(spec, spec.order, isScaled, work.Memory(), points...));
  return StsOk;
}

template <fft::Arrangement arrangement, class T, class... P>
HWY_INLINE OrpStatus Run(const FftSpec<T>& spec, bool isScaled, Orp8u* pBuffer, P*... points) {
  if (HWY_UNLIKELY(spec.order > fft::kSmallOrder<T>))
    return RunNotSmall<arrangement>(spec, isScaled, pBuffer, points...);
  return fft::Small<T, arrangement>::table.of[isScaled][spec.order](points..., spec.factor);
}

template <bool isInverse, class E, class Handle>
OrpStatus pairs(const E* pSrc, E* pDst, const Handle* pFFTSpec, Orp8u* pBuffer) {
  ORPS_CHECK_COMPLEX_FFT(pFFTSpec, pSrc, pDst);
  const auto& spec = *fftRecord(pFFTSpec);
  return Run<fft::pairsFor(isInverse)>(spec, fft::IsScaled<isInverse>(spec), pBuffer, lanes(pSrc), lanes(pDst));
}

template <bool isInverse, class T, class Handle>
OrpStatus planes(const T* pSrcRe, const T* pSrcIm, T* pDstRe, T* pDstIm, const Handle* pFFTSpec, Orp8u* pBuffer) {
  ORPS_CHECK_COMPLEX_FFT(pFFTSpec, pSrcRe, pSrcIm, pDstRe, pDstIm);
  const auto& spec = *fftRecord(pFFTSpec);
  constexpr auto arrangement = fft::Arrangement::kPlanes;
  const bool isScaled = fft::IsScaled<isInverse>(spec);
  if constexpr (isInverse) return Run<arrangement>(spec, isScaled, pBuffer, pSrcIm, pSrcRe, pDstIm, pDstRe);
  return Run<arrangement>(spec, isScaled, pBuffer, pSrcRe, pSrcIm, pDstRe, pDstIm);
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/fft_complex.inc"
#include "frame/exports-inl.h"
