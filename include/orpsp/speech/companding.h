/** @file
 *  Companding: the logarithmic codes of speech, A-law and mu-law, of [ITU-T Recommendation G.711 (1988): Pulse code
 *  modulation (PCM) of voice frequencies]. len elements of pSrc become as many of pDst.
 *
 *  A code is a byte as it travels: with the even bits of A-law inverted, and all bits of mu-law. Linear samples are on
 *  the scale of 16 bits: eight units are one of the recommendation's A-law scale (13 bits, up to 4096), four are one of
 *  its mu-law scale (14 bits, up to 8159). Samples of single precision have the same values.
 *
 *  Results are exact and the same bits everywhere. Where the types are the same, pSrc may be pDst. Statuses of all:
 *  `StsOk`, `StsNullPtr`, `StsBadSize`.
 */
#ifndef ORPSP_SPEECH_COMPANDING_H
#define ORPSP_SPEECH_COMPANDING_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name ALawToLin, MuLawToLin
 *  Decoding. With the segment g in bits 6 to 4 and the place m in bits 3 to 0 of c, pDst[n] has the magnitude
 *  - A-law, c = pSrc[n] xor 0x55: 16 m + 8 if g = 0, else (16 m + 264) 2^(g - 1); it is positive if bit 7 of c is set.
 *    So values are -32256 to 32256: code 0xD5 is 8 and 0x55 is -8; there is no zero.
 *  - mu-law, c = pSrc[n] xor 0xFF: (8 m + 132) 2^g - 132; it is negative if bit 7 of c is set. So values are -32124 to
 *    32124; 0xFF and 0x7F are both 0 (in floating point +0).
 *  @{ */
OrpStatus orpsALawToLin_8u16s(const Orp8u* pSrc, Orp16s* pDst, int len);
OrpStatus orpsALawToLin_8u32f(const Orp8u* pSrc, Orp32f* pDst, int len);
OrpStatus orpsMuLawToLin_8u16s(const Orp8u* pSrc, Orp16s* pDst, int len);
OrpStatus orpsMuLawToLin_8u32f(const Orp8u* pSrc, Orp32f* pDst, int len);
/** @} */

/** @name LinToALaw, LinToMuLaw
 *  Encoding. A sample gets the code of the interval between decision values in which it lies; one that is a decision
 *  value itself belongs to the interval above it (towards positive infinity). 0 is positive. Decision values are the
 *  same on both sides of 0:
 *  - A-law: 0, 16, 32, ... 512 (steps of 16), ... 1024 (32), ... 2048 (64), and so on up to 16384 (512), ... 31744
 *    (1024). What is beyond gets the outermost codes.
 *  - mu-law: 0, 4, 12, 20, ... 124 (steps of 8 after the first), ... 380 (16), ... 892 (32), and so on up to 16252
 *    (512), ... 31612 (1024). What is beyond gets the outermost codes. -1 to -4 get the negative zero, 0x7F.
 *
 *  That is, for x = pSrc[n], v = x >> 3 (A-law) or x >> 2 (mu-law), rounded down: from v >= 0 or the complement -v - 1
 *  of v < 0, and 33 more for mu-law, at most 8191, the segment and the four bits behind the leading one are taken.
 *
 *  Codes of decoded samples are the codes that they came from, but for 0x7F of mu-law, which becomes 0xFF. Floating
 *  point is rounded to the nearest integer, ties to even, and saturated to 16 bits; NaN counts as 0.
 *  @{ */
OrpStatus orpsLinToALaw_16s8u(const Orp16s* pSrc, Orp8u* pDst, int len);
OrpStatus orpsLinToALaw_32f8u(const Orp32f* pSrc, Orp8u* pDst, int len);
OrpStatus orpsLinToMuLaw_16s8u(const Orp16s* pSrc, Orp8u* pDst, int len);
OrpStatus orpsLinToMuLaw_32f8u(const Orp32f* pSrc, Orp8u* pDst, int len);
/** @} */

/** @name ALawToMuLaw, MuLawToALaw
 *  Codes of one law become those of the other by tables 4 and 3 of the recommendation; the sign stays. These tables are
 *  not decoding and encoding: 32 codes of A-law and 44 of mu-law get a neighbour of the code which that gives.
 *  @{ */
OrpStatus orpsALawToMuLaw_8u(const Orp8u* pSrc, Orp8u* pDst, int len);
OrpStatus orpsMuLawToALaw_8u(const Orp8u* pSrc, Orp8u* pDst, int len);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
