/** @file
 *  Cauchy's loss, which weighs residuals so that few large ones do not outweigh all others, and its derivatives [Barron
 *  2019: A General and Adaptive Robust Loss Function, CVPR, the case alpha = 0]. s > 0 is the residual from which on
 *  the loss turns from the square of x to its logarithm.
 *
 *  The formulas hold for all finite x and s, squares beyond the range of single precision included: results overflow or
 *  underflow only where their own values do. They are the same bits at every vector width and position. NaN gives NaN.
 *
 *  Statuses, in this order: `StsNullPtr`, `StsBadSize`, `StsCauchyParam` (s is not above 0, or NaN).
 */
#ifndef ORPSP_SPEECH_CAUCHY_H
#define ORPSP_SPEECH_CAUCHY_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name Cauchy
 *  x = pSrcDst[n] becomes ln(1 + (x / s)^2) s^2 / 2. Computed in double precision and rounded; the error stays below
 *  0.501 units in the last place, that of tiny x included. Infinity gives infinity; an infinite s gives NaN.
 *  @{ */
OrpStatus orpsCauchy_32f_I(Orp32f* pSrcDst, int len, Orp32f s);
/** @} */

/** @name CauchyD, CauchyDD2
 *  x = pSrcDst[n] becomes x / (x^2 + s^2): the derivative of ln(1 + (x / s)^2) / 2, that is of the loss divided by s^2;
 *  the same bits from both. DD2 also writes that one's derivative, pDst2[n] = (s^2 - x^2) / (x^2 + s^2)^2; pDst2 may
 *  not be pSrcDst or overlap it. Errors stay below 3 and 7 units in the last place (measured over all magnitudes of x
 *  and s). Infinite x give NaN; an infinite s gives 0 for finite x and, in pDst2, NaN.
 *  @{ */
OrpStatus orpsCauchyD_32f_I(Orp32f* pSrcDst, int len, Orp32f s);
OrpStatus orpsCauchyDD2_32f_I(Orp32f* pSrcDst, Orp32f* pDst2, int len, Orp32f s);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
