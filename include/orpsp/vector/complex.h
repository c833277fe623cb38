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
 *  TODO
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
 *  TODO
 *  @{ */
OrpStatus orpsMagSquared_32sc32s_Sfs(const Orp32sc* pSrc, Orp32s* pDst, int len, int scaleFactor);
/** @} */

/** @name PowerSpectr
 *  TODO
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
 *  TODO
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
 *  TODO
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
 *  TODO
 *  @{ */
OrpStatus orpsConj_16sc(const Orp16sc* pSrc, Orp16sc* pDst, int len);
OrpStatus orpsConj_16sc_I(Orp16sc* pSrcDst, int len);
OrpStatus orpsConj_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len);
OrpStatus orpsConj_32fc_I(Orp32fc* pSrcDst, int len);
OrpStatus orpsConj_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len);
OrpStatus orpsConj_64fc_I(Orp64fc* pSrcDst, int len);
/** @} */

/** @name Real and Imag
 *  TODO
 *  @{ */
OrpStatus orpsReal_16sc(const Orp16sc* pSrc, Orp16s* pDst, int len);
OrpStatus orpsImag_16sc(const Orp16sc* pSrc, Orp16s* pDst, int len);
OrpStatus orpsReal_32fc(const Orp32fc* pSrc, Orp32f* pDst, int len);
OrpStatus orpsImag_32fc(const Orp32fc* pSrc, Orp32f* pDst, int len);
OrpStatus orpsReal_64fc(const Orp64fc* pSrc, Orp64f* pDst, int len);
OrpStatus orpsImag_64fc(const Orp64fc* pSrc, Orp64f* pDst, int len);
/** @} */

/** @name RealToCplx and CplxToReal
 *  TODO
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
