/** @file
 *  Elementary functions: roots, exponentials, logarithms, arc tangent.
 */
#ifndef ORPSP_VECTOR_ELEMENTARY_H
#define ORPSP_VECTOR_ELEMENTARY_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name Sqrt
 *  TODO
 *  @{ */
OrpStatus orpsSqrt_8u_Sfs(const Orp8u* pSrc, Orp8u* pDst, int len, int scaleFactor);
OrpStatus orpsSqrt_8u_ISfs(Orp8u* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSqrt_16u_Sfs(const Orp16u* pSrc, Orp16u* pDst, int len, int scaleFactor);
OrpStatus orpsSqrt_16u_ISfs(Orp16u* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSqrt_16s_Sfs(const Orp16s* pSrc, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsSqrt_16s_ISfs(Orp16s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSqrt_16sc_Sfs(const Orp16sc* pSrc, Orp16sc* pDst, int len, int scaleFactor);
OrpStatus orpsSqrt_16sc_ISfs(Orp16sc* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSqrt_64s_Sfs(const Orp64s* pSrc, Orp64s* pDst, int len, int scaleFactor);
OrpStatus orpsSqrt_64s_ISfs(Orp64s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsSqrt_32f(const Orp32f* pSrc, Orp32f* pDst, int len);
OrpStatus orpsSqrt_32f_I(Orp32f* pSrcDst, int len);
OrpStatus orpsSqrt_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len);
OrpStatus orpsSqrt_32fc_I(Orp32fc* pSrcDst, int len);
OrpStatus orpsSqrt_64f(const Orp64f* pSrc, Orp64f* pDst, int len);
OrpStatus orpsSqrt_64f_I(Orp64f* pSrcDst, int len);
OrpStatus orpsSqrt_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len);
OrpStatus orpsSqrt_64fc_I(Orp64fc* pSrcDst, int len);
OrpStatus orpsSqrt_32s16s_Sfs(const Orp32s* pSrc, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsSqrt_64s16s_Sfs(const Orp64s* pSrc, Orp16s* pDst, int len, int scaleFactor);
/** @} */

/** @name Exp
 *  TODO
 *  @{ */
OrpStatus orpsExp_32f(const Orp32f* pSrc, Orp32f* pDst, int len);
OrpStatus orpsExp_32f_I(Orp32f* pSrcDst, int len);
OrpStatus orpsExp_64f(const Orp64f* pSrc, Orp64f* pDst, int len);
OrpStatus orpsExp_64f_I(Orp64f* pSrcDst, int len);
OrpStatus orpsExp_16s_Sfs(const Orp16s* pSrc, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsExp_16s_ISfs(Orp16s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsExp_32s_Sfs(const Orp32s* pSrc, Orp32s* pDst, int len, int scaleFactor);
OrpStatus orpsExp_32s_ISfs(Orp32s* pSrcDst, int len, int scaleFactor);
/** @} */

/** @name Ln
 *  TODO
 *  @{ */
OrpStatus orpsLn_32f(const Orp32f* pSrc, Orp32f* pDst, int len);
OrpStatus orpsLn_32f_I(Orp32f* pSrcDst, int len);
OrpStatus orpsLn_64f(const Orp64f* pSrc, Orp64f* pDst, int len);
OrpStatus orpsLn_64f_I(Orp64f* pSrcDst, int len);
OrpStatus orpsLn_16s_Sfs(const Orp16s* pSrc, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsLn_16s_ISfs(Orp16s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsLn_32s_Sfs(const Orp32s* pSrc, Orp32s* pDst, int len, int scaleFactor);
OrpStatus orpsLn_32s_ISfs(Orp32s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsLn_64f32f(const Orp64f* pSrc, Orp32f* pDst, int len);
OrpStatus orpsLn_32s16s_Sfs(const Orp32s* pSrc, Orp16s* pDst, int len, int scaleFactor);
/** @} */

/** @name 10Log10
 *  TODO
 *  @{ */
OrpStatus orps10Log10_32s_Sfs(const Orp32s* pSrc, Orp32s* pDst, int len, int scaleFactor);
OrpStatus orps10Log10_32s_ISfs(Orp32s* pSrcDst, int len, int scaleFactor);
/** @} */

/** @name Cubrt
 *  TODO
 *  @{ */
OrpStatus orpsCubrt_32f(const Orp32f* pSrc, Orp32f* pDst, int len);
OrpStatus orpsCubrt_32s16s_Sfs(const Orp32s* pSrc, Orp16s* pDst, int len, int scaleFactor);
/** @} */

/** @name Arctan
 *  TODO
 *  @{ */
OrpStatus orpsArctan_32f(const Orp32f* pSrc, Orp32f* pDst, int len);
OrpStatus orpsArctan_32f_I(Orp32f* pSrcDst, int len);
OrpStatus orpsArctan_64f(const Orp64f* pSrc, Orp64f* pDst, int len);
OrpStatus orpsArctan_64f_I(Orp64f* pSrcDst, int len);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
