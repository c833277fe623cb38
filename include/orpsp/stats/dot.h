/** @file
 *  Dot products.
 */
#ifndef ORPSP_STATS_DOT_H
#define ORPSP_STATS_DOT_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name DotProd
 *  *pDp = the sum of pSrc1[n] pSrc2[n]; complex elements are not conjugated.
 *
 *  Of the types in a name the last is that of the result and the first ones those of the sources; where two types stand
 *  before a complex result, pSrc1 has the first. `16s32s32s` multiplies `16s` by `32s`.
 *  - Integers: products and sums are exact, whatever the values and the length. `_Sfs`: the sum times 2^-scaleFactor,
 *    rounded once to nearest with ties to even and saturated, for every scale factor; of complex results each part.
 *    `16s64s`, `16sc64sc`, `16s16sc64sc` hold every sum exactly. `16s32f`, `16sc32fc`, `16s16sc32fc`: the exact sum
 *    rounded once.
 *  - Floating point: in the precision of the result; products are rounded before they are added (no fused
 *    multiply-add). The same bits on every processor: `32f` has 16 lanes, all zero at first, and product n is added to
 *    lane n modulo 16. `32f64f`, `64f` and those of a real and a complex source have 64 lanes of single or 32 of double
 *    precision (both parts of a complex product count). Of two complex sources, the sums of re1 re2, im1 re2, re1 im2
 *    and im1 im2 are made by themselves, in 16 lanes of single or 8 of double precision each, and then combined. At the
 *    end the upper half of the lanes is added to the lower half until one element is left. NaN and infinity go through
 *    as IEEE 754 says.
 *
 *  The result may not overlap a source; the sources may be the same or overlap. Statuses: `StsOk`, `StsNullPtr`,
 *  `StsBadSize`.
 *  @{ */
OrpStatus orpsDotProd_16s16sc32fc(const Orp16s* pSrc1, const Orp16sc* pSrc2, int len, Orp32fc* pDp);
OrpStatus orpsDotProd_16s16sc32sc_Sfs(const Orp16s* pSrc1, const Orp16sc* pSrc2, int len, Orp32sc* pDp,
                                      int scaleFactor);
OrpStatus orpsDotProd_16s16sc64sc(const Orp16s* pSrc1, const Orp16sc* pSrc2, int len, Orp64sc* pDp);
OrpStatus orpsDotProd_16s16sc_Sfs(const Orp16s* pSrc1, const Orp16sc* pSrc2, int len, Orp16sc* pDp, int scaleFactor);
OrpStatus orpsDotProd_16s32f(const Orp16s* pSrc1, const Orp16s* pSrc2, int len, Orp32f* pDp);
OrpStatus orpsDotProd_16s32s32s_Sfs(const Orp16s* pSrc1, const Orp32s* pSrc2, int len, Orp32s* pDp, int scaleFactor);
OrpStatus orpsDotProd_16s32s_Sfs(const Orp16s* pSrc1, const Orp16s* pSrc2, int len, Orp32s* pDp, int scaleFactor);
OrpStatus orpsDotProd_16s64s(const Orp16s* pSrc1, const Orp16s* pSrc2, int len, Orp64s* pDp);
OrpStatus orpsDotProd_16s_Sfs(const Orp16s* pSrc1, const Orp16s* pSrc2, int len, Orp16s* pDp, int scaleFactor);
OrpStatus orpsDotProd_16sc32fc(const Orp16sc* pSrc1, const Orp16sc* pSrc2, int len, Orp32fc* pDp);
OrpStatus orpsDotProd_16sc32sc_Sfs(const Orp16sc* pSrc1, const Orp16sc* pSrc2, int len, Orp32sc* pDp, int scaleFactor);
OrpStatus orpsDotProd_16sc64sc(const Orp16sc* pSrc1, const Orp16sc* pSrc2, int len, Orp64sc* pDp);
OrpStatus orpsDotProd_16sc_Sfs(const Orp16sc* pSrc1, const Orp16sc* pSrc2, int len, Orp16sc* pDp, int scaleFactor);
OrpStatus orpsDotProd_32f(const Orp32f* pSrc1, const Orp32f* pSrc2, int len, Orp32f* pDp);
OrpStatus orpsDotProd_32f32fc(const Orp32f* pSrc1, const Orp32fc* pSrc2, int len, Orp32fc* pDp);
OrpStatus orpsDotProd_32f32fc64fc(const Orp32f* pSrc1, const Orp32fc* pSrc2, int len, Orp64fc* pDp);
OrpStatus orpsDotProd_32f64f(const Orp32f* pSrc1, const Orp32f* pSrc2, int len, Orp64f* pDp);
OrpStatus orpsDotProd_32fc(const Orp32fc* pSrc1, const Orp32fc* pSrc2, int len, Orp32fc* pDp);
OrpStatus orpsDotProd_32fc64fc(const Orp32fc* pSrc1, const Orp32fc* pSrc2, int len, Orp64fc* pDp);
OrpStatus orpsDotProd_32s32sc_Sfs(const Orp32s* pSrc1, const Orp32sc* pSrc2, int len, Orp32sc* pDp, int scaleFactor);
OrpStatus orpsDotProd_32s_Sfs(const Orp32s* pSrc1, const Orp32s* pSrc2, int len, Orp32s* pDp, int scaleFactor);
OrpStatus orpsDotProd_32sc_Sfs(const Orp32sc* pSrc1, const Orp32sc* pSrc2, int len, Orp32sc* pDp, int scaleFactor);
OrpStatus orpsDotProd_64f(const Orp64f* pSrc1, const Orp64f* pSrc2, int len, Orp64f* pDp);
OrpStatus orpsDotProd_64f64fc(const Orp64f* pSrc1, const Orp64fc* pSrc2, int len, Orp64fc* pDp);
OrpStatus orpsDotProd_64fc(const Orp64fc* pSrc1, const Orp64fc* pSrc2, int len, Orp64fc* pDp);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
