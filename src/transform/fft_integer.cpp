// FFTs of integers: converted to floating point, transformed, and rounded back with a scale factor.
#include "frame/entry.h"
#include "orpsp/transform/fft_complex.h"
#include "orpsp/transform/fft_real.h"
#include "simd/element.h"
#include "simd/targets.h"
#include "transform/fft_call.h"
#include "transform/fft_sizes.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "transform/fft_integer.cpp"
#include <hwy/foreach_target.h>

#include "transform/fft_engine-inl.h"
#include "transform/fft_real-inl.h"
#include "vector/convert-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// Calls use(numbers, work) with room for `count` numbers of T and the working memory of a complex transform. Of few
// points the numbers are on the stack; their transforms need no working memory. Where the bytes exceed an int, GetSize
// says 0, so that a caller's buffer may be of any size.
template <class T, class Use>
HWY_INLINE OrpStatus WithRoom(const FftSpec<T>& spec, size_t count, int complexOrder, Orp8u* buffer, const Use& use) {
  constexpr int kFewOrder = 3;
  if (spec.order <= kFewOrder) {
    T few[size_t{2} << kFewOrder];
    use(few, nullptr);
    return StsOk;
  }
  const size_t bytes = upToMultiple(count * sizeof(T), 64);
  if (spec.workBytes == 0) buffer = nullptr;
  Workspace room;
  ORPS_RETURN_IF(!room.Provide(buffer, static_cast<int64_t>(bytes + complexWorkBytes<T>(complexOrder))), StsNoMemory);
  T* const numbers = reinterpret_cast<T*>(room.Memory());
  use(numbers, room.Memory() + bytes);
  return StsOk;
}

// ---- Complex

template <bool isInverse, class E, class Handle>
OrpStatus complexSfs(const E* pSrc, E* pDst, const Handle* pFFTSpec, int scaleFactor, Orp8u* pBuffer) {
  using T = typename FftKind<Handle>::Real;
  ORPS_CHECK_COMPLEX_FFT(pFFTSpec, pSrc, pDst);
  const FftSpec<T>& spec = *fftRecord(pFFTSpec);
  const size_t count = size_t{2} << spec.order;
  return WithRoom<T>(spec, count, spec.order, pBuffer, [&](T* numbers, void* work) HWY_ATTR {
    ConvertVector(lanes(pSrc), numbers, count);
    fft::TransformPairs<isInverse>(spec, spec.order, numbers, numbers, work);
    RoundVector(numbers, lanes(pDst), count, scaleFactor);
  });
}
template <bool isInverse, class E, class Handle>
OrpStatus planarSfs(const E* pSrcRe, const E* pSrcIm, E* pDstRe, E* pDstIm, const Handle* pFFTSpec, int scaleFactor,
                    Orp8u* pBuffer) {
  using T = typename FftKind<Handle>::Real;
  ORPS_CHECK_COMPLEX_FFT(pFFTSpec, pSrcRe, pSrcIm, pDstRe, pDstIm);
  const FftSpec<T>& spec = *fftRecord(pFFTSpec);
  const size_t len = size_t{1} << spec.order;
  return WithRoom<T>(spec, 2 * len, spec.order, pBuffer, [&](T* numbers, void* work) HWY_ATTR {
    ConvertVector(pSrcRe, numbers, len);
    ConvertVector(pSrcIm, numbers + len, len);
    fft::TransformPlanes<isInverse>(spec, spec.order, numbers, numbers + len, numbers, numbers + len, work);
    RoundVector(numbers, pDstRe, len, scaleFactor);
    RoundVector(numbers + len, pDstIm, len, scaleFactor);
  });
}
// ---- Real

template <class Layout, bool isInverse, class From, class To, class Handle>
OrpStatus RealSfs(const From* pSrc, To* pDst, const Handle* pFFTSpec, int scaleFactor, Orp8u* pBuffer) {
  using T = typename FftKind<Handle>::Real;
  ORPS_CHECK_FFT(pFFTSpec, pSrc, pDst);
  const FftSpec<T>& spec = *fftRecord(pFFTSpec);
  const size_t len = size_t{1} << spec.order;
  const size_t inSpectrum = spectrumLength<Layout>(len);
  return WithRoom<T>(spec, inSpectrum, spec.order - 1, pBuffer, [&](T* numbers, void* work) HWY_ATTR {
    ConvertVector(pSrc, numbers, isInverse ? inSpectrum : len);
    (isInverse ? fft::SpectrumToReal<Layout, T> : fft::RealToSpectrum<Layout, T>)(spec, numbers, numbers, work);
    RoundVector(numbers, pDst, isInverse ? len : inSpectrum, scaleFactor);
  });
}
template <class Layout, class From, class To, class Handle>
OrpStatus forwardSfs(const From* pSrc, To* pDst, const Handle* pFFTSpec, int scaleFactor, Orp8u* pBuffer) {
  return RealSfs<Layout, false>(pSrc, pDst, pFFTSpec, scaleFactor, pBuffer);
}
template <class Layout, class From, class To, class Handle>
OrpStatus inverseSfs(const From* pSrc, To* pDst, const Handle* pFFTSpec, int scaleFactor, Orp8u* pBuffer) {
  return RealSfs<Layout, true>(pSrc, pDst, pFFTSpec, scaleFactor, pBuffer);
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/fft_integer.inc"
#define ORPSP_NEAREST always
#include "frame/exports-inl.h"
