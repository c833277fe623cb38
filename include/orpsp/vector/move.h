/** @file
 *  Filling, copying, reversing and byte order.
 *
 *  Statuses: `StsOk`, `StsNullPtr`, `StsBadSize`. Elements are moved as bits: a NaN keeps its payload.
 */
#ifndef ORPSP_VECTOR_MOVE_H
#define ORPSP_VECTOR_MOVE_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name Zero
 *  pDst[n] = 0 (all bytes zero).
 *  @{ */
OrpStatus orpsZero_8u(Orp8u* pDst, int len);
OrpStatus orpsZero_16s(Orp16s* pDst, int len);
OrpStatus orpsZero_16sc(Orp16sc* pDst, int len);
OrpStatus orpsZero_32s(Orp32s* pDst, int len);
OrpStatus orpsZero_32sc(Orp32sc* pDst, int len);
OrpStatus orpsZero_32f(Orp32f* pDst, int len);
OrpStatus orpsZero_32fc(Orp32fc* pDst, int len);
OrpStatus orpsZero_64s(Orp64s* pDst, int len);
OrpStatus orpsZero_64sc(Orp64sc* pDst, int len);
OrpStatus orpsZero_64f(Orp64f* pDst, int len);
OrpStatus orpsZero_64fc(Orp64fc* pDst, int len);
/** @} */

/** @name Set
 *  pDst[n] = val.
 *  @{ */
OrpStatus orpsSet_8u(Orp8u val, Orp8u* pDst, int len);
OrpStatus orpsSet_16s(Orp16s val, Orp16s* pDst, int len);
OrpStatus orpsSet_16sc(Orp16sc val, Orp16sc* pDst, int len);
OrpStatus orpsSet_32s(Orp32s val, Orp32s* pDst, int len);
OrpStatus orpsSet_32sc(Orp32sc val, Orp32sc* pDst, int len);
OrpStatus orpsSet_32f(Orp32f val, Orp32f* pDst, int len);
OrpStatus orpsSet_32fc(Orp32fc val, Orp32fc* pDst, int len);
OrpStatus orpsSet_64s(Orp64s val, Orp64s* pDst, int len);
OrpStatus orpsSet_64sc(Orp64sc val, Orp64sc* pDst, int len);
OrpStatus orpsSet_64f(Orp64f val, Orp64f* pDst, int len);
OrpStatus orpsSet_64fc(Orp64fc val, Orp64fc* pDst, int len);
/** @} */

/** @name Copy
 *  pDst[n] = pSrc[n]. The arrays must not overlap (unless they are the same). Large vectors are written past the
 *  caches.
 *  @{ */
OrpStatus orpsCopy_8u(const Orp8u* pSrc, Orp8u* pDst, int len);
OrpStatus orpsCopy_16s(const Orp16s* pSrc, Orp16s* pDst, int len);
OrpStatus orpsCopy_16sc(const Orp16sc* pSrc, Orp16sc* pDst, int len);
OrpStatus orpsCopy_32s(const Orp32s* pSrc, Orp32s* pDst, int len);
OrpStatus orpsCopy_32sc(const Orp32sc* pSrc, Orp32sc* pDst, int len);
OrpStatus orpsCopy_32f(const Orp32f* pSrc, Orp32f* pDst, int len);
OrpStatus orpsCopy_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len);
OrpStatus orpsCopy_64s(const Orp64s* pSrc, Orp64s* pDst, int len);
OrpStatus orpsCopy_64sc(const Orp64sc* pSrc, Orp64sc* pDst, int len);
OrpStatus orpsCopy_64f(const Orp64f* pSrc, Orp64f* pDst, int len);
OrpStatus orpsCopy_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len);
/** @} */

/** @name Move
 *  pDst[n] = pSrc[n], as if through a temporary array: correct for every overlap.
 *  @{ */
OrpStatus orpsMove_8u(const Orp8u* pSrc, Orp8u* pDst, int len);
OrpStatus orpsMove_16s(const Orp16s* pSrc, Orp16s* pDst, int len);
OrpStatus orpsMove_16sc(const Orp16sc* pSrc, Orp16sc* pDst, int len);
OrpStatus orpsMove_32s(const Orp32s* pSrc, Orp32s* pDst, int len);
OrpStatus orpsMove_32sc(const Orp32sc* pSrc, Orp32sc* pDst, int len);
OrpStatus orpsMove_32f(const Orp32f* pSrc, Orp32f* pDst, int len);
OrpStatus orpsMove_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len);
OrpStatus orpsMove_64s(const Orp64s* pSrc, Orp64s* pDst, int len);
OrpStatus orpsMove_64sc(const Orp64sc* pSrc, Orp64sc* pDst, int len);
OrpStatus orpsMove_64f(const Orp64f* pSrc, Orp64f* pDst, int len);
OrpStatus orpsMove_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len);
/** @} */

/** @name Flip
 *  pDst[n] = pSrc[len - 1 - n]; the in-place form reverses the vector. Otherwise pSrc and pDst must not overlap, except
 *  that they may be the same array.
 *  @{ */
OrpStatus orpsFlip_8u(const Orp8u* pSrc, Orp8u* pDst, int len);
OrpStatus orpsFlip_8u_I(Orp8u* pSrcDst, int len);
OrpStatus orpsFlip_16u(const Orp16u* pSrc, Orp16u* pDst, int len);
OrpStatus orpsFlip_16u_I(Orp16u* pSrcDst, int len);
OrpStatus orpsFlip_32f(const Orp32f* pSrc, Orp32f* pDst, int len);
OrpStatus orpsFlip_32f_I(Orp32f* pSrcDst, int len);
OrpStatus orpsFlip_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len);
OrpStatus orpsFlip_32fc_I(Orp32fc* pSrcDst, int len);
OrpStatus orpsFlip_64f(const Orp64f* pSrc, Orp64f* pDst, int len);
OrpStatus orpsFlip_64f_I(Orp64f* pSrcDst, int len);
OrpStatus orpsFlip_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len);
OrpStatus orpsFlip_64fc_I(Orp64fc* pSrcDst, int len);
/** @} */

/** @name SwapBytes
 *  The byte order inside each element of 2, 3, 4 or 8 bytes is reversed. Source and destination may be the same array.
 *  @{ */
OrpStatus orpsSwapBytes_16u(const Orp16u* pSrc, Orp16u* pDst, int len);
OrpStatus orpsSwapBytes_16u_I(Orp16u* pSrcDst, int len);
OrpStatus orpsSwapBytes_24u(const Orp24u* pSrc, Orp24u* pDst, int len);
OrpStatus orpsSwapBytes_24u_I(Orp24u* pSrcDst, int len);
OrpStatus orpsSwapBytes_32u(const Orp32u* pSrc, Orp32u* pDst, int len);
OrpStatus orpsSwapBytes_32u_I(Orp32u* pSrcDst, int len);
OrpStatus orpsSwapBytes_64u(const Orp64u* pSrc, Orp64u* pDst, int len);
OrpStatus orpsSwapBytes_64u_I(Orp64u* pSrcDst, int len);
/** @} */

/** @name Copy of bits
 *  Copies `len` bits of a packed bit string, from bit `srcBitOffset` of pSrc to bit `dstBitOffset` of pDst. Bits are
 *  numbered from the most significant bit of the first byte (bit 0 is mask 0x80); offsets above 7 count on into the
 *  following bytes. Destination bits outside the range keep their values; only bytes that hold bits of the range are
 *  read or written. The arrays must not overlap. A negative offset gives `StsBadSize`, as does a length below 1.
 *  @{ */
OrpStatus orpsCopy_1u(const Orp8u* pSrc, int srcBitOffset, Orp8u* pDst, int dstBitOffset, int len);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
