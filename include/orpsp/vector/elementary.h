/** @file
 *  Elementary functions: roots, exponentials, logarithms, arc tangent.
 *
 *  Accuracy. Floating-point square roots are correctly rounded. The other floating-point functions have an error below
 *  1 unit in the last place of the exact result, over the whole range and with subnormal arguments and results; the
 *  measured errors stand in docs/accuracy.md. They may differ in the last place between processors (vector widths), not
 *  between calls, addresses or positions in the array. Integer functions (`_Sfs`, `_ISfs`) are exact: the real result
 *  times 2^-scaleFactor, rounded once to nearest with ties to even and then saturated, for every scale factor from
 *  INT_MIN to INT_MAX; they are the same bits everywhere.
 *
 *  Special arguments. The call goes on, writes every element and returns a warning: `StsDomain` if an element lay
 *  outside the function's domain (the result is NaN; in single precision its bits are 0xFFC00000), else
 *  `StsSingularity` if an element made a result infinite that is so by the function's nature (the logarithm of zero).
 *  A NaN element gives NaN and no warning, and neither does an overflow.
 *
 *  Source and destination of one element type may be the same array. Statuses of every call: `StsOk`, `StsNullPtr`,
 *  `StsBadSize`, and the warnings named with the group.
 */
#ifndef ORPSP_VECTOR_ELEMENTARY_H
#define ORPSP_VECTOR_ELEMENTARY_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name Sqrt
 *  pDst[n] = sqrt(pSrc[n]).
 *
 *  Real: a negative element gives NaN (floating point) or 0 (integers) and `StsDomain`; -0 gives -0. `32s16s` and
 *  `64s16s` take 32- and 64-bit elements and saturate to 16 bits.
 *
 *  Complex: the principal root, whose real part is not negative and whose imaginary part has the sign of the source's.
 *  `32fc` computes in double; the error of each part is at most 1 unit in its last place. `64fc` scales by
 *  powers of two where |z|^2 would overflow or underflow; the error of each part is at most 4 units in its last place.
 *  An infinite imaginary part gives (+inf, that part); otherwise an infinite real part gives (+inf, +-0) or, where it
 *  is negative, (0, +-inf); these rules win over a NaN in the other part, which then stays NaN. `16sc`: both parts of
 *  the exact root are rounded. Complex roots are the same bits everywhere and have no warnings.
 *
 *  Two threads from: 64 elements `64fc`; 256 `16sc`; 512 `32fc`, `64f`, `64s16s`; 1024 `32s16s`; 2048 `8u`, `16u`,
 *  `16s`; 4096 `32f` (each in place as well), if `ownGetNumThreads` (orpcore) grants as many. Results are those of one.
 *  Warning: `StsDomain`.
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
 *  pDst[n] = e^pSrc[n]. Floating point: overflow gives +inf, underflow subnormal numbers or 0; exp(-inf) is 0.
 *  [Cody, Waite: Software Manual for the Elementary Functions, 1980]
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
 *  pDst[n] = ln(pSrc[n]). `64f32f` takes double and rounds to single; `32s16s` takes 32-bit elements and saturates to
 *  16 bits. Zero (of either sign) gives -inf and `StsSingularity`, a negative element NaN and `StsDomain`; when both
 *  occur, the call returns `StsDomain`. Integers write the least value of the destination's type for both. ln(+inf) is
 *  +inf. Warnings: `StsSingularity`, `StsDomain`. [Tang: Table-driven implementation of the logarithm function, ACM
 *  TOMS 16(4), 1990]
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
 *  pDst[n] = 10 log10(pSrc[n]), decibels of a power. Zero and negative elements as in Ln. Powers of ten are exact
 *  before they are scaled. Warnings: `StsSingularity`, `StsDomain`.
 *  @{ */
OrpStatus orps10Log10_32s_Sfs(const Orp32s* pSrc, Orp32s* pDst, int len, int scaleFactor);
OrpStatus orps10Log10_32s_ISfs(Orp32s* pSrcDst, int len, int scaleFactor);
/** @} */

/** @name Cubrt
 *  pDst[n] = cube root of pSrc[n], with its sign. Zeros and infinities are their own roots. `32s16s` takes 32-bit
 *  elements and saturates to 16 bits.
 *  @{ */
OrpStatus orpsCubrt_32f(const Orp32f* pSrc, Orp32f* pDst, int len);
OrpStatus orpsCubrt_32s16s_Sfs(const Orp32s* pSrc, Orp16s* pDst, int len, int scaleFactor);
/** @} */

/** @name Arctan
 *  pDst[n] = arc tangent of pSrc[n] in radians, in [-pi/2, pi/2]; -0 gives -0.
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
