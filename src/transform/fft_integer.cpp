// FFTs of integers: converted to floating point, transformed, and rounded back with a scale factor.
#include "frame/entry.h"
#include "orpsp/transform/fft_complex.h"
#include "orpsp/transform/fft_real.h"
#include "orpsp/vector/convert.h"
#include "simd/element.h"
#include "simd/targets.h"
#include "transform/fft_call.h"
#include "transform/fft_sizes.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "transform/fft_integer.cpp"
#include <hwy/foreach_target.h>

#include "transform/fft_engine-inl.h"
#include "transform/fft_real-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// ---- Conversion

HWY_INLINE void Convert(const Orp16s* src, float* dst, size_t len) {
  orpsConvert_16s32f(src, dst, static_cast<int>(len));
}
HWY_INLINE void Convert(const Orp32s* src, float* dst, size_t len) {
  orpsConvert_32s32f(src, dst, static_cast<int>(len));
}
HWY_INLINE void Convert(const Orp32s* src, double* dst, size_t len) {
  orpsConvert_32s64f(src, dst, static_cast<int>(len));
}

HWY_INLINE void Convert(const float* src, Orp16s* dst, size_t len, int scaleFactor) {
  orpsConvert_32f16s_Sfs(src, dst, static_cast<int>(len), OrpRoundNear, scaleFactor);
}
HWY_INLINE void Convert(const float* src, Orp32s* dst, size_t len, int scaleFactor) {
  orpsConvert_32f32s_Sfs(src, dst, static_cast<int>(len), OrpRoundNear, scaleFactor);
}
HWY_INLINE void Convert(const double* src, Orp32s* dst, size_t len, int scaleFactor) {
  orpsConvert_64f32s_Sfs(src, dst, static_cast<int>(len), OrpRoundNear, scaleFactor);
}

// Calls use(numbers, work) with room for `count` numbers of T and the working memory of a complex transform. Of few
// points the numbers are on the stack; their transforms need no working memory.
template <class T, class Use>
HWY_INLINE OrpStatus WithRoom(int order, size_t count, int complexOrder, Orp8u* buffer, const Use& use) {
  constexpr int kFewOrder = 3;
  if (order <= kFewOrder) {
    T few[size_t{2} << kFewOrder];
    use(few, nullptr);
    return StsOk;
  }
  const size_t bytes = (count * sizeof(T) + 63) & ~size_t{63};
  Workspace room;
  ORPS_RETURN_IF(!room.Provide(buffer, static_cast<int64_t>(bytes + complexWorkBytes<T>(complexOrder))), StsNoMemory);
  T* const numbers = reinterpret_cast<T*>(room.Memory());
  use(numbers, room.Memory() + bytes);
  return StsOk;
}

// ---- Complex

template <class T>
HWY_INLINE void TransformInPlace(const FftSpec<T>& spec, bool isInverse, int step, T* re, T* im, void* work) {
  TransformComplex(CallOf<T>(spec, spec.order, isInverse, work, step, re, im, re, im));
}

template <bool isInverse, class E, class Handle>
OrpStatus complexSfs(const E* pSrc, E* pDst, const Handle* pFFTSpec, int scaleFactor, Orp8u* pBuffer) {
  using T = typename FftKind<Handle>::Real;
  ORPS_CHECK_COMPLEX_FFT(pFFTSpec, pSrc, pDst);
  const FftSpec<T>& spec = *fftRecord(pFFTSpec);
  const size_t count = size_t{2} << spec.order;
  return WithRoom<T>(spec.order, count, spec.order, pBuffer, [&](T* numbers, void* work) HWY_ATTR {
    Convert(lanes(pSrc), numbers, count);
    TransformInPlace(spec, isInverse, 2, numbers, numbers + 1, work);
    Convert(numbers, lanes(pDst), count, scaleFactor);
  });
}
template <bool isInverse, class E, class Handle>
OrpStatus planarSfs(const E* pSrcRe, const E* pSrcIm, E* pDstRe, E* pDstIm, const Handle* pFFTSpec, int scaleFactor,
                    Orp8u* pBuffer) {
  using T = typename FftKind<Handle>::Real;
  ORPS_CHECK_COMPLEX_FFT(pFFTSpec, pSrcRe, pSrcIm, pDstRe, pDstIm);
  const FftSpec<T>& spec = *fftRecord(pFFTSpec);
  const size_t len = size_t{1} << spec.order;
  return WithRoom<T>(spec.order, 2 * len, spec.order, pBuffer, [&](T* numbers, void* work) HWY_ATTR {
    Convert(pSrcRe, numbers, len);
    Convert(pSrcIm, numbers + len, len);
    TransformInPlace(spec, isInverse, 1, numbers, numbers + len, work);
    Convert(numbers, pDstRe, len, scaleFactor);
    Convert(numbers + len, pDstIm, len, scaleFactor);
  });
}
// ---- Real

template <SpectrumLayout layout, bool isInverse, class From, class To, class Handle>
OrpStatus RealSfs(const From* pSrc, To* pDst, const Handle* pFFTSpec, int scaleFactor, Orp8u* pBuffer) {
  using T = typename FftKind<Handle>::Real;
  ORPS_CHECK_FFT(pFFTSpec, pSrc, pDst);
  const FftSpec<T>& spec = *fftRecord(pFFTSpec);
  const size_t len = size_t{1} << spec.order;
  const size_t inSpectrum = layout == SpectrumLayout::kCcs ? 2 * (len / 2 + 1) : len;
  return WithRoom<T>(spec.order, inSpectrum, spec.order - 1, pBuffer, [&](T* numbers, void* work) HWY_ATTR {
    Convert(pSrc, numbers, isInverse ? inSpectrum : len);
    (isInverse ? SpectrumToReal<layout, T> : RealToSpectrum<layout, T>)(spec, numbers, numbers, work);
    Convert(numbers, pDst, isInverse ? len : inSpectrum, scaleFactor);
  });
}
template <SpectrumLayout layout, class From, class To, class Handle>
OrpStatus forwardSfs(const From* pSrc, To* pDst, const Handle* pFFTSpec, int scaleFactor, Orp8u* pBuffer) {
  return RealSfs<layout, false>(pSrc, pDst, pFFTSpec, scaleFactor, pBuffer);
}
template <SpectrumLayout layout, class From, class To, class Handle>
OrpStatus inverseSfs(const From* pSrc, To* pDst, const Handle* pFFTSpec, int scaleFactor, Orp8u* pBuffer) {
  return RealSfs<layout, true>(pSrc, pDst, pFFTSpec, scaleFactor, pBuffer);
}
}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/fft_integer.inc"
#define ORPSP_NEAREST always
#include "frame/exports-inl.h"
