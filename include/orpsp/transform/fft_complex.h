/** @file
 *  Complex FFTs of N = 2^order points.
 *
 *  Forward and inverse transform of x[0] to x[N - 1],
 *
 *      X[k] = f * sum over n of x[n] exp(-2 pi i n k / N)          x[n] = g * sum over k of X[k] exp(+2 pi i n k / N),
 *
 *  both in the natural order. f and g are 1 or the specification's factor, as its flag says (fft_spec.h): with flag 1
 *  or 2 an inverse after a forward transform gives the points again, with flag 4 too, with flag 8 N times the points.
 *
 *  Points are pairs (`32fc`, `64fc`, `16sc`, `32sc`) or two arrays of real and imaginary parts (`32f`, `64f`, `16s`,
 *  `32s`), at any address. Source and destination are the same (`_I`, `_ISfs`, or the same pointers twice) or do not
 *  overlap; the two arrays of a destination may not overlap. A source of its own is not written to.
 *
 *  `pFFTSpec` is a specification of the call's own type; it is only read, so calls with the same one may run at the
 *  same time, each with a buffer of its own. `pBuffer` is working memory of as many bytes as `orpsFFTGetBufSize` says,
 *  at any address, its content of no matter; orders 0 to 5 of the floating-point types need none. If it is null, a call
 *  that needs working memory allocates it and releases it again; with a buffer nothing is allocated.
 *
 *  Accuracy. For random points the relative error (root mean square) is about 0.32 e sqrt(order), e = 2^-23 in single
 *  and 2^-52 in double precision, and below 0.4 e sqrt(order) for every order up to 22 (docs/benchmarks.md). Results
 *  may differ in the last digits between vector widths, and between a transform in place and one that is not; they do
 *  not depend on addresses, nor on the number of threads. A NaN or an infinity among the points may turn any result
 *  into a NaN; so may points so large that a sum overflows.
 *
 *  Threads. From 2^16 points on a call may use as many threads as the core library grants (orpcore.h; one until the
 *  application asks for more), as far as there is working memory for them.
 *
 *  Statuses, in this order: `StsNullPtr` (the specification), `StsSpecMismatch` (one of another type, or one that was
 *  released), `StsNullPtr` (an array), `StsNoMemory` (no buffer given and none to be had), `StsOk`. Nothing is written
 *  unless the status is `StsOk`.
 */
#ifndef ORPSP_TRANSFORM_FFT_COMPLEX_H
#define ORPSP_TRANSFORM_FFT_COMPLEX_H

#include "orpsp/transform/fft_spec.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name FFTFwd and FFTInv, complex, floating point
 *  @{ */
OrpStatus orpsFFTFwd_CToC_32fc(const Orp32fc* pSrc, Orp32fc* pDst, const OrpFftSpec_C_32fc* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_32fc_I(Orp32fc* pSrcDst, const OrpFftSpec_C_32fc* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_32fc(const Orp32fc* pSrc, Orp32fc* pDst, const OrpFftSpec_C_32fc* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_32fc_I(Orp32fc* pSrcDst, const OrpFftSpec_C_32fc* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_32f(const Orp32f* pSrcRe, const Orp32f* pSrcIm, Orp32f* pDstRe, Orp32f* pDstIm,
                              const OrpFftSpec_C_32f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_32f_I(Orp32f* pSrcDstRe, Orp32f* pSrcDstIm, const OrpFftSpec_C_32f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_32f(const Orp32f* pSrcRe, const Orp32f* pSrcIm, Orp32f* pDstRe, Orp32f* pDstIm,
                              const OrpFftSpec_C_32f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_32f_I(Orp32f* pSrcDstRe, Orp32f* pSrcDstIm, const OrpFftSpec_C_32f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_64fc(const Orp64fc* pSrc, Orp64fc* pDst, const OrpFftSpec_C_64fc* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_64fc_I(Orp64fc* pSrcDst, const OrpFftSpec_C_64fc* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_64fc(const Orp64fc* pSrc, Orp64fc* pDst, const OrpFftSpec_C_64fc* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_64fc_I(Orp64fc* pSrcDst, const OrpFftSpec_C_64fc* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_64f(const Orp64f* pSrcRe, const Orp64f* pSrcIm, Orp64f* pDstRe, Orp64f* pDstIm,
                              const OrpFftSpec_C_64f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_64f_I(Orp64f* pSrcDstRe, Orp64f* pSrcDstIm, const OrpFftSpec_C_64f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_64f(const Orp64f* pSrcRe, const Orp64f* pSrcIm, Orp64f* pDstRe, Orp64f* pDstIm,
                              const OrpFftSpec_C_64f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_64f_I(Orp64f* pSrcDstRe, Orp64f* pSrcDstIm, const OrpFftSpec_C_64f* pFFTSpec, Orp8u* pBuffer);
/** @} */

/** @name FFTFwd and FFTInv, complex, integers
 *  The points are converted to single (16s) or double precision (32s), transformed and multiplied by f or g there;
 *  every part of the result is then multiplied by 2^-scaleFactor, rounded to nearest with ties to even and saturated,
 *  for every scale factor. An unscaled transform (flag 8) of full-scale points of 16 bits needs a scale factor of
 *  order, or order + 1 where both parts are at full scale, to be free of saturation.
 *  @{ */
OrpStatus orpsFFTFwd_CToC_16sc_Sfs(const Orp16sc* pSrc, Orp16sc* pDst, const OrpFftSpec_C_16sc* pFFTSpec,
                                   int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_16sc_ISfs(Orp16sc* pSrcDst, const OrpFftSpec_C_16sc* pFFTSpec, int scaleFactor,
                                    Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_16sc_Sfs(const Orp16sc* pSrc, Orp16sc* pDst, const OrpFftSpec_C_16sc* pFFTSpec,
                                   int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_16sc_ISfs(Orp16sc* pSrcDst, const OrpFftSpec_C_16sc* pFFTSpec, int scaleFactor,
                                    Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_16s_Sfs(const Orp16s* pSrcRe, const Orp16s* pSrcIm, Orp16s* pDstRe, Orp16s* pDstIm,
                                  const OrpFftSpec_C_16s* pFFTSpec, int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_16s_ISfs(Orp16s* pSrcDstRe, Orp16s* pSrcDstIm, const OrpFftSpec_C_16s* pFFTSpec,
                                   int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_16s_Sfs(const Orp16s* pSrcRe, const Orp16s* pSrcIm, Orp16s* pDstRe, Orp16s* pDstIm,
                                  const OrpFftSpec_C_16s* pFFTSpec, int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_16s_ISfs(Orp16s* pSrcDstRe, Orp16s* pSrcDstIm, const OrpFftSpec_C_16s* pFFTSpec,
                                   int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_32sc_Sfs(const Orp32sc* pSrc, Orp32sc* pDst, const OrpFftSpec_C_32sc* pFFTSpec,
                                   int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_32sc_ISfs(Orp32sc* pSrcDst, const OrpFftSpec_C_32sc* pFFTSpec, int scaleFactor,
                                    Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_32sc_Sfs(const Orp32sc* pSrc, Orp32sc* pDst, const OrpFftSpec_C_32sc* pFFTSpec,
                                   int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_32sc_ISfs(Orp32sc* pSrcDst, const OrpFftSpec_C_32sc* pFFTSpec, int scaleFactor,
                                    Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_32s_Sfs(const Orp32s* pSrcRe, const Orp32s* pSrcIm, Orp32s* pDstRe, Orp32s* pDstIm,
                                  const OrpFftSpec_C_32s* pFFTSpec, int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_32s_ISfs(Orp32s* pSrcDstRe, Orp32s* pSrcDstIm, const OrpFftSpec_C_32s* pFFTSpec,
                                   int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_32s_Sfs(const Orp32s* pSrcRe, const Orp32s* pSrcIm, Orp32s* pDstRe, Orp32s* pDstIm,
                                  const OrpFftSpec_C_32s* pFFTSpec, int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_32s_ISfs(Orp32s* pSrcDstRe, Orp32s* pSrcDstIm, const OrpFftSpec_C_32s* pFFTSpec,
                                   int scaleFactor, Orp8u* pBuffer);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
