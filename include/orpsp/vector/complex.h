/** @file
 *  Complex vectors: magnitude, phase, power, polar form and parts.
 */
#ifndef ORPSP_VECTOR_COMPLEX_H
#define ORPSP_VECTOR_COMPLEX_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name Magnitude
 *  pDst[n] = sqrt(re^2 + im^2). Split members take the parts from two arrays.
 *
 *  `32f`, `32fc`, `64f`, `64fc`: the error is below 1 unit in the last place, and nothing overflows or underflows on
 *  the way: elements whose squares would are scaled by powers of two. An infinite part gives +inf, even beside a NaN; a
 *  NaN otherwise gives NaN. The last bit may differ between processors (vector widths). `16s32f`, `16sc32f`: re^2 +
 *  im^2 is exact and rounded to single precision, then the root is: an error below 1 unit in the last place, the same
 *  bits everywhere.
 *  `_Sfs`: the exact root times 2^-scaleFactor, rounded once to nearest with ties to even and saturated.
 *
 *  Two threads from: 256 elements `32sc_Sfs`, `64f`, `64fc`; 2048 `16s32f`, `16s_Sfs`, `16sc_Sfs`, `32fc`; 4096
 *  `16sc32f`, `32f`, if `ownGetNumThreads` (orpcore) grants as many. Results are those of one. Statuses: `StsOk`,
 *  `StsNullPtr`, `StsBadSize`.
 *  @{ */
OrpStatus orpsMagnitude_16s32f(const Orp16s* pSrcRe, const Orp16s* pSrcIm, Orp32f* pDst, int len);
OrpStatus orpsMagnitude_16s_Sfs(const Orp16s* pSrcRe, const Orp16s* pSrcIm, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsMagnitude_16sc32f(const Orp16sc* pSrc, Orp32f* pDst, int len);
OrpStatus orpsMagnitude_16sc_Sfs(const Orp16sc* pSrc, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsMagnitude_32f(const Orp32f* pSrcRe, const Orp32f* pSrcIm, Orp32f* pDst, int len);
OrpStatus orpsMagnitude_32fc(const Orp32fc* pSrc, Orp32f* pDst, int len);
OrpStatus orpsMagnitude_32sc_Sfs(const Orp32sc* pSrc, Orp32s* pDst, int len, int scaleFactor);
OrpStatus orpsMagnitude_64f(const Orp64f* pSrcRe, const Orp64f* pSrcIm, Orp64f* pDst, int len);
OrpStatus orpsMagnitude_64fc(const Orp64fc* pSrc, Orp64f* pDst, int len);
/** @} */

/** @name MagSquared
 *  pDst[n] = re^2 + im^2 of pSrc[n] times 2^-scaleFactor: exact, rounded once to nearest with ties to even and
 *  saturated, for every scale factor.
 *  Statuses: `StsOk`, `StsNullPtr`, `StsBadSize`.
 *  @{ */
OrpStatus orpsMagSquared_32sc32s_Sfs(const Orp32sc* pSrc, Orp32s* pDst, int len, int scaleFactor);
/** @} */

/** @name PowerSpectr
 *  pDst[n] = re^2 + im^2 of pSrc[n], or of pSrcRe[n] and pSrcIm[n]. Integers are exact: `_Sfs` scales by
 *  2^-scaleFactor, rounds once to nearest with ties to even and saturates; `16s32f` and `16sc32f` round the sum once to
 *  single precision. Floating point rounds both squares and the sum in the type of the elements; what overflows is
 *  infinite.
 *  Statuses: `StsOk`, `StsNullPtr`, `StsBadSize`.
 *  @{ */
OrpStatus orpsPowerSpectr_16s32f(const Orp16s* pSrcRe, const Orp16s* pSrcIm, Orp32f* pDst, int len);
OrpStatus orpsPowerSpectr_16s_Sfs(const Orp16s* pSrcRe, const Orp16s* pSrcIm, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsPowerSpectr_16sc32f(const Orp16sc* pSrc, Orp32f* pDst, int len);
OrpStatus orpsPowerSpectr_16sc_Sfs(const Orp16sc* pSrc, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsPowerSpectr_32f(const Orp32f* pSrcRe, const Orp32f* pSrcIm, Orp32f* pDst, int len);
OrpStatus orpsPowerSpectr_32fc(const Orp32fc* pSrc, Orp32f* pDst, int len);
OrpStatus orpsPowerSpectr_64f(const Orp64f* pSrcRe, const Orp64f* pSrcIm, Orp64f* pDst, int len);
OrpStatus orpsPowerSpectr_64fc(const Orp64fc* pSrc, Orp64f* pDst, int len);
/** @} */

/** @name Phase
 *  pDst[n] = angle of the element in radians, atan2(im, re), in [-pi, pi]. Split members take the parts from two
 *  arrays.
 *
 *  Floating-point results have an error below 1 unit in the last place; the last bit may differ between processors
 *  (vector widths). Signs of zeros and infinities count as in C's atan2: (x, +-0) gives +-0 for x > 0 and x = +0, +-pi
 *  for x < 0 and x = -0, (0, 0) is 0; infinities count as directions, (inf, inf) is pi/4. A NaN part gives NaN. -pi
 *  comes of a negative zero only: angles of other elements lie in (-pi, pi].
 *  `_Sfs`: the exact angle times 2^-scaleFactor, rounded once to nearest with ties to even and saturated; a full turn
 *  of 2 pi radians has 25736 steps with scaleFactor -12. Statuses: `StsOk`, `StsNullPtr`, `StsBadSize`.
 *  @{ */
OrpStatus orpsPhase_16s32f(const Orp16s* pSrcRe, const Orp16s* pSrcIm, Orp32f* pDst, int len);
OrpStatus orpsPhase_16s_Sfs(const Orp16s* pSrcRe, const Orp16s* pSrcIm, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsPhase_16sc32f(const Orp16sc* pSrc, Orp32f* pDst, int len);
OrpStatus orpsPhase_16sc_Sfs(const Orp16sc* pSrc, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsPhase_32f(const Orp32f* pSrcRe, const Orp32f* pSrcIm, Orp32f* pDst, int len);
OrpStatus orpsPhase_32fc(const Orp32fc* pSrc, Orp32f* pDst, int len);
OrpStatus orpsPhase_64f(const Orp64f* pSrcRe, const Orp64f* pSrcIm, Orp64f* pDst, int len);
OrpStatus orpsPhase_64fc(const Orp64fc* pSrc, Orp64f* pDst, int len);
/** @} */

/** @name Cartesian and polar
 *  CartToPolar: magnitude and phase of each element, as Magnitude and Phase define them.
 *  PolarToCart: re = magnitude * cos(phase), im = magnitude * sin(phase), phase in radians, of any size (large ones are
 *  reduced with as many digits of pi as it takes [Payne, Hanek: Radian reduction for trigonometric functions, ACM
 *  SIGNUM Newsletter 18(1), 1983]). Each part has an error below 2 units in the last place; the last bits may differ
 *  between processors (vector widths). An infinite or NaN phase gives NaN, and so does an infinite magnitude at phase 0
 *  (0 times infinity). A negative magnitude is allowed. Members `32f` and `64f` take and write four arrays, `32fc` and
 *  `64fc` have complex elements on the Cartesian side. A destination may be the same array as a source of its element
 *  type. Statuses: `StsOk`, `StsNullPtr`, `StsBadSize`.
 *  @{ */
OrpStatus orpsCartToPolar_32f(const Orp32f* pSrcRe, const Orp32f* pSrcIm, Orp32f* pDstMagn, Orp32f* pDstPhase, int len);
OrpStatus orpsPolarToCart_32f(const Orp32f* pSrcMagn, const Orp32f* pSrcPhase, Orp32f* pDstRe, Orp32f* pDstIm, int len);
OrpStatus orpsCartToPolar_32fc(const Orp32fc* pSrc, Orp32f* pDstMagn, Orp32f* pDstPhase, int len);
OrpStatus orpsPolarToCart_32fc(const Orp32f* pSrcMagn, const Orp32f* pSrcPhase, Orp32fc* pDst, int len);
OrpStatus orpsCartToPolar_64f(const Orp64f* pSrcRe, const Orp64f* pSrcIm, Orp64f* pDstMagn, Orp64f* pDstPhase, int len);
OrpStatus orpsPolarToCart_64f(const Orp64f* pSrcMagn, const Orp64f* pSrcPhase, Orp64f* pDstRe, Orp64f* pDstIm, int len);
OrpStatus orpsCartToPolar_64fc(const Orp64fc* pSrc, Orp64f* pDstMagn, Orp64f* pDstPhase, int len);
OrpStatus orpsPolarToCart_64fc(const Orp64f* pSrcMagn, const Orp64f* pSrcPhase, Orp64fc* pDst, int len);
/** @} */

/** @name Conj
 *  pDst[n] = re - im i of pSrc[n]; in place of pSrcDst[n]. Integer -32768 saturates to 32767; in floating point only
 *  the sign of the imaginary part changes, that of a zero and of a NaN included.
 *  Statuses: `StsOk`, `StsNullPtr`, `StsBadSize`.
 *  @{ */
OrpStatus orpsConj_16sc(const Orp16sc* pSrc, Orp16sc* pDst, int len);
OrpStatus orpsConj_16sc_I(Orp16sc* pSrcDst, int len);
OrpStatus orpsConj_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len);
OrpStatus orpsConj_32fc_I(Orp32fc* pSrcDst, int len);
OrpStatus orpsConj_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len);
OrpStatus orpsConj_64fc_I(Orp64fc* pSrcDst, int len);
/** @} */

/** @name Real and Imag
 *  pDst[n] = re, or im, of pSrc[n], moved as bits.
 *  Statuses: `StsOk`, `StsNullPtr`, `StsBadSize`.
 *  @{ */
OrpStatus orpsReal_16sc(const Orp16sc* pSrc, Orp16s* pDst, int len);
OrpStatus orpsImag_16sc(const Orp16sc* pSrc, Orp16s* pDst, int len);
OrpStatus orpsReal_32fc(const Orp32fc* pSrc, Orp32f* pDst, int len);
OrpStatus orpsImag_32fc(const Orp32fc* pSrc, Orp32f* pDst, int len);
OrpStatus orpsReal_64fc(const Orp64fc* pSrc, Orp64f* pDst, int len);
OrpStatus orpsImag_64fc(const Orp64fc* pSrc, Orp64f* pDst, int len);
/** @} */

/** @name RealToCplx and CplxToReal
 *  RealToCplx: pDst[n] = pSrcRe[n] + pSrcIm[n] i. CplxToReal: pDstRe[n] and pDstIm[n] are the parts of pSrc[n]; the two
 *  destinations do not overlap. Parts are moved as bits, and every pointer is required.
 *  Statuses: `StsOk`, `StsNullPtr`, `StsBadSize`.
 *  @{ */
OrpStatus orpsRealToCplx_16s(const Orp16s* pSrcRe, const Orp16s* pSrcIm, Orp16sc* pDst, int len);
OrpStatus orpsRealToCplx_32f(const Orp32f* pSrcRe, const Orp32f* pSrcIm, Orp32fc* pDst, int len);
OrpStatus orpsRealToCplx_64f(const Orp64f* pSrcRe, const Orp64f* pSrcIm, Orp64fc* pDst, int len);
OrpStatus orpsCplxToReal_16sc(const Orp16sc* pSrc, Orp16s* pDstRe, Orp16s* pDstIm, int len);
OrpStatus orpsCplxToReal_32fc(const Orp32fc* pSrc, Orp32f* pDstRe, Orp32f* pDstIm, int len);
OrpStatus orpsCplxToReal_64fc(const Orp64fc* pSrc, Orp64f* pDstRe, Orp64f* pDstIm, int len);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
