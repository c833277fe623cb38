/** @file
 *  Real FFTs of N = 2^order points.
 *
 *  The spectrum of N real elements x[0] to x[N - 1],
 *
 *      X[k] = sum over n of x[n] exp(-2 pi i n k / N),
 *
 *  has X[N - k] = conj X[k], so X[0] to X[N / 2] tell all of it; X[0] and X[N / 2] are real. Three layouts hold them in
 *  an array of real elements (N = 1: Re X[0], in CCS followed by 0):
 *
 *  | layout | elements | content                                                                                   |
 *  |--------|----------|-------------------------------------------------------------------------------------------|
 *  | Pack   | N        | Re X[0]; Re X[k], Im X[k] at 2 k - 1, 2 k for 0 < k < N / 2; Re X[N / 2] at N - 1         |
 *  | Perm   | N        | Re X[0]; Re X[N / 2]; Re X[k], Im X[k] at 2 k, 2 k + 1 for 0 < k < N / 2                  |
 *  | CCS    | N + 2    | Re X[k], Im X[k] at 2 k, 2 k + 1 for 0 <= k <= N / 2                                      |
 *
 *  N = 8: Pack R0 R1 I1 R2 I2 R3 I3 R4, Perm R0 R4 R1 I1 R2 I2 R3 I3, CCS R0 0 R1 I1 R2 I2 R3 I3 R4 0.
 *
 *  All transforms take a specification of their own type (fft_spec.h), which they only read, and working memory,
 *  `pBuffer`: as many bytes as `orpsFFTGetBufSize` says, at any address, its content of no matter. If it is null, a
 *  call that needs working memory allocates it and releases it again. Calls with the same specification may run at the
 *  same time, each with a buffer of its own. Source and destination are the same array (`_I`, `_ISfs`, or the same
 *  pointer twice) or do not overlap; they may lie at any address.
 *
 *  Single and double precision: for random elements the relative error of all results together (Euclidean norms) is
 *  about 0.32 e sqrt(order) for high orders, e = 2^-23 in single and 2^-52 in double precision, and below
 *  0.4 e sqrt(order) for every order up to 20 (docs/benchmarks.md). Results may differ in the last digits between
 *  vector widths. A NaN or an infinity among the elements may turn any result into a NaN or an infinity.
 *
 *  Integers (`Sfs`): the elements are converted to floating point (16s, 16s32s and 32s16s to single precision, 32s to
 *  double), transformed and multiplied by the specification's factor there, then multiplied by 2^-scaleFactor, rounded
 *  to nearest with ties to even, and saturated. Every scale factor is allowed.
 *
 *  Statuses, in this order: `StsNullPtr` (specification, source or destination), `StsSpecMismatch` (a specification of
 *  another type, or one that has been released), `StsNoMemory` (no buffer given and none to be had), `StsOk`. Nothing
 *  is written unless the status is `StsOk`. (Complex transforms look at the specification before the arrays.)
 */
#ifndef ORPSP_TRANSFORM_FFT_REAL_H
#define ORPSP_TRANSFORM_FFT_REAL_H

#include "orpsp/transform/fft_spec.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name FFTFwd, real to spectrum
 *  pDst = X of the N elements at pSrc, in the layout of the name, multiplied by the specification's factor if its flag
 *  scales the forward transform. In CCS the imaginary parts of X[0] and X[N / 2] are written as 0, and an array that is
 *  transformed in place has room for the N + 2 elements (N = 1: 2).
 *  @{ */
OrpStatus orpsFFTFwd_RToPack_32f(const Orp32f* pSrc, Orp32f* pDst, const OrpFftSpec_R_32f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_RToPack_32f_I(Orp32f* pSrcDst, const OrpFftSpec_R_32f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_RToPerm_32f(const Orp32f* pSrc, Orp32f* pDst, const OrpFftSpec_R_32f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_RToPerm_32f_I(Orp32f* pSrcDst, const OrpFftSpec_R_32f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_RToCCS_32f(const Orp32f* pSrc, Orp32f* pDst, const OrpFftSpec_R_32f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_RToCCS_32f_I(Orp32f* pSrcDst, const OrpFftSpec_R_32f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_RToPack_64f(const Orp64f* pSrc, Orp64f* pDst, const OrpFftSpec_R_64f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_RToPack_64f_I(Orp64f* pSrcDst, const OrpFftSpec_R_64f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_RToPerm_64f(const Orp64f* pSrc, Orp64f* pDst, const OrpFftSpec_R_64f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_RToPerm_64f_I(Orp64f* pSrcDst, const OrpFftSpec_R_64f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_RToCCS_64f(const Orp64f* pSrc, Orp64f* pDst, const OrpFftSpec_R_64f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_RToCCS_64f_I(Orp64f* pSrcDst, const OrpFftSpec_R_64f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_RToPack_16s_Sfs(const Orp16s* pSrc, Orp16s* pDst, const OrpFftSpec_R_16s* pFFTSpec,
                                     int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_RToPack_16s_ISfs(Orp16s* pSrcDst, const OrpFftSpec_R_16s* pFFTSpec, int scaleFactor,
                                      Orp8u* pBuffer);
OrpStatus orpsFFTFwd_RToPerm_16s_Sfs(const Orp16s* pSrc, Orp16s* pDst, const OrpFftSpec_R_16s* pFFTSpec,
                                     int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_RToPerm_16s_ISfs(Orp16s* pSrcDst, const OrpFftSpec_R_16s* pFFTSpec, int scaleFactor,
                                      Orp8u* pBuffer);
OrpStatus orpsFFTFwd_RToCCS_16s_Sfs(const Orp16s* pSrc, Orp16s* pDst, const OrpFftSpec_R_16s* pFFTSpec, int scaleFactor,
                                    Orp8u* pBuffer);
OrpStatus orpsFFTFwd_RToCCS_16s_ISfs(Orp16s* pSrcDst, const OrpFftSpec_R_16s* pFFTSpec, int scaleFactor,
                                     Orp8u* pBuffer);
OrpStatus orpsFFTFwd_RToPack_32s_Sfs(const Orp32s* pSrc, Orp32s* pDst, const OrpFftSpec_R_32s* pFFTSpec,
                                     int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_RToPack_32s_ISfs(Orp32s* pSrcDst, const OrpFftSpec_R_32s* pFFTSpec, int scaleFactor,
                                      Orp8u* pBuffer);
OrpStatus orpsFFTFwd_RToPerm_32s_Sfs(const Orp32s* pSrc, Orp32s* pDst, const OrpFftSpec_R_32s* pFFTSpec,
                                     int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_RToPerm_32s_ISfs(Orp32s* pSrcDst, const OrpFftSpec_R_32s* pFFTSpec, int scaleFactor,
                                      Orp8u* pBuffer);
OrpStatus orpsFFTFwd_RToCCS_32s_Sfs(const Orp32s* pSrc, Orp32s* pDst, const OrpFftSpec_R_32s* pFFTSpec, int scaleFactor,
                                    Orp8u* pBuffer);
OrpStatus orpsFFTFwd_RToCCS_32s_ISfs(Orp32s* pSrcDst, const OrpFftSpec_R_32s* pFFTSpec, int scaleFactor,
                                     Orp8u* pBuffer);
OrpStatus orpsFFTFwd_RToCCS_16s32s_Sfs(const Orp16s* pSrc, Orp32s* pDst, const OrpFftSpec_R_16s32s* pFFTSpec,
                                       int scaleFactor, Orp8u* pBuffer);
/** @} */

/** @name FFTInv, spectrum to real
 *  pDst[n] = the sum over k from 0 to N - 1 of X[k] exp(2 pi i n k / N), of the X that pSrc holds in the layout of the
 *  name, multiplied by the specification's factor if its flag scales the inverse transform. Without factors an inverse
 *  transform of a forward transform gives N times the elements. In CCS the imaginary parts of X[0] and X[N / 2] have no
 *  influence; in place, the two elements behind the N results stay as they are.
 *  @{ */
OrpStatus orpsFFTInv_PackToR_32f(const Orp32f* pSrc, Orp32f* pDst, const OrpFftSpec_R_32f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_PackToR_32f_I(Orp32f* pSrcDst, const OrpFftSpec_R_32f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_PermToR_32f(const Orp32f* pSrc, Orp32f* pDst, const OrpFftSpec_R_32f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_PermToR_32f_I(Orp32f* pSrcDst, const OrpFftSpec_R_32f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CCSToR_32f(const Orp32f* pSrc, Orp32f* pDst, const OrpFftSpec_R_32f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CCSToR_32f_I(Orp32f* pSrcDst, const OrpFftSpec_R_32f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_PackToR_64f(const Orp64f* pSrc, Orp64f* pDst, const OrpFftSpec_R_64f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_PackToR_64f_I(Orp64f* pSrcDst, const OrpFftSpec_R_64f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_PermToR_64f(const Orp64f* pSrc, Orp64f* pDst, const OrpFftSpec_R_64f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_PermToR_64f_I(Orp64f* pSrcDst, const OrpFftSpec_R_64f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CCSToR_64f(const Orp64f* pSrc, Orp64f* pDst, const OrpFftSpec_R_64f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CCSToR_64f_I(Orp64f* pSrcDst, const OrpFftSpec_R_64f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_PackToR_16s_Sfs(const Orp16s* pSrc, Orp16s* pDst, const OrpFftSpec_R_16s* pFFTSpec,
                                     int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTInv_PackToR_16s_ISfs(Orp16s* pSrcDst, const OrpFftSpec_R_16s* pFFTSpec, int scaleFactor,
                                      Orp8u* pBuffer);
OrpStatus orpsFFTInv_PermToR_16s_Sfs(const Orp16s* pSrc, Orp16s* pDst, const OrpFftSpec_R_16s* pFFTSpec,
                                     int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTInv_PermToR_16s_ISfs(Orp16s* pSrcDst, const OrpFftSpec_R_16s* pFFTSpec, int scaleFactor,
                                      Orp8u* pBuffer);
OrpStatus orpsFFTInv_CCSToR_16s_Sfs(const Orp16s* pSrc, Orp16s* pDst, const OrpFftSpec_R_16s* pFFTSpec, int scaleFactor,
                                    Orp8u* pBuffer);
OrpStatus orpsFFTInv_CCSToR_16s_ISfs(Orp16s* pSrcDst, const OrpFftSpec_R_16s* pFFTSpec, int scaleFactor,
                                     Orp8u* pBuffer);
OrpStatus orpsFFTInv_PackToR_32s_Sfs(const Orp32s* pSrc, Orp32s* pDst, const OrpFftSpec_R_32s* pFFTSpec,
                                     int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTInv_PackToR_32s_ISfs(Orp32s* pSrcDst, const OrpFftSpec_R_32s* pFFTSpec, int scaleFactor,
                                      Orp8u* pBuffer);
OrpStatus orpsFFTInv_PermToR_32s_Sfs(const Orp32s* pSrc, Orp32s* pDst, const OrpFftSpec_R_32s* pFFTSpec,
                                     int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTInv_PermToR_32s_ISfs(Orp32s* pSrcDst, const OrpFftSpec_R_32s* pFFTSpec, int scaleFactor,
                                      Orp8u* pBuffer);
OrpStatus orpsFFTInv_CCSToR_32s_Sfs(const Orp32s* pSrc, Orp32s* pDst, const OrpFftSpec_R_32s* pFFTSpec, int scaleFactor,
                                    Orp8u* pBuffer);
OrpStatus orpsFFTInv_CCSToR_32s_ISfs(Orp32s* pSrcDst, const OrpFftSpec_R_32s* pFFTSpec, int scaleFactor,
                                     Orp8u* pBuffer);
OrpStatus orpsFFTInv_CCSToR_32s16s_Sfs(const Orp32s* pSrc, Orp16s* pDst, const OrpFftSpec_R_16s32s* pFFTSpec,
                                       int scaleFactor, Orp8u* pBuffer);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
