/** @file
 *  Products and expansion of packed spectra of real signals.
 *
 *  The spectrum X[0] ... X[N-1] of N real samples is symmetric: X[N-k] is the conjugate of X[k], so X[0] and, for even
 *  N, X[N/2] are real. Three layouts store one half of it. H = (N - 1) / 2, rounded down, is the number of bins k with
 *  0 < k < N/2; element indices count reals:
 *
 *  | layout | elements | content |
 *  |---|---|---|
 *  | Pack | N | Re X[0]; at 2k-1 and 2k Re X[k] and Im X[k], 1 <= k <= H; for even N at N-1 Re X[N/2] |
 *  | Perm, N even | N | Re X[0], Re X[N/2]; at 2k and 2k+1 Re X[k] and Im X[k], 1 <= k <= H |
 *  | Perm, N odd | N | as Pack |
 *  | CCS | 2 * (N/2 + 1), N/2 rounded down | at 2k and 2k+1 Re X[k] and Im X[k], 0 <= k <= N/2 |
 *
 *  N = 8: Pack is R0 R1 I1 R2 I2 R3 I3 R4, Perm is R0 R4 R1 I1 R2 I2 R3 I3, CCS is R0 I0 R1 I1 R2 I2 R3 I3 R4 I4, where
 *  forward transforms store I0 = I4 = 0.
 *
 *  The functions here take every N from 1 on and arrays at any address. `len` and `lenDst` are N. Results are the same
 *  bits on every processor.
 */
#ifndef ORPSP_TRANSFORM_SPECTRA_H
#define ORPSP_TRANSFORM_SPECTRA_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name MulPack and MulPerm
 *  The product of two spectra, bin by bin, in Pack or in Perm layout: Y[k] = A[k] B[k], with A in pSrc1 (in place
 *  pSrc), B in pSrc2 (pSrcDst) and Y in pDst (pSrcDst). For the real bins that is one product, for the others
 *      Re Y = Re A * Re B - Im A * Im B,   Im Y = Re A * Im B + Re B * Im A.
 *  Floating point rounds each product, then the difference or sum. `_Sfs`: exact, times 2^-scaleFactor, rounded once to
 *  nearest with ties to even and saturated, for every scale factor. The inverse transform of Y is the circular
 *  convolution of the two signals.
 *
 *  All arrays have len elements. pDst may be pSrc1, pSrc2 or both.
 *  Statuses: `StsOk`, `StsNullPtr`, `StsBadSize` (len not positive).
 *  @{ */
OrpStatus orpsMulPack_32f(const Orp32f* pSrc1, const Orp32f* pSrc2, Orp32f* pDst, int len);
OrpStatus orpsMulPack_32f_I(const Orp32f* pSrc, Orp32f* pSrcDst, int len);
OrpStatus orpsMulPerm_32f(const Orp32f* pSrc1, const Orp32f* pSrc2, Orp32f* pDst, int len);
OrpStatus orpsMulPerm_32f_I(const Orp32f* pSrc, Orp32f* pSrcDst, int len);
OrpStatus orpsMulPack_64f(const Orp64f* pSrc1, const Orp64f* pSrc2, Orp64f* pDst, int len);
OrpStatus orpsMulPack_64f_I(const Orp64f* pSrc, Orp64f* pSrcDst, int len);
OrpStatus orpsMulPerm_64f(const Orp64f* pSrc1, const Orp64f* pSrc2, Orp64f* pDst, int len);
OrpStatus orpsMulPerm_64f_I(const Orp64f* pSrc, Orp64f* pSrcDst, int len);
OrpStatus orpsMulPack_16s_Sfs(const Orp16s* pSrc1, const Orp16s* pSrc2, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsMulPack_16s_ISfs(const Orp16s* pSrc, Orp16s* pSrcDst, int len, int scaleFactor);
OrpStatus orpsMulPerm_16s_Sfs(const Orp16s* pSrc1, const Orp16s* pSrc2, Orp16s* pDst, int len, int scaleFactor);
OrpStatus orpsMulPerm_16s_ISfs(const Orp16s* pSrc, Orp16s* pSrcDst, int len, int scaleFactor);
/** @} */

/** @name MulPackConj
 *  Y[k] = A[k] times the conjugate of S[k] in Pack layout, with A in pSrc and S in pSrcDst, where Y replaces it. For
 *  the real bins that is their product, for the others
 *      Re Y = Re A * Re S + Im A * Im S,   Im Y = Re S * Im A - Re A * Im S.
 *  Each product is rounded, then the sum or difference. pSrc may be pSrcDst: then Y[k] = |S[k]|^2, with imaginary part
 *  +0 where |S[k]|^2 is finite. The inverse transform of Y is the circular cross-correlation of the two signals.
 *
 *  Both arrays have len elements.
 *  Statuses: `StsOk`, `StsNullPtr`, `StsBadSize` (len not positive).
 *  @{ */
OrpStatus orpsMulPackConj_32f_I(const Orp32f* pSrc, Orp32f* pSrcDst, int len);
OrpStatus orpsMulPackConj_64f_I(const Orp64f* pSrc, Orp64f* pSrcDst, int len);
/** @} */

/** @name ConjPack, ConjPerm and ConjCcs
 *  The full spectrum of N = lenDst complex elements from its packed half: pDst[k] = X[k] for 0 <= k <= N/2, and
 *  pDst[N-k] = the conjugate of X[k] for 0 < k < N/2. From Pack and Perm layout the imaginary parts of X[0] and, for
 *  even N, of X[N/2] are +0; `ConjCcs` copies them as they stand. Elements are moved as bits. The conjugate of a
 *  floating-point element has the other sign bit in its imaginary part, that of a zero and of a NaN included; integer
 *  -32768 saturates to 32767.
 *
 *  pSrc has as many elements as its layout says, N or 2 * (N/2 + 1), and must not overlap pDst. In place pSrcDst holds
 *  them at its beginning, as reals without gaps, and has room for N complex elements; what stands behind the packed
 *  elements is not read.
 *  Statuses: `StsOk`, `StsNullPtr`, `StsBadSize` (lenDst not positive).
 *  @{ */
OrpStatus orpsConjPack_32fc(const Orp32f* pSrc, Orp32fc* pDst, int lenDst);
OrpStatus orpsConjPack_32fc_I(Orp32fc* pSrcDst, int lenDst);
OrpStatus orpsConjPerm_32fc(const Orp32f* pSrc, Orp32fc* pDst, int lenDst);
OrpStatus orpsConjPerm_32fc_I(Orp32fc* pSrcDst, int lenDst);
OrpStatus orpsConjCcs_32fc(const Orp32f* pSrc, Orp32fc* pDst, int lenDst);
OrpStatus orpsConjCcs_32fc_I(Orp32fc* pSrcDst, int lenDst);
OrpStatus orpsConjPack_64fc(const Orp64f* pSrc, Orp64fc* pDst, int lenDst);
OrpStatus orpsConjPack_64fc_I(Orp64fc* pSrcDst, int lenDst);
OrpStatus orpsConjPerm_64fc(const Orp64f* pSrc, Orp64fc* pDst, int lenDst);
OrpStatus orpsConjPerm_64fc_I(Orp64fc* pSrcDst, int lenDst);
OrpStatus orpsConjCcs_64fc(const Orp64f* pSrc, Orp64fc* pDst, int lenDst);
OrpStatus orpsConjCcs_64fc_I(Orp64fc* pSrcDst, int lenDst);
OrpStatus orpsConjPack_16sc(const Orp16s* pSrc, Orp16sc* pDst, int lenDst);
OrpStatus orpsConjPack_16sc_I(Orp16sc* pSrcDst, int lenDst);
OrpStatus orpsConjPerm_16sc(const Orp16s* pSrc, Orp16sc* pDst, int lenDst);
OrpStatus orpsConjPerm_16sc_I(Orp16sc* pSrcDst, int lenDst);
OrpStatus orpsConjCcs_16sc(const Orp16s* pSrc, Orp16sc* pDst, int lenDst);
OrpStatus orpsConjCcs_16sc_I(Orp16sc* pSrcDst, int lenDst);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
