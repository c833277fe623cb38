/** @file
 *  Smallest and largest elements.
 */
#ifndef ORPSP_STATS_EXTREMA_H
#define ORPSP_STATS_EXTREMA_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name Min, Max
 *  *pMin or *pMax = the smallest or largest element, *pIndx = the index of the first element equal to it; the value
 *  written is that element. `Abs`: of |pSrc[n]|, where the most negative integer saturates to the most positive one.
 *
 *  NaNs are passed over; if every element is one, the result is the first of them and the index 0. -0 and +0 are
 *  equal, so the first of them is taken.
 *  Results may not overlap the source or each other. Statuses: `StsOk`, `StsNullPtr`, `StsBadSize`. (4 is kept for
 *  warnings of `MinIndx_16s` and `MaxIndx_16s`; no call gives it, since there is nothing to warn of.)
 *  @{ */
OrpStatus orpsMin_16s(const Orp16s* pSrc, int len, Orp16s* pMin);
OrpStatus orpsMinIndx_16s(const Orp16s* pSrc, int len, Orp16s* pMin, int* pIndx);
OrpStatus orpsMin_32s(const Orp32s* pSrc, int len, Orp32s* pMin);
OrpStatus orpsMinIndx_32s(const Orp32s* pSrc, int len, Orp32s* pMin, int* pIndx);
OrpStatus orpsMin_32f(const Orp32f* pSrc, int len, Orp32f* pMin);
OrpStatus orpsMinIndx_32f(const Orp32f* pSrc, int len, Orp32f* pMin, int* pIndx);
OrpStatus orpsMin_64f(const Orp64f* pSrc, int len, Orp64f* pMin);
OrpStatus orpsMinIndx_64f(const Orp64f* pSrc, int len, Orp64f* pMin, int* pIndx);
OrpStatus orpsMinAbs_16s(const Orp16s* pSrc, int len, Orp16s* pMinAbs);
OrpStatus orpsMinAbsIndx_16s(const Orp16s* pSrc, int len, Orp16s* pMinAbs, int* pIndx);
OrpStatus orpsMinAbs_32s(const Orp32s* pSrc, int len, Orp32s* pMinAbs);
OrpStatus orpsMinAbsIndx_32s(const Orp32s* pSrc, int len, Orp32s* pMinAbs, int* pIndx);
OrpStatus orpsMax_16s(const Orp16s* pSrc, int len, Orp16s* pMax);
OrpStatus orpsMaxIndx_16s(const Orp16s* pSrc, int len, Orp16s* pMax, int* pIndx);
OrpStatus orpsMax_32s(const Orp32s* pSrc, int len, Orp32s* pMax);
OrpStatus orpsMaxIndx_32s(const Orp32s* pSrc, int len, Orp32s* pMax, int* pIndx);
OrpStatus orpsMax_32f(const Orp32f* pSrc, int len, Orp32f* pMax);
OrpStatus orpsMaxIndx_32f(const Orp32f* pSrc, int len, Orp32f* pMax, int* pIndx);
OrpStatus orpsMax_64f(const Orp64f* pSrc, int len, Orp64f* pMax);
OrpStatus orpsMaxIndx_64f(const Orp64f* pSrc, int len, Orp64f* pMax, int* pIndx);
OrpStatus orpsMaxAbs_16s(const Orp16s* pSrc, int len, Orp16s* pMaxAbs);
OrpStatus orpsMaxAbsIndx_16s(const Orp16s* pSrc, int len, Orp16s* pMaxAbs, int* pIndx);
OrpStatus orpsMaxAbs_32s(const Orp32s* pSrc, int len, Orp32s* pMaxAbs);
OrpStatus orpsMaxAbsIndx_32s(const Orp32s* pSrc, int len, Orp32s* pMaxAbs, int* pIndx);
/** @} */

/** @name MinMax
 *  Both at once, with the rules of Min and Max: the smallest element *pMin, the largest *pMax and the indices of the
 *  first elements equal to them.
 *  Results may not overlap the source or each other. Statuses: `StsOk`, `StsNullPtr`, `StsBadSize`.
 *  @{ */
OrpStatus orpsMinMax_8u(const Orp8u* pSrc, int len, Orp8u* pMin, Orp8u* pMax);
OrpStatus orpsMinMax_16u(const Orp16u* pSrc, int len, Orp16u* pMin, Orp16u* pMax);
OrpStatus orpsMinMax_16s(const Orp16s* pSrc, int len, Orp16s* pMin, Orp16s* pMax);
OrpStatus orpsMinMax_32u(const Orp32u* pSrc, int len, Orp32u* pMin, Orp32u* pMax);
OrpStatus orpsMinMax_32s(const Orp32s* pSrc, int len, Orp32s* pMin, Orp32s* pMax);
OrpStatus orpsMinMax_32f(const Orp32f* pSrc, int len, Orp32f* pMin, Orp32f* pMax);
OrpStatus orpsMinMax_64f(const Orp64f* pSrc, int len, Orp64f* pMin, Orp64f* pMax);
OrpStatus orpsMinMaxIndx_8u(const Orp8u* pSrc, int len, Orp8u* pMin, int* pMinIndx, Orp8u* pMax, int* pMaxIndx);
OrpStatus orpsMinMaxIndx_16u(const Orp16u* pSrc, int len, Orp16u* pMin, int* pMinIndx, Orp16u* pMax, int* pMaxIndx);
OrpStatus orpsMinMaxIndx_16s(const Orp16s* pSrc, int len, Orp16s* pMin, int* pMinIndx, Orp16s* pMax, int* pMaxIndx);
OrpStatus orpsMinMaxIndx_32u(const Orp32u* pSrc, int len, Orp32u* pMin, int* pMinIndx, Orp32u* pMax, int* pMaxIndx);
OrpStatus orpsMinMaxIndx_32s(const Orp32s* pSrc, int len, Orp32s* pMin, int* pMinIndx, Orp32s* pMax, int* pMaxIndx);
OrpStatus orpsMinMaxIndx_32f(const Orp32f* pSrc, int len, Orp32f* pMin, int* pMinIndx, Orp32f* pMax, int* pMaxIndx);
OrpStatus orpsMinMaxIndx_64f(const Orp64f* pSrc, int len, Orp64f* pMin, int* pMinIndx, Orp64f* pMax, int* pMaxIndx);
/** @} */

/** @name MinEvery, MaxEvery
 *  pDst[n] = the smaller or larger of pSrc1[n] and pSrc2[n]; `_I`: of pSrc[n] and pSrcDst[n]. Of an element and a NaN
 *  it is the element, of two NaNs a NaN. -0 and +0 are equal; of equal elements it is that of pSrc1 (`_I`: of pSrc).
 *  Statuses: `StsOk`, `StsNullPtr`, `StsBadSize`.
 *  @{ */
OrpStatus orpsMinEvery_8u(const Orp8u* pSrc1, const Orp8u* pSrc2, Orp8u* pDst, int len);
OrpStatus orpsMinEvery_16u(const Orp16u* pSrc1, const Orp16u* pSrc2, Orp16u* pDst, int len);
OrpStatus orpsMinEvery_32f(const Orp32f* pSrc1, const Orp32f* pSrc2, Orp32f* pDst, int len);
OrpStatus orpsMinEvery_64f(const Orp64f* pSrc1, const Orp64f* pSrc2, Orp64f* pDst, int len);
OrpStatus orpsMinEvery_8u_I(const Orp8u* pSrc, Orp8u* pSrcDst, int len);
OrpStatus orpsMinEvery_16u_I(const Orp16u* pSrc, Orp16u* pSrcDst, int len);
OrpStatus orpsMinEvery_16s_I(const Orp16s* pSrc, Orp16s* pSrcDst, int len);
OrpStatus orpsMinEvery_32s_I(const Orp32s* pSrc, Orp32s* pSrcDst, int len);
OrpStatus orpsMinEvery_32f_I(const Orp32f* pSrc, Orp32f* pSrcDst, int len);
OrpStatus orpsMinEvery_64f_I(const Orp64f* pSrc, Orp64f* pSrcDst, int len);
OrpStatus orpsMaxEvery_8u(const Orp8u* pSrc1, const Orp8u* pSrc2, Orp8u* pDst, int len);
OrpStatus orpsMaxEvery_16u(const Orp16u* pSrc1, const Orp16u* pSrc2, Orp16u* pDst, int len);
OrpStatus orpsMaxEvery_32f(const Orp32f* pSrc1, const Orp32f* pSrc2, Orp32f* pDst, int len);
OrpStatus orpsMaxEvery_64f(const Orp64f* pSrc1, const Orp64f* pSrc2, Orp64f* pDst, int len);
OrpStatus orpsMaxEvery_8u_I(const Orp8u* pSrc, Orp8u* pSrcDst, int len);
OrpStatus orpsMaxEvery_16u_I(const Orp16u* pSrc, Orp16u* pSrcDst, int len);
OrpStatus orpsMaxEvery_16s_I(const Orp16s* pSrc, Orp16s* pSrcDst, int len);
OrpStatus orpsMaxEvery_32s_I(const Orp32s* pSrc, Orp32s* pSrcDst, int len);
OrpStatus orpsMaxEvery_32f_I(const Orp32f* pSrc, Orp32f* pSrcDst, int len);
OrpStatus orpsMaxEvery_64f_I(const Orp64f* pSrc, Orp64f* pSrcDst, int len);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
