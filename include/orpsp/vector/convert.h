/** @file
 *  Conversion between element types.
 */
#ifndef ORPSP_VECTOR_CONVERT_H
#define ORPSP_VECTOR_CONVERT_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name Convert
 *  TODO
 *  @{ */
OrpStatus orpsConvert_16f16s_Sfs(const Orp16f* pSrc, Orp16s* pDst, int len, int rndMode, int scaleFactor);
OrpStatus orpsConvert_16f32f(const Orp16f* pSrc, Orp32f* pDst, int len);
OrpStatus orpsConvert_16s16f(const Orp16s* pSrc, Orp16f* pDst, int len, int rndMode);
OrpStatus orpsConvert_16s32f(const Orp16s* pSrc, Orp32f* pDst, int len);
OrpStatus orpsConvert_16s32f_Sfs(const Orp16s* pSrc, Orp32f* pDst, int len, int scaleFactor);
OrpStatus orpsConvert_16s32s(const Orp16s* pSrc, Orp32s* pDst, int len);
OrpStatus orpsConvert_16s64f_Sfs(const Orp16s* pSrc, Orp64f* pDst, int len, int scaleFactor);
OrpStatus orpsConvert_16s8s_Sfs(const Orp16s* pSrc, Orp8s* pDst, int len, int scaleFactor);
OrpStatus orpsConvert_16u32f(const Orp16u* pSrc, Orp32f* pDst, int len);
OrpStatus orpsConvert_24s32f(const Orp24s* pSrc, Orp32f* pDst, int len);
OrpStatus orpsConvert_24s32s(const Orp24s* pSrc, Orp32s* pDst, int len);
OrpStatus orpsConvert_24u32f(const Orp24u* pSrc, Orp32f* pDst, int len);
OrpStatus orpsConvert_24u32u(const Orp24u* pSrc, Orp32u* pDst, int len);
OrpStatus orpsConvert_32f16f(const Orp32f* pSrc, Orp16f* pDst, int len, int rndMode);
OrpStatus orpsConvert_32f16s_Sfs(const Orp32f* pSrc, Orp16s* pDst, int len, int rndMode, int scaleFactor);
OrpStatus orpsConvert_32f16u_Sfs(const Orp32f* pSrc, Orp16u* pDst, int len, int rndMode, int scaleFactor);
OrpStatus orpsConvert_32f24s_Sfs(const Orp32f* pSrc, Orp24s* pDst, int len, int rndMode, int scaleFactor);
OrpStatus orpsConvert_32f24u_Sfs(const Orp32f* pSrc, Orp24u* pDst, int len, int rndMode, int scaleFactor);
OrpStatus orpsConvert_32f32s_Sfs(const Orp32f* pSrc, Orp32s* pDst, int len, int rndMode, int scaleFactor);
OrpStatus orpsConvert_32f64f(const Orp32f* pSrc, Orp64f* pDst, int len);
OrpStatus orpsConvert_32f8s_Sfs(const Orp32f* pSrc, Orp8s* pDst, int len, int rndMode, int scaleFactor);
OrpStatus orpsConvert_32f8u_Sfs(const Orp32f* pSrc, Orp8u* pDst, int len, int rndMode, int scaleFactor);
OrpStatus orpsConvert_32s16s(const Orp32s* pSrc, Orp16s* pDst, int len);
OrpStatus orpsConvert_32s16s_Sfs(const Orp32s* pSrc, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsConvert_32s24s_Sfs(const Orp32s* pSrc, Orp24s* pDst, int len, int scaleFactor);
OrpStatus orpsConvert_32s32f(const Orp32s* pSrc, Orp32f* pDst, int len);
OrpStatus orpsConvert_32s32f_Sfs(const Orp32s* pSrc, Orp32f* pDst, int len, int scaleFactor);
OrpStatus orpsConvert_32s64f(const Orp32s* pSrc, Orp64f* pDst, int len);
OrpStatus orpsConvert_32s64f_Sfs(const Orp32s* pSrc, Orp64f* pDst, int len, int scaleFactor);
OrpStatus orpsConvert_32u24u_Sfs(const Orp32u* pSrc, Orp24u* pDst, int len, int scaleFactor);
OrpStatus orpsConvert_64f16s_Sfs(const Orp64f* pSrc, Orp16s* pDst, int len, int rndMode, int scaleFactor);
OrpStatus orpsConvert_64f32f(const Orp64f* pSrc, Orp32f* pDst, int len);
OrpStatus orpsConvert_64f32s_Sfs(const Orp64f* pSrc, Orp32s* pDst, int len, int rndMode, int scaleFactor);
OrpStatus orpsConvert_64f64s_Sfs(const Orp64f* pSrc, Orp64s* pDst, int len, int rndMode, int scaleFactor);
OrpStatus orpsConvert_64s32s_Sfs(const Orp64s* pSrc, Orp32s* pDst, int len, int scaleFactor);
OrpStatus orpsConvert_64s64f(const Orp64s* pSrc, Orp64f* pDst, int len);
OrpStatus orpsConvert_8s16s(const Orp8s* pSrc, Orp16s* pDst, int len);
OrpStatus orpsConvert_8s32f(const Orp8s* pSrc, Orp32f* pDst, int len);
OrpStatus orpsConvert_8u32f(const Orp8u* pSrc, Orp32f* pDst, int len);
/** @} */

/** @name Join and split
 *  TODO
 *  @{ */
OrpStatus orpsJoinScaled_32f16s_D2L(const Orp32f* const pSrc[2], Orp16s* pDst, int len);
OrpStatus orpsJoinScaled_32f24s_D2L(const Orp32f* const pSrc[2], Orp24s* pDst, int len);
OrpStatus orpsSplitScaled_16s32f_D2L(const Orp16s* pSrc, Orp32f* const pDst[2], int len);
OrpStatus orpsSplitScaled_24s32f_D2L(const Orp24s* pSrc, Orp32f* const pDst[2], int len);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
