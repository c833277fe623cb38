/** @file
 *  Conversion between element types, element by element.
 *
 *  Source and destination may be the same array where their elements have the same size (`16f16s`, `16s16f`, `32f32s`,
 *  `32s32f`, `64f64s`, `64s64f`); otherwise they must not overlap.
 */
#ifndef ORPSP_VECTOR_CONVERT_H
#define ORPSP_VECTOR_CONVERT_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name Convert
 *  pDst[n] = pSrc[n] in another type; the first type of a name is that of the source.
 *
 *  Floating point to integers (`rndMode`, `scaleFactor`). The element is multiplied by 2^-scaleFactor in the
 *  precision of the source (half precision: in single), then rounded to an integer: toward zero for `rndMode` 0, to
 *  nearest with ties to even for 1, to nearest with ties away from zero for every other value; then saturated. The
 *  factor is made by clamping its biased exponent: in single precision it is 0 for scale factors from 127 on and
 *  infinite for those up to -128, in double precision from 1023 on and up to -1024. NaN, also that of 0 times
 *  infinity, gives 0; infinities saturate.
 *
 *  Half precision. `16f32f` is exact, a NaN becomes a quiet one. `32f16f` rounds toward zero for `rndMode` 0, where
 *  finite elements that are too large give the largest number (65504), and to nearest with ties to even for 1, where
 *  they give infinity; subnormal results are rounded likewise, an infinity stays one, and a NaN stays a quiet NaN
 *  with its sign and the upper bits of its payload. `16s16f` is the same for integers. `16f16s` converts floating
 *  point to integers as above. These three take modes 0 and 1 only; others are the error `StsBadRoundMode`, looked
 *  for after pointers and length.
 *
 *  Integers to floating point. With a scale factor, the exact pSrc[n] * 2^-scaleFactor rounded once to nearest, ties
 *  to even, for every scale factor: it may be subnormal, vanish or overflow to infinity; 0 stays 0. Without, `32s32f`
 *  and `64s64f` round to nearest, ties to even, as `64f32f` does; all others are exact.
 *
 *  Integers to narrower ones: pSrc[n] * 2^-scaleFactor, rounded to nearest with ties to even and saturated; `32s16s`
 *  without a scale factor saturates. `32s16s_Sfs` first clamps the scale factor to [-15, 31] and `32s24s_Sfs` to
 *  [-31, 31]. Of these bounds only 31 can be seen: with a greater scale factor, elements above 2^30 still give 1,
 *  those below -2^30 still give -1. At the others every element but 0 saturates anyway.
 *
 *  Statuses: `StsOk`, `StsNullPtr`, `StsBadSize`, `StsBadRoundMode` (`32f16f`, `16s16f`, `16f16s`).
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
 *  Two channels of single precision as frames of two samples, and back. `len` counts frames: each channel has `len`
 *  elements, the interleaved array 2 * len. Channel 0 is `pSrc[0]` or `pDst[0]`. No two arrays may overlap.
 *
 *  JoinScaled: pDst[2 * n + c] = pSrc[c][n] * 2^15 (`16s`) or 2^23 (`24s`), rounded to nearest, ties to even, and
 *  saturated, so that 1.0 is full scale; NaN gives 0.
 *  SplitScaled: pDst[c][n] = pSrc[2 * n + c] * 2^-15 or 2^-23, exactly. Joining what has been split gives it back.
 *  Statuses: `StsOk`, `StsNullPtr` (also where a channel's pointer is null), `StsBadSize`.
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
