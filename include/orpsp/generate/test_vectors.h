/** @file
 *  Test vectors: ramps and the Jaehne chirp. Values are computed in double precision and rounded to the element type:
 *  floating point to nearest; integers to nearest with ties to even, then saturated, so that unsigned types have 0 for
 *  everything negative. A NaN gives an integer 0.
 *
 *  Statuses, in this order: `StsNullPtr`, `StsBadSize`, then those of the group. Then nothing has been written.
 */
#ifndef ORPSP_GENERATE_TEST_VECTORS_H
#define ORPSP_GENERATE_TEST_VECTORS_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name VectorJaehne
 *  pDst[n] = magnitude sin(pi n^2 / (2 len)): a sine whose frequency rises from 0 to half the sampling rate. [Jaehne
 *  1991: Digital Image Processing]. `StsJaehneMagnitude` if magnitude is below 0.
 *  @{ */
OrpStatus orpsVectorJaehne_8u(Orp8u* pDst, int len, Orp8u magnitude);
OrpStatus orpsVectorJaehne_8s(Orp8s* pDst, int len, Orp8s magnitude);
OrpStatus orpsVectorJaehne_16u(Orp16u* pDst, int len, Orp16u magnitude);
OrpStatus orpsVectorJaehne_16s(Orp16s* pDst, int len, Orp16s magnitude);
OrpStatus orpsVectorJaehne_32u(Orp32u* pDst, int len, Orp32u magnitude);
OrpStatus orpsVectorJaehne_32s(Orp32s* pDst, int len, Orp32s magnitude);
OrpStatus orpsVectorJaehne_32f(Orp32f* pDst, int len, Orp32f magnitude);
OrpStatus orpsVectorJaehne_64f(Orp64f* pDst, int len, Orp64f magnitude);
/** @} */

/** @name VectorRamp, VectorSlope
 *  pDst[n] = offset + slope n, each element by itself: nothing accumulates. `32f` computes in single precision: the
 *  index is rounded, then its product with the slope, then the sum. Two names for one function.
 *  @{ */
OrpStatus orpsVectorRamp_8u(Orp8u* pDst, int len, Orp64f offset, Orp64f slope);
OrpStatus orpsVectorRamp_8s(Orp8s* pDst, int len, Orp64f offset, Orp64f slope);
OrpStatus orpsVectorRamp_16u(Orp16u* pDst, int len, Orp64f offset, Orp64f slope);
OrpStatus orpsVectorRamp_16s(Orp16s* pDst, int len, Orp64f offset, Orp64f slope);
OrpStatus orpsVectorRamp_32u(Orp32u* pDst, int len, Orp64f offset, Orp64f slope);
OrpStatus orpsVectorRamp_32s(Orp32s* pDst, int len, Orp64f offset, Orp64f slope);
OrpStatus orpsVectorRamp_32f(Orp32f* pDst, int len, Orp32f offset, Orp32f slope);
OrpStatus orpsVectorRamp_64f(Orp64f* pDst, int len, Orp64f offset, Orp64f slope);
OrpStatus orpsVectorSlope_8u(Orp8u* pDst, int len, Orp64f offset, Orp64f slope);
OrpStatus orpsVectorSlope_8s(Orp8s* pDst, int len, Orp64f offset, Orp64f slope);
OrpStatus orpsVectorSlope_16u(Orp16u* pDst, int len, Orp64f offset, Orp64f slope);
OrpStatus orpsVectorSlope_16s(Orp16s* pDst, int len, Orp64f offset, Orp64f slope);
OrpStatus orpsVectorSlope_32u(Orp32u* pDst, int len, Orp64f offset, Orp64f slope);
OrpStatus orpsVectorSlope_32s(Orp32s* pDst, int len, Orp64f offset, Orp64f slope);
OrpStatus orpsVectorSlope_32f(Orp32f* pDst, int len, Orp32f offset, Orp32f slope);
OrpStatus orpsVectorSlope_64f(Orp64f* pDst, int len, Orp64f offset, Orp64f slope);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
