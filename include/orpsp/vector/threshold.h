/** @file
 *  Thresholds: limiting and replacing elements beyond a level.
 *
 *  Every comparison is strict: an element equal to the level stays as it is, bit for bit (also -0 at a level of +0).
 *  Comparisons with a NaN are false: a NaN element stays, and a NaN level leaves every element alone. LTInv, which
 *  divides, has its own rules.
 *
 *  Complex elements are compared by magnitude |z| with a real level; a negative level acts as 0. `16sc` is exact: |z|^2
 *  is compared with level^2 in integers, scaled parts are level * part / |z| rounded to nearest. `32fc` compares |z|^2,
 *  rounded to double, with level^2 and computes in double; the error of a scaled part is at most 1 unit in its last
 *  place. `64fc` scales by powers of two, so that nothing overflows or underflows on the way: elements are compared up
 *  to 2 units in the last place of the magnitude, and the error of a scaled part is at most 4 units in its last place.
 *  An element with a NaN part stays. An element raised to an infinite level has infinite parts, but zero parts stay.
 *
 *  Statuses: `StsOk`, `StsNullPtr`, `StsBadSize`, and those named with a group.
 */
#ifndef ORPSP_VECTOR_THRESHOLD_H
#define ORPSP_VECTOR_THRESHOLD_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name Threshold generic
 *  `relOp` 0 (less): as LT; `relOp` 4 (greater): as GT. Statuses: also `StsBadArg` for any other `relOp`.
 *  @{ */
OrpStatus orpsThreshold_16s(const Orp16s* pSrc, Orp16s* pDst, int len, Orp16s level, int relOp);
OrpStatus orpsThreshold_16s_I(Orp16s* pSrcDst, int len, Orp16s level, int relOp);
OrpStatus orpsThreshold_16sc(const Orp16sc* pSrc, Orp16sc* pDst, int len, Orp16s level, int relOp);
OrpStatus orpsThreshold_16sc_I(Orp16sc* pSrcDst, int len, Orp16s level, int relOp);
OrpStatus orpsThreshold_32f(const Orp32f* pSrc, Orp32f* pDst, int len, Orp32f level, int relOp);
OrpStatus orpsThreshold_32f_I(Orp32f* pSrcDst, int len, Orp32f level, int relOp);
OrpStatus orpsThreshold_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len, Orp32f level, int relOp);
OrpStatus orpsThreshold_32fc_I(Orp32fc* pSrcDst, int len, Orp32f level, int relOp);
OrpStatus orpsThreshold_64f(const Orp64f* pSrc, Orp64f* pDst, int len, Orp64f level, int relOp);
OrpStatus orpsThreshold_64f_I(Orp64f* pSrcDst, int len, Orp64f level, int relOp);
OrpStatus orpsThreshold_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len, Orp64f level, int relOp);
OrpStatus orpsThreshold_64fc_I(Orp64fc* pSrcDst, int len, Orp64f level, int relOp);
/** @} */

/** @name Threshold LT
 *  Elements below the level become the level: pDst[n] = pSrc[n] < level ? level : pSrc[n]. A complex element is scaled
 *  to the magnitude `level` and keeps its phase; a zero element below a positive level becomes (level, 0).
 *  @{ */
OrpStatus orpsThreshold_LT_16s(const Orp16s* pSrc, Orp16s* pDst, int len, Orp16s level);
OrpStatus orpsThreshold_LT_16s_I(Orp16s* pSrcDst, int len, Orp16s level);
OrpStatus orpsThreshold_LT_16sc(const Orp16sc* pSrc, Orp16sc* pDst, int len, Orp16s level);
OrpStatus orpsThreshold_LT_16sc_I(Orp16sc* pSrcDst, int len, Orp16s level);
OrpStatus orpsThreshold_LT_32f(const Orp32f* pSrc, Orp32f* pDst, int len, Orp32f level);
OrpStatus orpsThreshold_LT_32f_I(Orp32f* pSrcDst, int len, Orp32f level);
OrpStatus orpsThreshold_LT_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len, Orp32f level);
OrpStatus orpsThreshold_LT_32fc_I(Orp32fc* pSrcDst, int len, Orp32f level);
OrpStatus orpsThreshold_LT_32s(const Orp32s* pSrc, Orp32s* pDst, int len, Orp32s level);
OrpStatus orpsThreshold_LT_32s_I(Orp32s* pSrcDst, int len, Orp32s level);
OrpStatus orpsThreshold_LT_64f(const Orp64f* pSrc, Orp64f* pDst, int len, Orp64f level);
OrpStatus orpsThreshold_LT_64f_I(Orp64f* pSrcDst, int len, Orp64f level);
OrpStatus orpsThreshold_LT_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len, Orp64f level);
OrpStatus orpsThreshold_LT_64fc_I(Orp64fc* pSrcDst, int len, Orp64f level);
/** @} */

/** @name Threshold GT
 *  Elements above the level become the level: pDst[n] = pSrc[n] > level ? level : pSrc[n]. A complex element is scaled
 *  to the magnitude `level` and keeps its phase. Infinite parts count as ±1 beside finite ones, which count as ±0:
 *  (inf, 3) becomes (level, 0), and (inf, -inf) has the parts level / sqrt(2) and -level / sqrt(2).
 *  @{ */
OrpStatus orpsThreshold_GT_16s(const Orp16s* pSrc, Orp16s* pDst, int len, Orp16s level);
OrpStatus orpsThreshold_GT_16s_I(Orp16s* pSrcDst, int len, Orp16s level);
OrpStatus orpsThreshold_GT_16sc(const Orp16sc* pSrc, Orp16sc* pDst, int len, Orp16s level);
OrpStatus orpsThreshold_GT_16sc_I(Orp16sc* pSrcDst, int len, Orp16s level);
OrpStatus orpsThreshold_GT_32f(const Orp32f* pSrc, Orp32f* pDst, int len, Orp32f level);
OrpStatus orpsThreshold_GT_32f_I(Orp32f* pSrcDst, int len, Orp32f level);
OrpStatus orpsThreshold_GT_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len, Orp32f level);
OrpStatus orpsThreshold_GT_32fc_I(Orp32fc* pSrcDst, int len, Orp32f level);
OrpStatus orpsThreshold_GT_32s(const Orp32s* pSrc, Orp32s* pDst, int len, Orp32s level);
OrpStatus orpsThreshold_GT_32s_I(Orp32s* pSrcDst, int len, Orp32s level);
OrpStatus orpsThreshold_GT_64f(const Orp64f* pSrc, Orp64f* pDst, int len, Orp64f level);
OrpStatus orpsThreshold_GT_64f_I(Orp64f* pSrcDst, int len, Orp64f level);
OrpStatus orpsThreshold_GT_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len, Orp64f level);
OrpStatus orpsThreshold_GT_64fc_I(Orp64fc* pSrcDst, int len, Orp64f level);
/** @} */

/** @name Threshold LTVal
 *  pDst[n] = pSrc[n] < level ? value : pSrc[n]. A complex value replaces elements of magnitudes below the level.
 *  @{ */
OrpStatus orpsThreshold_LTVal_16s(const Orp16s* pSrc, Orp16s* pDst, int len, Orp16s level, Orp16s value);
OrpStatus orpsThreshold_LTVal_16s_I(Orp16s* pSrcDst, int len, Orp16s level, Orp16s value);
OrpStatus orpsThreshold_LTVal_16sc(const Orp16sc* pSrc, Orp16sc* pDst, int len, Orp16s level, Orp16sc value);
OrpStatus orpsThreshold_LTVal_16sc_I(Orp16sc* pSrcDst, int len, Orp16s level, Orp16sc value);
OrpStatus orpsThreshold_LTVal_32f(const Orp32f* pSrc, Orp32f* pDst, int len, Orp32f level, Orp32f value);
OrpStatus orpsThreshold_LTVal_32f_I(Orp32f* pSrcDst, int len, Orp32f level, Orp32f value);
OrpStatus orpsThreshold_LTVal_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len, Orp32f level, Orp32fc value);
OrpStatus orpsThreshold_LTVal_32fc_I(Orp32fc* pSrcDst, int len, Orp32f level, Orp32fc value);
OrpStatus orpsThreshold_LTVal_64f(const Orp64f* pSrc, Orp64f* pDst, int len, Orp64f level, Orp64f value);
OrpStatus orpsThreshold_LTVal_64f_I(Orp64f* pSrcDst, int len, Orp64f level, Orp64f value);
OrpStatus orpsThreshold_LTVal_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len, Orp64f level, Orp64fc value);
OrpStatus orpsThreshold_LTVal_64fc_I(Orp64fc* pSrcDst, int len, Orp64f level, Orp64fc value);
/** @} */

/** @name Threshold GTVal
 *  pDst[n] = pSrc[n] > level ? value : pSrc[n]. A complex value replaces elements of magnitudes above the level.
 *  @{ */
OrpStatus orpsThreshold_GTVal_16s(const Orp16s* pSrc, Orp16s* pDst, int len, Orp16s level, Orp16s value);
OrpStatus orpsThreshold_GTVal_16s_I(Orp16s* pSrcDst, int len, Orp16s level, Orp16s value);
OrpStatus orpsThreshold_GTVal_16sc(const Orp16sc* pSrc, Orp16sc* pDst, int len, Orp16s level, Orp16sc value);
OrpStatus orpsThreshold_GTVal_16sc_I(Orp16sc* pSrcDst, int len, Orp16s level, Orp16sc value);
OrpStatus orpsThreshold_GTVal_32f(const Orp32f* pSrc, Orp32f* pDst, int len, Orp32f level, Orp32f value);
OrpStatus orpsThreshold_GTVal_32f_I(Orp32f* pSrcDst, int len, Orp32f level, Orp32f value);
OrpStatus orpsThreshold_GTVal_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len, Orp32f level, Orp32fc value);
OrpStatus orpsThreshold_GTVal_32fc_I(Orp32fc* pSrcDst, int len, Orp32f level, Orp32fc value);
OrpStatus orpsThreshold_GTVal_64f(const Orp64f* pSrc, Orp64f* pDst, int len, Orp64f level, Orp64f value);
OrpStatus orpsThreshold_GTVal_64f_I(Orp64f* pSrcDst, int len, Orp64f level, Orp64f value);
OrpStatus orpsThreshold_GTVal_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len, Orp64f level, Orp64fc value);
OrpStatus orpsThreshold_GTVal_64fc_I(Orp64fc* pSrcDst, int len, Orp64f level, Orp64fc value);
/** @} */

/** @name Threshold LTValGTVal
 *  pDst[n] = pSrc[n] < levelLT ? valueLT : pSrc[n] > levelGT ? valueGT : pSrc[n]: the lower level is tested first, each
 *  one with the element as it was. The levels may be in any order.
 *  @{ */
OrpStatus orpsThreshold_LTValGTVal_16s(const Orp16s* pSrc, Orp16s* pDst, int len, Orp16s levelLT, Orp16s valueLT,
                                       Orp16s levelGT, Orp16s valueGT);
OrpStatus orpsThreshold_LTValGTVal_16s_I(Orp16s* pSrcDst, int len, Orp16s levelLT, Orp16s valueLT, Orp16s levelGT,
                                         Orp16s valueGT);
OrpStatus orpsThreshold_LTValGTVal_32f(const Orp32f* pSrc, Orp32f* pDst, int len, Orp32f levelLT, Orp32f valueLT,
                                       Orp32f levelGT, Orp32f valueGT);
OrpStatus orpsThreshold_LTValGTVal_32f_I(Orp32f* pSrcDst, int len, Orp32f levelLT, Orp32f valueLT, Orp32f levelGT,
                                         Orp32f valueGT);
OrpStatus orpsThreshold_LTValGTVal_32s(const Orp32s* pSrc, Orp32s* pDst, int len, Orp32s levelLT, Orp32s valueLT,
                                       Orp32s levelGT, Orp32s valueGT);
OrpStatus orpsThreshold_LTValGTVal_32s_I(Orp32s* pSrcDst, int len, Orp32s levelLT, Orp32s valueLT, Orp32s levelGT,
                                         Orp32s valueGT);
OrpStatus orpsThreshold_LTValGTVal_64f(const Orp64f* pSrc, Orp64f* pDst, int len, Orp64f levelLT, Orp64f valueLT,
                                       Orp64f levelGT, Orp64f valueGT);
OrpStatus orpsThreshold_LTValGTVal_64f_I(Orp64f* pSrcDst, int len, Orp64f levelLT, Orp64f valueLT, Orp64f levelGT,
                                         Orp64f valueGT);
/** @} */

/** @name Threshold LTAbs
 *  Elements of absolute values below the level become the level with the sign of the element: integer 0 and +0 become
 *  `level`, -0 becomes -`level`. A negative level acts as 0. The most negative integer has its true absolute value,
 *  which no level exceeds.
 *  @{ */
OrpStatus orpsThreshold_LTAbs_16s(const Orp16s* pSrc, Orp16s* pDst, int len, Orp16s level);
OrpStatus orpsThreshold_LTAbs_16s_I(Orp16s* pSrcDst, int len, Orp16s level);
OrpStatus orpsThreshold_LTAbs_32f(const Orp32f* pSrc, Orp32f* pDst, int len, Orp32f level);
OrpStatus orpsThreshold_LTAbs_32f_I(Orp32f* pSrcDst, int len, Orp32f level);
OrpStatus orpsThreshold_LTAbs_32s(const Orp32s* pSrc, Orp32s* pDst, int len, Orp32s level);
OrpStatus orpsThreshold_LTAbs_32s_I(Orp32s* pSrcDst, int len, Orp32s level);
OrpStatus orpsThreshold_LTAbs_64f(const Orp64f* pSrc, Orp64f* pDst, int len, Orp64f level);
OrpStatus orpsThreshold_LTAbs_64f_I(Orp64f* pSrcDst, int len, Orp64f level);
/** @} */

/** @name Threshold GTAbs
 *  Elements of absolute values above the level become the level with the sign of the element. A negative level acts as
 *  0. The most negative integer has its true absolute value: `16s` with level 32767 turns -32768 into -32767.
 *  @{ */
OrpStatus orpsThreshold_GTAbs_16s(const Orp16s* pSrc, Orp16s* pDst, int len, Orp16s level);
OrpStatus orpsThreshold_GTAbs_16s_I(Orp16s* pSrcDst, int len, Orp16s level);
OrpStatus orpsThreshold_GTAbs_32f(const Orp32f* pSrc, Orp32f* pDst, int len, Orp32f level);
OrpStatus orpsThreshold_GTAbs_32f_I(Orp32f* pSrcDst, int len, Orp32f level);
OrpStatus orpsThreshold_GTAbs_32s(const Orp32s* pSrc, Orp32s* pDst, int len, Orp32s level);
OrpStatus orpsThreshold_GTAbs_32s_I(Orp32s* pSrcDst, int len, Orp32s level);
OrpStatus orpsThreshold_GTAbs_64f(const Orp64f* pSrc, Orp64f* pDst, int len, Orp64f level);
OrpStatus orpsThreshold_GTAbs_64f_I(Orp64f* pSrcDst, int len, Orp64f level);
/** @} */

/** @name Threshold LTInv
 *  The reciprocal with magnitudes below the level raised to the level. Real: sign(x) / max(|x|, level), correctly
 *  rounded in both precisions. Complex: conj(z) / (|z| max(|z|, level)), which is 1/z from the level on; the error of
 *  each part is at most 1 unit in its last place for `32fc` (which computes in double) and 4 units for `64fc` (which
 *  scales by powers of two, so that nothing overflows or underflows but the result).
 *  Zero elements: real ±1 / level, complex (1 / level, 0). With level 0 that is an infinity with the sign of the
 *  element (complex: of its real part, the imaginary part being 0), and the call returns `StsDivByZero` after writing
 *  everything.
 *  A NaN element gives NaN, complex in both parts; an infinite one gives 0 with the sign of the element, complex zeros
 *  with the signs of the conjugate, and so does every nonzero complex element at an infinite level. A NaN level acts as
 *  0.
 *  Statuses: also `StsBadThreshold` (level < 0) and `StsDivByZero`.
 *  Two threads from: 512 elements `64fc`, `64fc_I`; 2048 `32fc`, `32fc_I`, `64f`, `64f_I`; 8192 `32f`, `32f_I`.
 *  @{ */
OrpStatus orpsThreshold_LTInv_32f(const Orp32f* pSrc, Orp32f* pDst, int len, Orp32f level);
OrpStatus orpsThreshold_LTInv_32f_I(Orp32f* pSrcDst, int len, Orp32f level);
OrpStatus orpsThreshold_LTInv_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len, Orp32f level);
OrpStatus orpsThreshold_LTInv_32fc_I(Orp32fc* pSrcDst, int len, Orp32f level);
OrpStatus orpsThreshold_LTInv_64f(const Orp64f* pSrc, Orp64f* pDst, int len, Orp64f level);
OrpStatus orpsThreshold_LTInv_64f_I(Orp64f* pSrcDst, int len, Orp64f level);
OrpStatus orpsThreshold_LTInv_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len, Orp64f level);
OrpStatus orpsThreshold_LTInv_64fc_I(Orp64fc* pSrcDst, int len, Orp64f level);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
