/** @file
 *  Searches and counts.
 */
#ifndef ORPSP_STATS_SEARCH_H
#define ORPSP_STATS_SEARCH_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name FindNearest
 *  The element of a table that is nearest to a value, and its index: of two that are equally near the one with the
 *  lower index, of equal elements the first. pTable must be sorted in ascending order; it is searched by bisection. (A
 *  table that is not sorted gives some element of it.) `FindNearestOne` looks for inpVal; `FindNearest` for pVals[0] to
 *  pVals[len - 1], writing pOutVals[n] and pOutIndexes[n]; pOutVals may be pVals. Outputs may not overlap the table.
 *  Statuses: `StsOk`, `StsNullPtr`, `StsBadSize` (len or tblLen not positive).
 *  @{ */
OrpStatus orpsFindNearestOne_16u(Orp16u inpVal, const Orp16u* pTable, int tblLen, Orp16u* pOutVal, int* pOutIndex);
OrpStatus orpsFindNearest_16u(const Orp16u* pVals, Orp16u* pOutVals, int* pOutIndexes, int len, const Orp16u* pTable,
                              int tblLen);
/** @} */

/** @name CountInRange
 *  *pCounts = the number of elements with lowerBound < pSrc[n] < upperBound; both bounds are excluded.
 *  Statuses: `StsOk`, `StsNullPtr`, `StsBadSize`.
 *  @{ */
OrpStatus orpsCountInRange_32s(const Orp32s* pSrc, int len, int* pCounts, Orp32s lowerBound, Orp32s upperBound);
/** @} */

/** @name ZeroCrossing
 *  *pValZCR = the number of times that the signal crosses zero between neighbours a = pSrc[n - 1] and b = pSrc[n],
 *  0 < n < len, rounded to single precision. `zcType` says what counts as a crossing:
 *  - 0: the sign bits of a and b differ (so every pair with a b < 0 counts; +0 is positive, -0 negative, and a NaN has
 *    the sign of its bit);
 *  - 1: a < 0 < b or b < 0 < a: zeros and NaNs take no part;
 *  - 2: |sgn(b) - sgn(a)| / 2, with sgn(0) = sgn(-0) = 0 and sgn(NaN) = 0: reaching zero and leaving it count a half
 *    each.
 *  Statuses: `StsOk`, `StsNullPtr`, `StsBadSize`, then `StsBadArg` (another zcType). One element has no crossing.
 *  @{ */
OrpStatus orpsZeroCrossing_16s32f(const Orp16s* pSrc, int len, Orp32f* pValZCR, int zcType);
OrpStatus orpsZeroCrossing_32f(const Orp32f* pSrc, int len, Orp32f* pValZCR, int zcType);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
