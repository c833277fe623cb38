/** @file
 *  Bitwise logic and shifts by a constant.
 *
 *  Statuses: `StsOk`, `StsNullPtr`, `StsBadSize`, and `StsShiftErr` for negative shift counts. Sources and destination
 *  may be the same array.
 */
#ifndef ORPSP_VECTOR_LOGIC_H
#define ORPSP_VECTOR_LOGIC_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name And, Or, Xor, Not
 *  pDst[n] = pSrc1[n] OP pSrc2[n], in place pSrcDst[n] = pSrcDst[n] OP pSrc[n]; with a constant pDst[n] = pSrc[n] OP
 *  val; Not: pDst[n] = ~pSrc[n].
 *  @{ */
OrpStatus orpsAnd_8u(const Orp8u* pSrc1, const Orp8u* pSrc2, Orp8u* pDst, int len);
OrpStatus orpsAnd_8u_I(const Orp8u* pSrc, Orp8u* pSrcDst, int len);
OrpStatus orpsOr_8u(const Orp8u* pSrc1, const Orp8u* pSrc2, Orp8u* pDst, int len);
OrpStatus orpsOr_8u_I(const Orp8u* pSrc, Orp8u* pSrcDst, int len);
OrpStatus orpsXor_8u(const Orp8u* pSrc1, const Orp8u* pSrc2, Orp8u* pDst, int len);
OrpStatus orpsXor_8u_I(const Orp8u* pSrc, Orp8u* pSrcDst, int len);
OrpStatus orpsNot_8u(const Orp8u* pSrc, Orp8u* pDst, int len);
OrpStatus orpsNot_8u_I(Orp8u* pSrcDst, int len);
OrpStatus orpsAndC_8u(const Orp8u* pSrc, Orp8u val, Orp8u* pDst, int len);
OrpStatus orpsAndC_8u_I(Orp8u val, Orp8u* pSrcDst, int len);
OrpStatus orpsOrC_8u(const Orp8u* pSrc, Orp8u val, Orp8u* pDst, int len);
OrpStatus orpsOrC_8u_I(Orp8u val, Orp8u* pSrcDst, int len);
OrpStatus orpsXorC_8u(const Orp8u* pSrc, Orp8u val, Orp8u* pDst, int len);
OrpStatus orpsXorC_8u_I(Orp8u val, Orp8u* pSrcDst, int len);
OrpStatus orpsAnd_16u(const Orp16u* pSrc1, const Orp16u* pSrc2, Orp16u* pDst, int len);
OrpStatus orpsAnd_16u_I(const Orp16u* pSrc, Orp16u* pSrcDst, int len);
OrpStatus orpsOr_16u(const Orp16u* pSrc1, const Orp16u* pSrc2, Orp16u* pDst, int len);
OrpStatus orpsOr_16u_I(const Orp16u* pSrc, Orp16u* pSrcDst, int len);
OrpStatus orpsXor_16u(const Orp16u* pSrc1, const Orp16u* pSrc2, Orp16u* pDst, int len);
OrpStatus orpsXor_16u_I(const Orp16u* pSrc, Orp16u* pSrcDst, int len);
OrpStatus orpsNot_16u(const Orp16u* pSrc, Orp16u* pDst, int len);
OrpStatus orpsNot_16u_I(Orp16u* pSrcDst, int len);
OrpStatus orpsAndC_16u(const Orp16u* pSrc, Orp16u val, Orp16u* pDst, int len);
OrpStatus orpsAndC_16u_I(Orp16u val, Orp16u* pSrcDst, int len);
OrpStatus orpsOrC_16u(const Orp16u* pSrc, Orp16u val, Orp16u* pDst, int len);
OrpStatus orpsOrC_16u_I(Orp16u val, Orp16u* pSrcDst, int len);
OrpStatus orpsXorC_16u(const Orp16u* pSrc, Orp16u val, Orp16u* pDst, int len);
OrpStatus orpsXorC_16u_I(Orp16u val, Orp16u* pSrcDst, int len);
OrpStatus orpsAnd_32u(const Orp32u* pSrc1, const Orp32u* pSrc2, Orp32u* pDst, int len);
OrpStatus orpsAnd_32u_I(const Orp32u* pSrc, Orp32u* pSrcDst, int len);
OrpStatus orpsOr_32u(const Orp32u* pSrc1, const Orp32u* pSrc2, Orp32u* pDst, int len);
OrpStatus orpsOr_32u_I(const Orp32u* pSrc, Orp32u* pSrcDst, int len);
OrpStatus orpsXor_32u(const Orp32u* pSrc1, const Orp32u* pSrc2, Orp32u* pDst, int len);
OrpStatus orpsXor_32u_I(const Orp32u* pSrc, Orp32u* pSrcDst, int len);
OrpStatus orpsNot_32u(const Orp32u* pSrc, Orp32u* pDst, int len);
OrpStatus orpsNot_32u_I(Orp32u* pSrcDst, int len);
OrpStatus orpsAndC_32u(const Orp32u* pSrc, Orp32u val, Orp32u* pDst, int len);
OrpStatus orpsAndC_32u_I(Orp32u val, Orp32u* pSrcDst, int len);
OrpStatus orpsOrC_32u(const Orp32u* pSrc, Orp32u val, Orp32u* pDst, int len);
OrpStatus orpsOrC_32u_I(Orp32u val, Orp32u* pSrcDst, int len);
OrpStatus orpsXorC_32u(const Orp32u* pSrc, Orp32u val, Orp32u* pDst, int len);
OrpStatus orpsXorC_32u_I(Orp32u val, Orp32u* pSrcDst, int len);
/** @} */

/** @name LShiftC
 *  pDst[n] = pSrc[n] << val: bits shifted out are lost, nothing saturates. From the width of the element on every
 *  element becomes 0.
 *  @{ */
OrpStatus orpsLShiftC_8u(const Orp8u* pSrc, int val, Orp8u* pDst, int len);
OrpStatus orpsLShiftC_8u_I(int val, Orp8u* pSrcDst, int len);
OrpStatus orpsLShiftC_16s(const Orp16s* pSrc, int val, Orp16s* pDst, int len);
OrpStatus orpsLShiftC_16s_I(int val, Orp16s* pSrcDst, int len);
OrpStatus orpsLShiftC_16u(const Orp16u* pSrc, int val, Orp16u* pDst, int len);
OrpStatus orpsLShiftC_16u_I(int val, Orp16u* pSrcDst, int len);
OrpStatus orpsLShiftC_32s(const Orp32s* pSrc, int val, Orp32s* pDst, int len);
OrpStatus orpsLShiftC_32s_I(int val, Orp32s* pSrcDst, int len);
/** @} */

/** @name RShiftC
 *  pDst[n] = pSrc[n] >> val, rounding down: signed types are filled with their sign, unsigned ones with zeros. From the
 *  width of the element on every element becomes its sign (-1 or 0), or 0 in unsigned types.
 *  @{ */
OrpStatus orpsRShiftC_8u(const Orp8u* pSrc, int val, Orp8u* pDst, int len);
OrpStatus orpsRShiftC_8u_I(int val, Orp8u* pSrcDst, int len);
OrpStatus orpsRShiftC_16s(const Orp16s* pSrc, int val, Orp16s* pDst, int len);
OrpStatus orpsRShiftC_16s_I(int val, Orp16s* pSrcDst, int len);
OrpStatus orpsRShiftC_16u(const Orp16u* pSrc, int val, Orp16u* pDst, int len);
OrpStatus orpsRShiftC_16u_I(int val, Orp16u* pSrcDst, int len);
OrpStatus orpsRShiftC_32s(const Orp32s* pSrc, int val, Orp32s* pDst, int len);
OrpStatus orpsRShiftC_32s_I(int val, Orp32s* pSrcDst, int len);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
