/** @file
 *  Complex FFTs of 2^order points.
 */
#ifndef ORPSP_TRANSFORM_FFT_COMPLEX_H
#define ORPSP_TRANSFORM_FFT_COMPLEX_H

#include "orpsp/transform/fft_spec.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name TODO
 *  TODO
 *  @{ */
OrpStatus orpsFFTFwd_CToC_32fc(const Orp32fc* pSrc, Orp32fc* pDst, const OrpFftSpec_C_32fc* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_32fc_I(Orp32fc* pSrcDst, const OrpFftSpec_C_32fc* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_32fc(const Orp32fc* pSrc, Orp32fc* pDst, const OrpFftSpec_C_32fc* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_32fc_I(Orp32fc* pSrcDst, const OrpFftSpec_C_32fc* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_32f(const Orp32f* pSrcRe, const Orp32f* pSrcIm, Orp32f* pDstRe, Orp32f* pDstIm,
                              const OrpFftSpec_C_32f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_32f_I(Orp32f* pSrcDstRe, Orp32f* pSrcDstIm, const OrpFftSpec_C_32f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_32f(const Orp32f* pSrcRe, const Orp32f* pSrcIm, Orp32f* pDstRe, Orp32f* pDstIm,
                              const OrpFftSpec_C_32f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_32f_I(Orp32f* pSrcDstRe, Orp32f* pSrcDstIm, const OrpFftSpec_C_32f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_64fc(const Orp64fc* pSrc, Orp64fc* pDst, const OrpFftSpec_C_64fc* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_64fc_I(Orp64fc* pSrcDst, const OrpFftSpec_C_64fc* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_64fc(const Orp64fc* pSrc, Orp64fc* pDst, const OrpFftSpec_C_64fc* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_64fc_I(Orp64fc* pSrcDst, const OrpFftSpec_C_64fc* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_64f(const Orp64f* pSrcRe, const Orp64f* pSrcIm, Orp64f* pDstRe, Orp64f* pDstIm,
                              const OrpFftSpec_C_64f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_64f_I(Orp64f* pSrcDstRe, Orp64f* pSrcDstIm, const OrpFftSpec_C_64f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_64f(const Orp64f* pSrcRe, const Orp64f* pSrcIm, Orp64f* pDstRe, Orp64f* pDstIm,
                              const OrpFftSpec_C_64f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_64f_I(Orp64f* pSrcDstRe, Orp64f* pSrcDstIm, const OrpFftSpec_C_64f* pFFTSpec, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_16sc_Sfs(const Orp16sc* pSrc, Orp16sc* pDst, const OrpFftSpec_C_16sc* pFFTSpec,
                                   int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_16sc_ISfs(Orp16sc* pSrcDst, const OrpFftSpec_C_16sc* pFFTSpec, int scaleFactor,
                                    Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_16sc_Sfs(const Orp16sc* pSrc, Orp16sc* pDst, const OrpFftSpec_C_16sc* pFFTSpec,
                                   int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_16sc_ISfs(Orp16sc* pSrcDst, const OrpFftSpec_C_16sc* pFFTSpec, int scaleFactor,
                                    Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_16s_Sfs(const Orp16s* pSrcRe, const Orp16s* pSrcIm, Orp16s* pDstRe, Orp16s* pDstIm,
                                  const OrpFftSpec_C_16s* pFFTSpec, int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_16s_ISfs(Orp16s* pSrcDstRe, Orp16s* pSrcDstIm, const OrpFftSpec_C_16s* pFFTSpec,
                                   int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_16s_Sfs(const Orp16s* pSrcRe, const Orp16s* pSrcIm, Orp16s* pDstRe, Orp16s* pDstIm,
                                  const OrpFftSpec_C_16s* pFFTSpec, int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_16s_ISfs(Orp16s* pSrcDstRe, Orp16s* pSrcDstIm, const OrpFftSpec_C_16s* pFFTSpec,
                                   int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_32sc_Sfs(const Orp32sc* pSrc, Orp32sc* pDst, const OrpFftSpec_C_32sc* pFFTSpec,
                                   int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_32sc_ISfs(Orp32sc* pSrcDst, const OrpFftSpec_C_32sc* pFFTSpec, int scaleFactor,
                                    Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_32sc_Sfs(const Orp32sc* pSrc, Orp32sc* pDst, const OrpFftSpec_C_32sc* pFFTSpec,
                                   int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_32sc_ISfs(Orp32sc* pSrcDst, const OrpFftSpec_C_32sc* pFFTSpec, int scaleFactor,
                                    Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_32s_Sfs(const Orp32s* pSrcRe, const Orp32s* pSrcIm, Orp32s* pDstRe, Orp32s* pDstIm,
                                  const OrpFftSpec_C_32s* pFFTSpec, int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTFwd_CToC_32s_ISfs(Orp32s* pSrcDstRe, Orp32s* pSrcDstIm, const OrpFftSpec_C_32s* pFFTSpec,
                                   int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_32s_Sfs(const Orp32s* pSrcRe, const Orp32s* pSrcIm, Orp32s* pDstRe, Orp32s* pDstIm,
                                  const OrpFftSpec_C_32s* pFFTSpec, int scaleFactor, Orp8u* pBuffer);
OrpStatus orpsFFTInv_CToC_32s_ISfs(Orp32s* pSrcDstRe, Orp32s* pSrcDstIm, const OrpFftSpec_C_32s* pFFTSpec,
                                   int scaleFactor, Orp8u* pBuffer);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
