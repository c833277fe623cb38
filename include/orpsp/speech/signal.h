/** @file
 *  Helpers of speech coders and modems: pre-emphasis, running means, FM demodulation, sums over a window, bit packing.
 *
 *  Results are the same bits at every vector width.
 */
#ifndef ORPSP_SPEECH_SIGNAL_H
#define ORPSP_SPEECH_SIGNAL_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name Preemphasize
 *  pDst[n] = pSrc[n] - v pSrc[n - 1], for 0 <= n < len, where pSrc[-1] stands for 0 in every call.
 *  Floats: the product is rounded, then the difference. Integers: the exact value is rounded once, to nearest with ties
 *  to even, and saturated; where it is NaN (v is NaN, or v is infinite and the previous sample is 0) the result is 0.
 *  pDst may be pSrc. Statuses: `StsOk`, `StsNullPtr`, `StsBadSize`.
 *  @{ */
OrpStatus orpsPreemphasize_16s(const Orp16s* pSrc, Orp16s* pDst, int len, Orp32f v);
OrpStatus orpsPreemphasize_32f(const Orp32f* pSrc, Orp32f* pDst, int len, Orp32f v);
/** @} */

/** @name UpdateLinear, UpdatePower
 *  A running mean y = *pSrcDst, weighted exponentially: in order of n, for 0 <= n < len,
 *
 *      y <- y + (t - y) alpha / 32768
 *
 *  with t = floor(pSrc[n] 2^15 / 2^s) (`UpdateLinear`: a mean of samples in Q15) or t = floor(pSrc[n]^2 / 2^s)
 *  (`UpdatePower`: of their squares), and s = srcShiftRight, taken as 0 below 0 and as 31 above 31. Every y is rounded
 *  from the exact value, to nearest with ties to even. From alpha = 0 (y stays as it is) to 32767 (y nearly becomes t),
 *  y is always between the y before it and t; with a negative alpha it moves away from t and saturates at the ends of
 *  its type. Time constant: about 32768 / alpha samples.
 *  Statuses: `StsOk`, `StsNullPtr` (pSrc or pSrcDst), `StsBadSize`.
 *  @{ */
OrpStatus orpsUpdateLinear_16s32s_I(const Orp16s* pSrc, int len, Orp32s* pSrcDst, int srcShiftRight, Orp16s alpha);
OrpStatus orpsUpdatePower_16s32s_I(const Orp16s* pSrc, int len, Orp32s* pSrcDst, int srcShiftRight, Orp16s alpha);
/** @} */

/** @name DemodulateFM_CToR
 *  The phase from each sample to the next: pDst[n] = arg(pSrc[n] conj(pSrc[n - 1])) 32768 / pi, for 0 <= n < len, where
 *  pSrc[-1] is *pPrevious. A tone of f cycles a sample gives 65536 f. arg is in (-pi, pi], and 0 where one of both
 *  samples is 0. The exact value is rounded to nearest and saturated: pi gives 32767. (There are no ties.)
 *  The last sample is left in *pPrevious, so that consecutive calls demodulate one signal; before the first of them the
 *  caller sets it, to 0 for a first result of 0. Statuses: `StsOk`, `StsNullPtr`, `StsBadSize`.
 *  @{ */
OrpStatus orpsDemodulateFM_CToR_16s(const Orp16sc* pSrc, Orp16s* pDst, int len, Orp16sc* pPrevious);
/** @} */

/** @name SumWindow
 *  pDst[n] = pSrc[n] + pSrc[n + 1] + ... + pSrc[n + windowLen - 1], for 0 <= n < len: the exact sum, rounded once to
 *  single precision. pSrc has len + windowLen - 1 elements. The time of an element does not depend on windowLen.
 *  Statuses: `StsOk`, `StsNullPtr`, `StsBadSize` (len or windowLen not positive).
 *  @{ */
OrpStatus orpsSumWindow_8u32f(const Orp8u* pSrc, Orp32f* pDst, int len, int windowLen);
OrpStatus orpsSumWindow_16s32f(const Orp16s* pSrc, Orp32f* pDst, int len, int windowLen);
/** @} */

/** @name PackBits
 *  The lowest `bits` bits of each element, 1 to 32 of them, one element after the other without a gap: the most
 *  significant bit of an element first, and bytes filled from their most significant bit. Higher bits of elements are
 *  ignored. pDst has ceil(len bits / 8) bytes; what is left of the last one is 0. It may not overlap pSrc.
 *  Statuses: `StsOk`, `StsNullPtr`, `StsBadSize`, then `StsBadArg` (bits outside 1 to 32).
 *  @{ */
OrpStatus orpsPackBits_32u8u(const Orp32u* pSrc, Orp8u* pDst, int len, int bits);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
