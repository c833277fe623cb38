/** @file
 *  Sums, products, absolute values and squares, element by element.
 *
 *  Shared by all groups here: statuses `StsOk`, `StsNullPtr`, `StsBadSize`; no parallel execution; exact aliasing of
 *  sources and destination of one element type. Integer results are exact before scaling and saturation, whatever the
 *  operands (rules of scaling: `orpsp/types.h`). Floating-point results are rounded once per operation written in the
 *  formula, never fused, so they are the same bits on every processor. Complex integers saturate part by part.
 */
#ifndef ORPSP_VECTOR_ARITHMETIC_H
#define ORPSP_VECTOR_ARITHMETIC_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name Add
 *  pDst[n] = pSrc1[n] + pSrc2[n]; in place pSrcDst[n] = pSrcDst[n] + pSrc[n].
 *  `16s32f` gives the exact sum as a float, `16s32s_I` adds 16-bit elements to 32-bit ones with saturation, `8u16u`
 *  cannot overflow.
 *  @{ */
OrpStatus orpsAdd_16s(const Orp16s* pSrc1, const Orp16s* pSrc2, Orp16s* pDst, int len);
OrpStatus orpsAdd_16s32f(const Orp16s* pSrc1, const Orp16s* pSrc2, Orp32f* pDst, int len);
OrpStatus orpsAdd_16s32s_I(const Orp16s* pSrc, Orp32s* pSrcDst, int len);
OrpStatus orpsAdd_16s_I(const Orp16s* pSrc, Orp16s* pSrcDst, int len);
OrpStatus orpsAdd_16s_ISfs(const Orp16s* pSrc, Orp16s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsAdd_16s_Sfs(const Orp16s* pSrc1, const Orp16s* pSrc2, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsAdd_16sc_ISfs(const Orp16sc* pSrc, Orp16sc* pSrcDst, int len, int scaleFactor);
OrpStatus orpsAdd_16sc_Sfs(const Orp16sc* pSrc1, const Orp16sc* pSrc2, Orp16sc* pDst, int len, int scaleFactor);
OrpStatus orpsAdd_16u(const Orp16u* pSrc1, const Orp16u* pSrc2, Orp16u* pDst, int len);
OrpStatus orpsAdd_16u_ISfs(const Orp16u* pSrc, Orp16u* pSrcDst, int len, int scaleFactor);
OrpStatus orpsAdd_16u_Sfs(const Orp16u* pSrc1, const Orp16u* pSrc2, Orp16u* pDst, int len, int scaleFactor);
OrpStatus orpsAdd_32f(const Orp32f* pSrc1, const Orp32f* pSrc2, Orp32f* pDst, int len);
OrpStatus orpsAdd_32f_I(const Orp32f* pSrc, Orp32f* pSrcDst, int len);
OrpStatus orpsAdd_32fc(const Orp32fc* pSrc1, const Orp32fc* pSrc2, Orp32fc* pDst, int len);
OrpStatus orpsAdd_32fc_I(const Orp32fc* pSrc, Orp32fc* pSrcDst, int len);
OrpStatus orpsAdd_32s_ISfs(const Orp32s* pSrc, Orp32s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsAdd_32s_Sfs(const Orp32s* pSrc1, const Orp32s* pSrc2, Orp32s* pDst, int len, int scaleFactor);
OrpStatus orpsAdd_32sc_ISfs(const Orp32sc* pSrc, Orp32sc* pSrcDst, int len, int scaleFactor);
OrpStatus orpsAdd_32sc_Sfs(const Orp32sc* pSrc1, const Orp32sc* pSrc2, Orp32sc* pDst, int len, int scaleFactor);
OrpStatus orpsAdd_32u(const Orp32u* pSrc1, const Orp32u* pSrc2, Orp32u* pDst, int len);
OrpStatus orpsAdd_64f(const Orp64f* pSrc1, const Orp64f* pSrc2, Orp64f* pDst, int len);
OrpStatus orpsAdd_64f_I(const Orp64f* pSrc, Orp64f* pSrcDst, int len);
OrpStatus orpsAdd_64fc(const Orp64fc* pSrc1, const Orp64fc* pSrc2, Orp64fc* pDst, int len);
OrpStatus orpsAdd_64fc_I(const Orp64fc* pSrc, Orp64fc* pSrcDst, int len);
OrpStatus orpsAdd_64s_Sfs(const Orp64s* pSrc1, const Orp64s* pSrc2, Orp64s* pDst, int len, int scaleFactor);
OrpStatus orpsAdd_8u16u(const Orp8u* pSrc1, const Orp8u* pSrc2, Orp16u* pDst, int len);
OrpStatus orpsAdd_8u_ISfs(const Orp8u* pSrc, Orp8u* pSrcDst, int len, int scaleFactor);
OrpStatus orpsAdd_8u_Sfs(const Orp8u* pSrc1, const Orp8u* pSrc2, Orp8u* pDst, int len, int scaleFactor);
/** @} */

/** @name AddC
 *  pDst[n] = pSrc[n] + val.
 *  @{ */
OrpStatus orpsAddC_16s_I(Orp16s val, Orp16s* pSrcDst, int len);
OrpStatus orpsAddC_16s_ISfs(Orp16s val, Orp16s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsAddC_16s_Sfs(const Orp16s* pSrc, Orp16s val, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsAddC_16sc_ISfs(Orp16sc val, Orp16sc* pSrcDst, int len, int scaleFactor);
OrpStatus orpsAddC_16sc_Sfs(const Orp16sc* pSrc, Orp16sc val, Orp16sc* pDst, int len, int scaleFactor);
OrpStatus orpsAddC_16u_ISfs(Orp16u val, Orp16u* pSrcDst, int len, int scaleFactor);
OrpStatus orpsAddC_16u_Sfs(const Orp16u* pSrc, Orp16u val, Orp16u* pDst, int len, int scaleFactor);
OrpStatus orpsAddC_32f(const Orp32f* pSrc, Orp32f val, Orp32f* pDst, int len);
OrpStatus orpsAddC_32f_I(Orp32f val, Orp32f* pSrcDst, int len);
OrpStatus orpsAddC_32fc(const Orp32fc* pSrc, Orp32fc val, Orp32fc* pDst, int len);
OrpStatus orpsAddC_32fc_I(Orp32fc val, Orp32fc* pSrcDst, int len);
OrpStatus orpsAddC_32s_ISfs(Orp32s val, Orp32s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsAddC_32s_Sfs(const Orp32s* pSrc, Orp32s val, Orp32s* pDst, int len, int scaleFactor);
OrpStatus orpsAddC_32sc_ISfs(Orp32sc val, Orp32sc* pSrcDst, int len, int scaleFactor);
OrpStatus orpsAddC_32sc_Sfs(const Orp32sc* pSrc, Orp32sc val, Orp32sc* pDst, int len, int scaleFactor);
OrpStatus orpsAddC_64f(const Orp64f* pSrc, Orp64f val, Orp64f* pDst, int len);
OrpStatus orpsAddC_64f_I(Orp64f val, Orp64f* pSrcDst, int len);
OrpStatus orpsAddC_64fc(const Orp64fc* pSrc, Orp64fc val, Orp64fc* pDst, int len);
OrpStatus orpsAddC_64fc_I(Orp64fc val, Orp64fc* pSrcDst, int len);
OrpStatus orpsAddC_64s_Sfs(const Orp64s* pSrc, Orp64s val, Orp64s* pDst, int len, int scaleFactor);
OrpStatus orpsAddC_64u_Sfs(const Orp64u* pSrc, Orp64u val, Orp64u* pDst, int len, int scaleFactor);
OrpStatus orpsAddC_8u_ISfs(Orp8u val, Orp8u* pSrcDst, int len, int scaleFactor);
OrpStatus orpsAddC_8u_Sfs(const Orp8u* pSrc, Orp8u val, Orp8u* pDst, int len, int scaleFactor);
/** @} */

/** @name Sub
 *  pDst[n] = pSrc2[n] - pSrc1[n]: the first source is subtracted from the second. In place pSrcDst[n] = pSrcDst[n] -
 *  pSrc[n]. Negative results of unsigned types saturate to 0. `16s32f` gives the exact difference as a float.
 *  @{ */
OrpStatus orpsSub_16s(const Orp16s* pSrc1, const Orp16s* pSrc2, Orp16s* pDst, int len);
OrpStatus orpsSub_16s32f(const Orp16s* pSrc1, const Orp16s* pSrc2, Orp32f* pDst, int len);
OrpStatus orpsSub_16s_I(const Orp16s* pSrc, Orp16s* pSrcDst, int len);
OrpStatus orpsSub_16s_ISfs(const Orp16s* pSrc, Orp16s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSub_16s_Sfs(const Orp16s* pSrc1, const Orp16s* pSrc2, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsSub_16sc_ISfs(const Orp16sc* pSrc, Orp16sc* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSub_16sc_Sfs(const Orp16sc* pSrc1, const Orp16sc* pSrc2, Orp16sc* pDst, int len, int scaleFactor);
OrpStatus orpsSub_16u_ISfs(const Orp16u* pSrc, Orp16u* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSub_16u_Sfs(const Orp16u* pSrc1, const Orp16u* pSrc2, Orp16u* pDst, int len, int scaleFactor);
OrpStatus orpsSub_32f(const Orp32f* pSrc1, const Orp32f* pSrc2, Orp32f* pDst, int len);
OrpStatus orpsSub_32f_I(const Orp32f* pSrc, Orp32f* pSrcDst, int len);
OrpStatus orpsSub_32fc(const Orp32fc* pSrc1, const Orp32fc* pSrc2, Orp32fc* pDst, int len);
OrpStatus orpsSub_32fc_I(const Orp32fc* pSrc, Orp32fc* pSrcDst, int len);
OrpStatus orpsSub_32s_ISfs(const Orp32s* pSrc, Orp32s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSub_32s_Sfs(const Orp32s* pSrc1, const Orp32s* pSrc2, Orp32s* pDst, int len, int scaleFactor);
OrpStatus orpsSub_32sc_ISfs(const Orp32sc* pSrc, Orp32sc* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSub_32sc_Sfs(const Orp32sc* pSrc1, const Orp32sc* pSrc2, Orp32sc* pDst, int len, int scaleFactor);
OrpStatus orpsSub_64f(const Orp64f* pSrc1, const Orp64f* pSrc2, Orp64f* pDst, int len);
OrpStatus orpsSub_64f_I(const Orp64f* pSrc, Orp64f* pSrcDst, int len);
OrpStatus orpsSub_64fc(const Orp64fc* pSrc1, const Orp64fc* pSrc2, Orp64fc* pDst, int len);
OrpStatus orpsSub_64fc_I(const Orp64fc* pSrc, Orp64fc* pSrcDst, int len);
OrpStatus orpsSub_8u_ISfs(const Orp8u* pSrc, Orp8u* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSub_8u_Sfs(const Orp8u* pSrc1, const Orp8u* pSrc2, Orp8u* pDst, int len, int scaleFactor);
/** @} */

/** @name SubC
 *  pDst[n] = pSrc[n] - val.
 *  @{ */
OrpStatus orpsSubC_16s_I(Orp16s val, Orp16s* pSrcDst, int len);
OrpStatus orpsSubC_16s_ISfs(Orp16s val, Orp16s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSubC_16s_Sfs(const Orp16s* pSrc, Orp16s val, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsSubC_16sc_ISfs(Orp16sc val, Orp16sc* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSubC_16sc_Sfs(const Orp16sc* pSrc, Orp16sc val, Orp16sc* pDst, int len, int scaleFactor);
OrpStatus orpsSubC_16u_ISfs(Orp16u val, Orp16u* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSubC_16u_Sfs(const Orp16u* pSrc, Orp16u val, Orp16u* pDst, int len, int scaleFactor);
OrpStatus orpsSubC_32f(const Orp32f* pSrc, Orp32f val, Orp32f* pDst, int len);
OrpStatus orpsSubC_32f_I(Orp32f val, Orp32f* pSrcDst, int len);
OrpStatus orpsSubC_32fc(const Orp32fc* pSrc, Orp32fc val, Orp32fc* pDst, int len);
OrpStatus orpsSubC_32fc_I(Orp32fc val, Orp32fc* pSrcDst, int len);
OrpStatus orpsSubC_32s_ISfs(Orp32s val, Orp32s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSubC_32s_Sfs(const Orp32s* pSrc, Orp32s val, Orp32s* pDst, int len, int scaleFactor);
OrpStatus orpsSubC_32sc_ISfs(Orp32sc val, Orp32sc* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSubC_32sc_Sfs(const Orp32sc* pSrc, Orp32sc val, Orp32sc* pDst, int len, int scaleFactor);
OrpStatus orpsSubC_64f(const Orp64f* pSrc, Orp64f val, Orp64f* pDst, int len);
OrpStatus orpsSubC_64f_I(Orp64f val, Orp64f* pSrcDst, int len);
OrpStatus orpsSubC_64fc(const Orp64fc* pSrc, Orp64fc val, Orp64fc* pDst, int len);
OrpStatus orpsSubC_64fc_I(Orp64fc val, Orp64fc* pSrcDst, int len);
OrpStatus orpsSubC_8u_ISfs(Orp8u val, Orp8u* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSubC_8u_Sfs(const Orp8u* pSrc, Orp8u val, Orp8u* pDst, int len, int scaleFactor);
/** @} */

/** @name SubCRev
 *  pDst[n] = val - pSrc[n].
 *  @{ */
OrpStatus orpsSubCRev_16s_ISfs(Orp16s val, Orp16s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSubCRev_16s_Sfs(const Orp16s* pSrc, Orp16s val, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsSubCRev_16sc_ISfs(Orp16sc val, Orp16sc* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSubCRev_16sc_Sfs(const Orp16sc* pSrc, Orp16sc val, Orp16sc* pDst, int len, int scaleFactor);
OrpStatus orpsSubCRev_16u_ISfs(Orp16u val, Orp16u* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSubCRev_16u_Sfs(const Orp16u* pSrc, Orp16u val, Orp16u* pDst, int len, int scaleFactor);
OrpStatus orpsSubCRev_32f(const Orp32f* pSrc, Orp32f val, Orp32f* pDst, int len);
OrpStatus orpsSubCRev_32f_I(Orp32f val, Orp32f* pSrcDst, int len);
OrpStatus orpsSubCRev_32fc(const Orp32fc* pSrc, Orp32fc val, Orp32fc* pDst, int len);
OrpStatus orpsSubCRev_32fc_I(Orp32fc val, Orp32fc* pSrcDst, int len);
OrpStatus orpsSubCRev_32s_ISfs(Orp32s val, Orp32s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSubCRev_32s_Sfs(const Orp32s* pSrc, Orp32s val, Orp32s* pDst, int len, int scaleFactor);
OrpStatus orpsSubCRev_32sc_ISfs(Orp32sc val, Orp32sc* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSubCRev_32sc_Sfs(const Orp32sc* pSrc, Orp32sc val, Orp32sc* pDst, int len, int scaleFactor);
OrpStatus orpsSubCRev_64f(const Orp64f* pSrc, Orp64f val, Orp64f* pDst, int len);
OrpStatus orpsSubCRev_64f_I(Orp64f val, Orp64f* pSrcDst, int len);
OrpStatus orpsSubCRev_64fc(const Orp64fc* pSrc, Orp64fc val, Orp64fc* pDst, int len);
OrpStatus orpsSubCRev_64fc_I(Orp64fc val, Orp64fc* pSrcDst, int len);
OrpStatus orpsSubCRev_8u_ISfs(Orp8u val, Orp8u* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSubCRev_8u_Sfs(const Orp8u* pSrc, Orp8u val, Orp8u* pDst, int len, int scaleFactor);
/** @} */

/** @name Mul
 *  pDst[n] = pSrc1[n] * pSrc2[n]; complex (a + bi)(c + di) = (ac - bd) + (ad + bc)i, in floating point by exactly these
 *  four products, one difference and one sum: an infinite part makes NaN where the formula does, nothing is recovered.
 *  `32f32fc` and `32s32sc` multiply the complex second source by the real first one. `16s32f` is the exact product
 *  rounded to float. `16u16s` takes unsigned sources and saturates to the signed type. `Low_32s` has the results of
 *  `Mul_32s_Sfs` for every input; its name is kept for callers whose products fit 32 bits.
 *  @{ */
OrpStatus orpsMul_16s(const Orp16s* pSrc1, const Orp16s* pSrc2, Orp16s* pDst, int len);
OrpStatus orpsMul_16s32f(const Orp16s* pSrc1, const Orp16s* pSrc2, Orp32f* pDst, int len);
OrpStatus orpsMul_16s32s_Sfs(const Orp16s* pSrc1, const Orp16s* pSrc2, Orp32s* pDst, int len, int scaleFactor);
OrpStatus orpsMul_16s_I(const Orp16s* pSrc, Orp16s* pSrcDst, int len);
OrpStatus orpsMul_16s_ISfs(const Orp16s* pSrc, Orp16s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsMul_16s_Sfs(const Orp16s* pSrc1, const Orp16s* pSrc2, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsMul_16sc_ISfs(const Orp16sc* pSrc, Orp16sc* pSrcDst, int len, int scaleFactor);
OrpStatus orpsMul_16sc_Sfs(const Orp16sc* pSrc1, const Orp16sc* pSrc2, Orp16sc* pDst, int len, int scaleFactor);
OrpStatus orpsMul_16u16s_Sfs(const Orp16u* pSrc1, const Orp16u* pSrc2, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsMul_16u_ISfs(const Orp16u* pSrc, Orp16u* pSrcDst, int len, int scaleFactor);
OrpStatus orpsMul_16u_Sfs(const Orp16u* pSrc1, const Orp16u* pSrc2, Orp16u* pDst, int len, int scaleFactor);
OrpStatus orpsMul_32f(const Orp32f* pSrc1, const Orp32f* pSrc2, Orp32f* pDst, int len);
OrpStatus orpsMul_32f32fc(const Orp32f* pSrc1, const Orp32fc* pSrc2, Orp32fc* pDst, int len);
OrpStatus orpsMul_32f32fc_I(const Orp32f* pSrc, Orp32fc* pSrcDst, int len);
OrpStatus orpsMul_32f_I(const Orp32f* pSrc, Orp32f* pSrcDst, int len);
OrpStatus orpsMul_32fc(const Orp32fc* pSrc1, const Orp32fc* pSrc2, Orp32fc* pDst, int len);
OrpStatus orpsMul_32fc_I(const Orp32fc* pSrc, Orp32fc* pSrcDst, int len);
OrpStatus orpsMul_32s32sc_ISfs(const Orp32s* pSrc, Orp32sc* pSrcDst, int len, int scaleFactor);
OrpStatus orpsMul_32s32sc_Sfs(const Orp32s* pSrc1, const Orp32sc* pSrc2, Orp32sc* pDst, int len, int scaleFactor);
OrpStatus orpsMul_32s_ISfs(const Orp32s* pSrc, Orp32s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsMul_32s_Sfs(const Orp32s* pSrc1, const Orp32s* pSrc2, Orp32s* pDst, int len, int scaleFactor);
OrpStatus orpsMul_32sc_ISfs(const Orp32sc* pSrc, Orp32sc* pSrcDst, int len, int scaleFactor);
OrpStatus orpsMul_32sc_Sfs(const Orp32sc* pSrc1, const Orp32sc* pSrc2, Orp32sc* pDst, int len, int scaleFactor);
OrpStatus orpsMul_64f(const Orp64f* pSrc1, const Orp64f* pSrc2, Orp64f* pDst, int len);
OrpStatus orpsMul_64f_I(const Orp64f* pSrc, Orp64f* pSrcDst, int len);
OrpStatus orpsMul_64fc(const Orp64fc* pSrc1, const Orp64fc* pSrc2, Orp64fc* pDst, int len);
OrpStatus orpsMul_64fc_I(const Orp64fc* pSrc, Orp64fc* pSrcDst, int len);
OrpStatus orpsMul_8u16u(const Orp8u* pSrc1, const Orp8u* pSrc2, Orp16u* pDst, int len);
OrpStatus orpsMul_8u_ISfs(const Orp8u* pSrc, Orp8u* pSrcDst, int len, int scaleFactor);
OrpStatus orpsMul_8u_Sfs(const Orp8u* pSrc1, const Orp8u* pSrc2, Orp8u* pDst, int len, int scaleFactor);
OrpStatus orpsMul_Low_32s_Sfs(const Orp32s* pSrc1, const Orp32s* pSrc2, Orp32s* pDst, int len, int scaleFactor);
/** @} */

/** @name MulC
 *  pDst[n] = pSrc[n] * val; complex as in Mul. `32f16s_Sfs` rounds the exact product of the two floats once, by the
 *  scale-factor rule; `Low_32f16s` first rounds the product to a float and then that to the nearest integer, ties to
 *  even. `64f64s` multiplies 64-bit integers by a double and rounds the exact product once by the scale-factor rule.
 *  In these three a NaN product (0 * infinity included) gives 0 and an infinite one saturates.
 *  @{ */
OrpStatus orpsMulC_16s_I(Orp16s val, Orp16s* pSrcDst, int len);
OrpStatus orpsMulC_16s_ISfs(Orp16s val, Orp16s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsMulC_16s_Sfs(const Orp16s* pSrc, Orp16s val, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsMulC_16sc_ISfs(Orp16sc val, Orp16sc* pSrcDst, int len, int scaleFactor);
OrpStatus orpsMulC_16sc_Sfs(const Orp16sc* pSrc, Orp16sc val, Orp16sc* pDst, int len, int scaleFactor);
OrpStatus orpsMulC_16u_ISfs(Orp16u val, Orp16u* pSrcDst, int len, int scaleFactor);
OrpStatus orpsMulC_16u_Sfs(const Orp16u* pSrc, Orp16u val, Orp16u* pDst, int len, int scaleFactor);
OrpStatus orpsMulC_32f(const Orp32f* pSrc, Orp32f val, Orp32f* pDst, int len);
OrpStatus orpsMulC_32f16s_Sfs(const Orp32f* pSrc, Orp32f val, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsMulC_32f_I(Orp32f val, Orp32f* pSrcDst, int len);
OrpStatus orpsMulC_32fc(const Orp32fc* pSrc, Orp32fc val, Orp32fc* pDst, int len);
OrpStatus orpsMulC_32fc_I(Orp32fc val, Orp32fc* pSrcDst, int len);
OrpStatus orpsMulC_32s_ISfs(Orp32s val, Orp32s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsMulC_32s_Sfs(const Orp32s* pSrc, Orp32s val, Orp32s* pDst, int len, int scaleFactor);
OrpStatus orpsMulC_32sc_ISfs(Orp32sc val, Orp32sc* pSrcDst, int len, int scaleFactor);
OrpStatus orpsMulC_32sc_Sfs(const Orp32sc* pSrc, Orp32sc val, Orp32sc* pDst, int len, int scaleFactor);
OrpStatus orpsMulC_64f(const Orp64f* pSrc, Orp64f val, Orp64f* pDst, int len);
OrpStatus orpsMulC_64f64s_ISfs(Orp64f val, Orp64s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsMulC_64f_I(Orp64f val, Orp64f* pSrcDst, int len);
OrpStatus orpsMulC_64fc(const Orp64fc* pSrc, Orp64fc val, Orp64fc* pDst, int len);
OrpStatus orpsMulC_64fc_I(Orp64fc val, Orp64fc* pSrcDst, int len);
OrpStatus orpsMulC_64s_ISfs(Orp64s val, Orp64s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsMulC_8u_ISfs(Orp8u val, Orp8u* pSrcDst, int len, int scaleFactor);
OrpStatus orpsMulC_8u_Sfs(const Orp8u* pSrc, Orp8u val, Orp8u* pDst, int len, int scaleFactor);
OrpStatus orpsMulC_Low_32f16s(const Orp32f* pSrc, Orp32f val, Orp16s* pDst, int len);
/** @} */

/** @name AddProduct
 *  pSrcDst[n] = pSrcDst[n] + pSrc1[n] * pSrc2[n], the scale factor applying to the whole exact sum. In floating point
 *  the product is rounded before the sum. `16s32s` takes 16-bit sources and accumulates in 32 bits.
 *  @{ */
OrpStatus orpsAddProduct_16s32s_Sfs(const Orp16s* pSrc1, const Orp16s* pSrc2, Orp32s* pSrcDst, int len,
                                    int scaleFactor);
OrpStatus orpsAddProduct_16s_Sfs(const Orp16s* pSrc1, const Orp16s* pSrc2, Orp16s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsAddProduct_32f(const Orp32f* pSrc1, const Orp32f* pSrc2, Orp32f* pSrcDst, int len);
OrpStatus orpsAddProduct_32fc(const Orp32fc* pSrc1, const Orp32fc* pSrc2, Orp32fc* pSrcDst, int len);
OrpStatus orpsAddProduct_32s_Sfs(const Orp32s* pSrc1, const Orp32s* pSrc2, Orp32s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsAddProduct_64f(const Orp64f* pSrc1, const Orp64f* pSrc2, Orp64f* pSrcDst, int len);
OrpStatus orpsAddProduct_64fc(const Orp64fc* pSrc1, const Orp64fc* pSrc2, Orp64fc* pSrcDst, int len);
/** @} */

/** @name AddProductC
 *  pSrcDst[n] = pSrcDst[n] + pSrc[n] * val.
 *  @{ */
OrpStatus orpsAddProductC_32f(const Orp32f* pSrc, Orp32f val, Orp32f* pSrcDst, int len);
/** @} */

/** @name Abs
 *  pDst[n] = |pSrc[n]|. The most negative integer saturates to the most positive one; floating point clears the sign
 *  bit (of a NaN as well).
 *  @{ */
OrpStatus orpsAbs_16s(const Orp16s* pSrc, Orp16s* pDst, int len);
OrpStatus orpsAbs_16s_I(Orp16s* pSrcDst, int len);
OrpStatus orpsAbs_32f(const Orp32f* pSrc, Orp32f* pDst, int len);
OrpStatus orpsAbs_32f_I(Orp32f* pSrcDst, int len);
OrpStatus orpsAbs_32s(const Orp32s* pSrc, Orp32s* pDst, int len);
OrpStatus orpsAbs_32s_I(Orp32s* pSrcDst, int len);
OrpStatus orpsAbs_64f(const Orp64f* pSrc, Orp64f* pDst, int len);
OrpStatus orpsAbs_64f_I(Orp64f* pSrcDst, int len);
/** @} */

/** @name Sqr
 *  pDst[n] = pSrc[n] * pSrc[n]; complex (a + bi)^2 = (a*a - b*b) + (a*b + a*b)i, rounded as in Mul.
 *  @{ */
OrpStatus orpsSqr_16s_ISfs(Orp16s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSqr_16s_Sfs(const Orp16s* pSrc, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsSqr_16sc_ISfs(Orp16sc* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSqr_16sc_Sfs(const Orp16sc* pSrc, Orp16sc* pDst, int len, int scaleFactor);
OrpStatus orpsSqr_16u_ISfs(Orp16u* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSqr_16u_Sfs(const Orp16u* pSrc, Orp16u* pDst, int len, int scaleFactor);
OrpStatus orpsSqr_32f(const Orp32f* pSrc, Orp32f* pDst, int len);
OrpStatus orpsSqr_32f_I(Orp32f* pSrcDst, int len);
OrpStatus orpsSqr_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len);
OrpStatus orpsSqr_32fc_I(Orp32fc* pSrcDst, int len);
OrpStatus orpsSqr_64f(const Orp64f* pSrc, Orp64f* pDst, int len);
OrpStatus orpsSqr_64f_I(Orp64f* pSrcDst, int len);
OrpStatus orpsSqr_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len);
OrpStatus orpsSqr_64fc_I(Orp64fc* pSrcDst, int len);
OrpStatus orpsSqr_8u_ISfs(Orp8u* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSqr_8u_Sfs(const Orp8u* pSrc, Orp8u* pDst, int len, int scaleFactor);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
