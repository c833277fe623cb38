/** @file
 *  Norms of a vector and of the difference of two.
 *
 *  `Norm` takes x[n] = pSrc[n], `NormDiff` x[n] = pSrc1[n] - pSrc2[n]; complex elements count by their magnitude
 *  sqrt(re^2 + im^2). Integer differences do not wrap, integer sums are exact. The order of floating-point additions is
 *  that of moments.h: 64 lanes of single or 32 of double precision, the same bits on every processor. Of complex
 *  elements `L1` adds one number each, `L2` one for each part.
 *  `_Sfs` results are the exact value times 2^-scaleFactor, rounded once to nearest with ties to even and saturated,
 *  for every scale factor; `16s32f` results are the exact value rounded once. Floating point: differences are taken in
 *  the precision of the sums; a NaN in any element gives NaN.
 *
 *  The result may not overlap a source. Statuses of all: `StsOk`, `StsNullPtr`, `StsBadSize`.
 */
#ifndef ORPSP_STATS_NORMS_H
#define ORPSP_STATS_NORMS_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name Norm_Inf, NormDiff_Inf
 *  *pNorm = the largest |x[n]|. `32f`, `64f`: exact, but for the rounding of the difference. `32fc32f`: the root of the
 *  largest re^2 + im^2 in double precision, rounded to single. `64fc64f`: the root of the largest re^2 + im^2; elements
 *  that would overflow or underflow on the way are scaled by powers of two.
 *  @{ */
OrpStatus orpsNorm_Inf_16s32f(const Orp16s* pSrc, int len, Orp32f* pNorm);
OrpStatus orpsNorm_Inf_16s32s_Sfs(const Orp16s* pSrc, int len, Orp32s* pNorm, int scaleFactor);
OrpStatus orpsNorm_Inf_32f(const Orp32f* pSrc, int len, Orp32f* pNorm);
OrpStatus orpsNorm_Inf_32fc32f(const Orp32fc* pSrc, int len, Orp32f* pNorm);
OrpStatus orpsNorm_Inf_64f(const Orp64f* pSrc, int len, Orp64f* pNorm);
OrpStatus orpsNorm_Inf_64fc64f(const Orp64fc* pSrc, int len, Orp64f* pNorm);
OrpStatus orpsNormDiff_Inf_16s32f(const Orp16s* pSrc1, const Orp16s* pSrc2, int len, Orp32f* pNorm);
OrpStatus orpsNormDiff_Inf_16s32s_Sfs(const Orp16s* pSrc1, const Orp16s* pSrc2, int len, Orp32s* pNorm,
                                      int scaleFactor);
OrpStatus orpsNormDiff_Inf_32f(const Orp32f* pSrc1, const Orp32f* pSrc2, int len, Orp32f* pNorm);
OrpStatus orpsNormDiff_Inf_32fc32f(const Orp32fc* pSrc1, const Orp32fc* pSrc2, int len, Orp32f* pNorm);
OrpStatus orpsNormDiff_Inf_64f(const Orp64f* pSrc1, const Orp64f* pSrc2, int len, Orp64f* pNorm);
OrpStatus orpsNormDiff_Inf_64fc64f(const Orp64fc* pSrc1, const Orp64fc* pSrc2, int len, Orp64f* pNorm);
/** @} */

/** @name Norm_L1, NormDiff_L1
 *  *pNorm = the sum of |x[n]|. `32f`: every 32768 elements in single precision; these sums are added in double
 *  precision and the total rounded. `32fc64f`, `64fc64f`: magnitudes and their sum in double precision; magnitudes do
 *  not overflow or underflow on the way.
 *  @{ */
OrpStatus orpsNorm_L1_16s32f(const Orp16s* pSrc, int len, Orp32f* pNorm);
OrpStatus orpsNorm_L1_16s32s_Sfs(const Orp16s* pSrc, int len, Orp32s* pNorm, int scaleFactor);
OrpStatus orpsNorm_L1_16s64s_Sfs(const Orp16s* pSrc, int len, Orp64s* pNorm, int scaleFactor);
OrpStatus orpsNorm_L1_32f(const Orp32f* pSrc, int len, Orp32f* pNorm);
OrpStatus orpsNorm_L1_32fc64f(const Orp32fc* pSrc, int len, Orp64f* pNorm);
OrpStatus orpsNorm_L1_64f(const Orp64f* pSrc, int len, Orp64f* pNorm);
OrpStatus orpsNorm_L1_64fc64f(const Orp64fc* pSrc, int len, Orp64f* pNorm);
OrpStatus orpsNormDiff_L1_16s32f(const Orp16s* pSrc1, const Orp16s* pSrc2, int len, Orp32f* pNorm);
OrpStatus orpsNormDiff_L1_16s32s_Sfs(const Orp16s* pSrc1, const Orp16s* pSrc2, int len, Orp32s* pNorm, int scaleFactor);
OrpStatus orpsNormDiff_L1_16s64s_Sfs(const Orp16s* pSrc1, const Orp16s* pSrc2, int len, Orp64s* pNorm, int scaleFactor);
OrpStatus orpsNormDiff_L1_32f(const Orp32f* pSrc1, const Orp32f* pSrc2, int len, Orp32f* pNorm);
OrpStatus orpsNormDiff_L1_32fc64f(const Orp32fc* pSrc1, const Orp32fc* pSrc2, int len, Orp64f* pNorm);
OrpStatus orpsNormDiff_L1_64f(const Orp64f* pSrc1, const Orp64f* pSrc2, int len, Orp64f* pNorm);
OrpStatus orpsNormDiff_L1_64fc64f(const Orp64fc* pSrc1, const Orp64fc* pSrc2, int len, Orp64f* pNorm);
/** @} */

/** @name Norm_L2, NormDiff_L2, Norm_L2Sqr, NormDiff_L2Sqr
 *  *pNorm = the root of the sum of |x[n]|^2; `L2Sqr` without the root. `32f`: squares, sum and root in single
 *  precision. `32fc64f`, `64f`, `64fc64f`: in double precision. Sums that overflow give +inf.
 *  @{ */
OrpStatus orpsNorm_L2_16s32f(const Orp16s* pSrc, int len, Orp32f* pNorm);
OrpStatus orpsNorm_L2_16s32s_Sfs(const Orp16s* pSrc, int len, Orp32s* pNorm, int scaleFactor);
OrpStatus orpsNorm_L2_32f(const Orp32f* pSrc, int len, Orp32f* pNorm);
OrpStatus orpsNorm_L2_32fc64f(const Orp32fc* pSrc, int len, Orp64f* pNorm);
OrpStatus orpsNorm_L2_64f(const Orp64f* pSrc, int len, Orp64f* pNorm);
OrpStatus orpsNorm_L2_64fc64f(const Orp64fc* pSrc, int len, Orp64f* pNorm);
OrpStatus orpsNorm_L2Sqr_16s64s_Sfs(const Orp16s* pSrc, int len, Orp64s* pNorm, int scaleFactor);
OrpStatus orpsNormDiff_L2_16s32f(const Orp16s* pSrc1, const Orp16s* pSrc2, int len, Orp32f* pNorm);
OrpStatus orpsNormDiff_L2_16s32s_Sfs(const Orp16s* pSrc1, const Orp16s* pSrc2, int len, Orp32s* pNorm, int scaleFactor);
OrpStatus orpsNormDiff_L2_32f(const Orp32f* pSrc1, const Orp32f* pSrc2, int len, Orp32f* pNorm);
OrpStatus orpsNormDiff_L2_32fc64f(const Orp32fc* pSrc1, const Orp32fc* pSrc2, int len, Orp64f* pNorm);
OrpStatus orpsNormDiff_L2_64f(const Orp64f* pSrc1, const Orp64f* pSrc2, int len, Orp64f* pNorm);
OrpStatus orpsNormDiff_L2_64fc64f(const Orp64fc* pSrc1, const Orp64fc* pSrc2, int len, Orp64f* pNorm);
OrpStatus orpsNormDiff_L2Sqr_16s64s_Sfs(const Orp16s* pSrc1, const Orp16s* pSrc2, int len, Orp64s* pNorm,
                                        int scaleFactor);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
