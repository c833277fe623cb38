// The real FFT of one width, as other transforms use it.
#if defined(ORPSP_TRANSFORM_FFT_REAL_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_TRANSFORM_FFT_REAL_INL_H_
#undef ORPSP_TRANSFORM_FFT_REAL_INL_H_
#else
#define ORPSP_TRANSFORM_FFT_REAL_INL_H_
#endif

#include <hwy/highway.h>

#include "transform/fft.h"
#include "transform/spectrum_layout.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace fft {

// The spectrum of the 2^order real elements at src, or those of the spectrum at src, times the record's factor if
// its switch for the direction is set.
// src and dst are the same array or do not overlap. `work` (64-byte aligned, complexWorkBytes(order - 1)) may be null
// where that is 0. Defined in fft_real.cpp for float and double.
template <class Layout, class T>
void RealToSpectrum(const FftSpec<T>& spec, const T* src, T* dst, void* work);
template <class Layout, class T>
void SpectrumToReal(const FftSpec<T>& spec, const T* src, T* dst, void* work);

}  // namespace fft
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif
