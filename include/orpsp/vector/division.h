/** @file
 *  Division and normalisation, element by element.
 *
 *  Integer quotients are the exact rational quotient times 2^-scaleFactor, rounded to nearest with ties to even (unless
 *  a rounding mode says otherwise) and saturated, for every scale factor from INT_MIN to INT_MAX. Floating-point
 *  quotients are those of IEEE 754 (correctly rounded); for complex ones see Div. Sources and destination of one
 *  element type may be the same array.
 *
 *  Zero divisors. Element-wise division (Div, Div_Round, DivCRev) goes on, writes every element and returns the warning
 *  `StsDivByZero`. The element is, in integers, the type's largest value for a positive dividend, the smallest for a
 *  negative one and 0 for 0 (the same for every scale factor); in floating point an infinity with the sign of the
 *  dividend, whatever the sign of the zero, and NaN for 0/0. A complex divisor is zero if both parts are; these rules
 *  then hold for each part of the dividend. A zero constant divisor (DivC, Normalize) is the error `StsDivByZeroErr`,
 *  looked for after pointers and length.
 *
 *  Threads. Calls of at least the length given with a group may use two threads, if `ownGetNumThreads` (orpcore) grants
 *  as many. Results and statuses are those of one thread.
 */
#ifndef ORPSP_VECTOR_DIVISION_H
#define ORPSP_VECTOR_DIVISION_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name Div
 *  pDst[n] = pSrc2[n] / pSrc1[n]: the second source is divided by the first. In place pSrcDst[n] = pSrcDst[n] /
 *  pSrc[n]. `32s16s` divides 32-bit elements and saturates to 16 bits. Complex (a + bi) / (c + di) is
 *  ((ac + bd) + (bc - ad)i) / (c*c + d*d): exact and rounded once in integers; in floating point it is scaled so that
 *  neither products nor |c + di|^2 overflow or underflow (`32fc` computes in double, `64fc` scales both operands by
 *  powers of two), and the error of each part is at most 1 unit (`32fc`) or 4 units (`64fc`) in the last place of the
 *  quotient's magnitude. A part of the divisor that is infinite or NaN makes the quotient NaN.
 *  Statuses: `StsOk`, `StsNullPtr`, `StsBadSize`, `StsDivByZero`.
 *  Two threads from: 256 elements `16sc_Sfs`; 1024 `8u_Sfs`, `16s_Sfs`, `32s_Sfs`, `32s16s_Sfs`, `32fc`, `64f`, `64fc`;
 *  4096 `32f`, `32f_I`.
 *  @{ */
OrpStatus orpsDiv_16s_ISfs(const Orp16s* pSrc, Orp16s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsDiv_16s_Sfs(const Orp16s* pSrc1, const Orp16s* pSrc2, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsDiv_16sc_ISfs(const Orp16sc* pSrc, Orp16sc* pSrcDst, int len, int scaleFactor);
OrpStatus orpsDiv_16sc_Sfs(const Orp16sc* pSrc1, const Orp16sc* pSrc2, Orp16sc* pDst, int len, int scaleFactor);
OrpStatus orpsDiv_16u_ISfs(const Orp16u* pSrc, Orp16u* pSrcDst, int len, int scaleFactor);
OrpStatus orpsDiv_16u_Sfs(const Orp16u* pSrc1, const Orp16u* pSrc2, Orp16u* pDst, int len, int scaleFactor);
OrpStatus orpsDiv_32f(const Orp32f* pSrc1, const Orp32f* pSrc2, Orp32f* pDst, int len);
OrpStatus orpsDiv_32f_I(const Orp32f* pSrc, Orp32f* pSrcDst, int len);
OrpStatus orpsDiv_32fc(const Orp32fc* pSrc1, const Orp32fc* pSrc2, Orp32fc* pDst, int len);
OrpStatus orpsDiv_32fc_I(const Orp32fc* pSrc, Orp32fc* pSrcDst, int len);
OrpStatus orpsDiv_32s16s_Sfs(const Orp32s* pSrc1, const Orp32s* pSrc2, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsDiv_32s_ISfs(const Orp32s* pSrc, Orp32s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsDiv_32s_Sfs(const Orp32s* pSrc1, const Orp32s* pSrc2, Orp32s* pDst, int len, int scaleFactor);
OrpStatus orpsDiv_64f(const Orp64f* pSrc1, const Orp64f* pSrc2, Orp64f* pDst, int len);
OrpStatus orpsDiv_64f_I(const Orp64f* pSrc, Orp64f* pSrcDst, int len);
OrpStatus orpsDiv_64fc(const Orp64fc* pSrc1, const Orp64fc* pSrc2, Orp64fc* pDst, int len);
OrpStatus orpsDiv_64fc_I(const Orp64fc* pSrc, Orp64fc* pSrcDst, int len);
OrpStatus orpsDiv_8u_ISfs(const Orp8u* pSrc, Orp8u* pSrcDst, int len, int scaleFactor);
OrpStatus orpsDiv_8u_Sfs(const Orp8u* pSrc1, const Orp8u* pSrc2, Orp8u* pDst, int len, int scaleFactor);
/** @} */

/** @name Div_Round
 *  Div with a rounding mode for the exact scaled quotient: `OrpRoundZero` (0) toward zero, `OrpRoundNear` (1) to
 *  nearest, ties to even, `OrpRoundAway` (2) to nearest, ties away from zero. Statuses: `StsOk`, `StsNullPtr`,
 *  `StsBadSize`, `StsBadRoundMode` for any other mode, `StsDivByZero`. Two threads from: 512 elements `8u_Sfs`; 1024
 *  `16u_Sfs`.
 *  @{ */
OrpStatus orpsDiv_Round_16s_ISfs(const Orp16s* pSrc, Orp16s* pSrcDst, int len, int rndMode, int scaleFactor);
OrpStatus orpsDiv_Round_16s_Sfs(const Orp16s* pSrc1, const Orp16s* pSrc2, Orp16s* pDst, int len, int rndMode,
                                int scaleFactor);
OrpStatus orpsDiv_Round_16u_ISfs(const Orp16u* pSrc, Orp16u* pSrcDst, int len, int rndMode, int scaleFactor);
OrpStatus orpsDiv_Round_16u_Sfs(const Orp16u* pSrc1, const Orp16u* pSrc2, Orp16u* pDst, int len, int rndMode,
                                int scaleFactor);
OrpStatus orpsDiv_Round_8u_ISfs(const Orp8u* pSrc, Orp8u* pSrcDst, int len, int rndMode, int scaleFactor);
OrpStatus orpsDiv_Round_8u_Sfs(const Orp8u* pSrc1, const Orp8u* pSrc2, Orp8u* pDst, int len, int rndMode,
                               int scaleFactor);
/** @} */

/** @name DivC
 *  pDst[n] = pSrc[n] / val.
 *  Statuses: `StsOk`, `StsNullPtr`, `StsBadSize`, `StsDivByZeroErr` (val is zero; complex: both parts are).
 *  Two threads from: 1024 elements `16sc_Sfs`; 4096 `8u_Sfs`, `16s_Sfs`.
 *  @{ */
OrpStatus orpsDivC_16s_ISfs(Orp16s val, Orp16s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsDivC_16s_Sfs(const Orp16s* pSrc, Orp16s val, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsDivC_16sc_ISfs(Orp16sc val, Orp16sc* pSrcDst, int len, int scaleFactor);
OrpStatus orpsDivC_16sc_Sfs(const Orp16sc* pSrc, Orp16sc val, Orp16sc* pDst, int len, int scaleFactor);
OrpStatus orpsDivC_16u_ISfs(Orp16u val, Orp16u* pSrcDst, int len, int scaleFactor);
OrpStatus orpsDivC_16u_Sfs(const Orp16u* pSrc, Orp16u val, Orp16u* pDst, int len, int scaleFactor);
OrpStatus orpsDivC_32f(const Orp32f* pSrc, Orp32f val, Orp32f* pDst, int len);
OrpStatus orpsDivC_32f_I(Orp32f val, Orp32f* pSrcDst, int len);
OrpStatus orpsDivC_32fc(const Orp32fc* pSrc, Orp32fc val, Orp32fc* pDst, int len);
OrpStatus orpsDivC_32fc_I(Orp32fc val, Orp32fc* pSrcDst, int len);
OrpStatus orpsDivC_64f(const Orp64f* pSrc, Orp64f val, Orp64f* pDst, int len);
OrpStatus orpsDivC_64f_I(Orp64f val, Orp64f* pSrcDst, int len);
OrpStatus orpsDivC_64fc(const Orp64fc* pSrc, Orp64fc val, Orp64fc* pDst, int len);
OrpStatus orpsDivC_64fc_I(Orp64fc val, Orp64fc* pSrcDst, int len);
OrpStatus orpsDivC_64s_ISfs(Orp64s val, Orp64s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsDivC_8u_ISfs(Orp8u val, Orp8u* pSrcDst, int len, int scaleFactor);
OrpStatus orpsDivC_8u_Sfs(const Orp8u* pSrc, Orp8u val, Orp8u* pDst, int len, int scaleFactor);
/** @} */

/** @name DivCRev
 *  pDst[n] = val / pSrc[n]; integers round to nearest, ties to even.
 *  Statuses: `StsOk`, `StsNullPtr`, `StsBadSize`, `StsDivByZero`.
 *  Two threads from: 2048 elements `16u`; 4096 `32f`.
 *  @{ */
OrpStatus orpsDivCRev_16u(const Orp16u* pSrc, Orp16u val, Orp16u* pDst, int len);
OrpStatus orpsDivCRev_16u_I(Orp16u val, Orp16u* pSrcDst, int len);
OrpStatus orpsDivCRev_32f(const Orp32f* pSrc, Orp32f val, Orp32f* pDst, int len);
OrpStatus orpsDivCRev_32f_I(Orp32f val, Orp32f* pSrcDst, int len);
/** @} */

/** @name Normalize
 *  pDst[n] = (pSrc[n] - vSub) / vDiv, where vDiv is real: a complex vector is shifted by a complex mean and divided by
 *  one real deviation. Integers: the exact quotient of the exact difference, rounded once; vDiv is a full 32-bit
 *  integer. Floating point: the difference is rounded, then the quotient.
 *  Statuses: `StsOk`, `StsNullPtr`, `StsBadSize`, `StsDivByZeroErr` (vDiv is zero).
 *  @{ */
OrpStatus orpsNormalize_16s_Sfs(const Orp16s* pSrc, Orp16s* pDst, int len, Orp16s vSub, int vDiv, int scaleFactor);
OrpStatus orpsNormalize_16sc_Sfs(const Orp16sc* pSrc, Orp16sc* pDst, int len, Orp16sc vSub, int vDiv, int scaleFactor);
OrpStatus orpsNormalize_32f(const Orp32f* pSrc, Orp32f* pDst, int len, Orp32f vSub, Orp32f vDiv);
OrpStatus orpsNormalize_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len, Orp32fc vSub, Orp32f vDiv);
OrpStatus orpsNormalize_64f(const Orp64f* pSrc, Orp64f* pDst, int len, Orp64f vSub, Orp64f vDiv);
OrpStatus orpsNormalize_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len, Orp64fc vSub, Orp64f vDiv);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
