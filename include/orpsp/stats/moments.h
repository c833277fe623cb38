/** @file
 *  Sums, means, standard deviations and sums of logarithms.
 *
 *  Order of additions. Floating-point results are the same bits on every processor: a sum is held in a fixed number of
 *  lanes, which no processor's width changes. Where nothing else is said there are 64 lanes of single or 32 of double
 *  precision (both parts of a complex element count), all zero at first; element n is added to lane n modulo their
 *  number. At the end the upper half of the lanes is added to the lower half until one element is left. Products and
 *  squares are rounded before they are added (no fused multiply-add). NaN and infinity go through these additions as
 *  IEEE 754 says; a sum of nothing but negative zeros is +0.
 *
 *  Integers are summed exactly, whatever their values and however many. A scaled result is the exact value times
 *  2^-scaleFactor, rounded once to nearest with ties to even and saturated, for every scale factor from INT_MIN to
 *  INT_MAX; of complex results each part.
 *
 *  Results may not overlap a source or each other. Statuses of all: `StsOk`, `StsNullPtr`, `StsBadSize`.
 */
#ifndef ORPSP_STATS_MOMENTS_H
#define ORPSP_STATS_MOMENTS_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name Sum
 *  *pSum = the sum of pSrc[0] to pSrc[len - 1].
 *
 *  `hint` (`32f`, `32fc`): 1 takes the fast way, any other value the accurate one.
 *  - `32f`, accurate: in double precision with eight lanes. If pSrc is not at a multiple of 8 bytes, the first element
 *    is added to lane 0 by itself; then come blocks of eight, element k of a block to lane k. Lanes 4 to 7 are then
 *    added to lanes 0 to 3; four elements that remain are added to lanes 0 to 3, two to lanes 0 and 1, one to lane 0.
 *    The sum is (lane 0 + lane 2) + (lane 1 + lane 3), rounded to single precision.
 *  - `32f`, fast: single elements up to the next multiple of 16 bytes (none where elements never reach one) are added
 *    in double precision. Every 32768 elements that follow (the last block may be shorter) are summed in single
 *    precision, in 64 lanes, and these sums are added in double precision. So an error grows within one block only.
 *  - `32fc`: the same two ways for both parts, without elements by themselves: accurate in double precision with 32
 *    lanes, fast in blocks of 16384 complex elements.
 *  @{ */
OrpStatus orpsSum_16s_Sfs(const Orp16s* pSrc, int len, Orp16s* pSum, int scaleFactor);
OrpStatus orpsSum_16s32s_Sfs(const Orp16s* pSrc, int len, Orp32s* pSum, int scaleFactor);
OrpStatus orpsSum_16sc_Sfs(const Orp16sc* pSrc, int len, Orp16sc* pSum, int scaleFactor);
OrpStatus orpsSum_16sc32sc_Sfs(const Orp16sc* pSrc, int len, Orp32sc* pSum, int scaleFactor);
OrpStatus orpsSum_32f(const Orp32f* pSrc, int len, Orp32f* pSum, int hint);
OrpStatus orpsSum_32fc(const Orp32fc* pSrc, int len, Orp32fc* pSum, int hint);
OrpStatus orpsSum_32s_Sfs(const Orp32s* pSrc, int len, Orp32s* pSum, int scaleFactor);
OrpStatus orpsSum_64f(const Orp64f* pSrc, int len, Orp64f* pSum);
OrpStatus orpsSum_64fc(const Orp64fc* pSrc, int len, Orp64fc* pSum);
/** @} */

/** @name Mean
 *  *pMean = the sum of the elements divided by their number.
 *
 *  `32f`, `32fc`: the sum of Sum with the same hint, in single precision, is divided in double precision and rounded
 *  again. `64f`, `64fc`: the sum of Sum divided by len. Integers: the exact quotient is scaled and rounded once.
 *  @{ */
OrpStatus orpsMean_16s_Sfs(const Orp16s* pSrc, int len, Orp16s* pMean, int scaleFactor);
OrpStatus orpsMean_16sc_Sfs(const Orp16sc* pSrc, int len, Orp16sc* pMean, int scaleFactor);
OrpStatus orpsMean_32f(const Orp32f* pSrc, int len, Orp32f* pMean, int hint);
OrpStatus orpsMean_32fc(const Orp32fc* pSrc, int len, Orp32fc* pMean, int hint);
OrpStatus orpsMean_32s_Sfs(const Orp32s* pSrc, int len, Orp32s* pMean, int scaleFactor);
OrpStatus orpsMean_64f(const Orp64f* pSrc, int len, Orp64f* pMean);
OrpStatus orpsMean_64fc(const Orp64fc* pSrc, int len, Orp64fc* pMean);
/** @} */

/** @name StdDev
 *  *pStdDev = the sample standard deviation, sqrt((sum of (x - mean)^2) / (len - 1)); `MeanStdDev` writes *pMean as
 *  well. Fewer than two elements are `StsBadSize`.
 *
 *  - `32f`: S, the sum of the elements, and Q, the sum of their squares, in double precision;
 *    sqrt(max(len Q - S^2, 0) / (len (len - 1))) in double precision, rounded to single. A mean that is 10^6 times the
 *    deviation leaves about four digits of the latter. *pMean: S is rounded to single precision, divided in double
 *    precision by len and rounded. `hint`: 1 takes the fast way, any other value the accurate one.
 *    Accurate: four lanes. If pSrc is not at a multiple of 8 bytes, the first element goes to lane 0 by itself; element
 *    k of each block of four that follows goes to lane k, of two that remain to lanes 0 and 1, a single one to lane 0.
 *    The sums are (lane 0 + lane 2) + (lane 1 + lane 3). Squares of single-precision numbers are exact.
 *    Fast: S and Q of every 32768 elements in single precision, in 32 lanes each; these are added in double precision.
 *    If len Q - S^2 is less than a sixteenth of len Q (the mean is about four times the deviation or more) or not
 *    finite, this is repeated with differences: in each block s and q of x - c, where c is the median of the
 *    block's first, middle and last elements. With the first block's center C, a block of m elements adds
 *    s + m (c - C) to S and q + (c - C) (2 s + m (c - C)) to Q in double precision; the deviation follows as above, the
 *    mean from S + len C. So a large mean costs no digits, but takes more than twice the time, and equal elements give
 *    exactly 0. Where this Q is not finite either, the accurate way is taken.
 *  - `64f`: every 1024 elements give the sum and the sum of squares of their differences from one of them (the median
 *    of the first, the middle and the last), in 16 lanes each; means and sums of squares of these blocks are combined
 *    [Chan, Golub, LeVeque: Algorithms for computing the sample variance, The American Statistician 37 (1983) 242-247].
 *    So a large mean costs no digits: the relative error is of the order of 10^-15, and 10^-13 at worst. Equal elements
 *    give exactly 0. *pMean is that of Mean.
 *  - Integers: len Q - S^2 is exact; the root of its exact quotient by len (len - 1) is scaled and rounded once. *pMean
 *    is that of Mean with the same scale factor.
 *  @{ */
OrpStatus orpsStdDev_16s32s_Sfs(const Orp16s* pSrc, int len, Orp32s* pStdDev, int scaleFactor);
OrpStatus orpsStdDev_16s_Sfs(const Orp16s* pSrc, int len, Orp16s* pStdDev, int scaleFactor);
OrpStatus orpsStdDev_32f(const Orp32f* pSrc, int len, Orp32f* pStdDev, int hint);
OrpStatus orpsStdDev_64f(const Orp64f* pSrc, int len, Orp64f* pStdDev);
OrpStatus orpsMeanStdDev_16s32s_Sfs(const Orp16s* pSrc, int len, Orp32s* pMean, Orp32s* pStdDev, int scaleFactor);
OrpStatus orpsMeanStdDev_16s_Sfs(const Orp16s* pSrc, int len, Orp16s* pMean, Orp16s* pStdDev, int scaleFactor);
OrpStatus orpsMeanStdDev_32f(const Orp32f* pSrc, int len, Orp32f* pMean, Orp32f* pStdDev, int hint);
OrpStatus orpsMeanStdDev_64f(const Orp64f* pSrc, int len, Orp64f* pMean, Orp64f* pStdDev);
/** @} */

/** @name SumLn
 *  *pSum = the sum of the natural logarithms of the elements.
 *
 *  The elements' significands are multiplied in double precision, in 32 lanes which are scaled down before they can
 *  overflow; the exponents are summed as integers; one logarithm is taken at the end and rounded to the type of the
 *  result. Before that the error is at most len units of 2^-53 (absolute), and of the order of the root of len in
 *  general.
 *  A zero (of either sign) gives +inf and `StsSingularity`; a negative element gives the NaN of Ln, 0xFFC00000 or
 *  0xFFF8000000000000, and `StsDomain`, whatever else occurs. A NaN gives NaN, +inf gives +inf, without a warning (a
 *  NaN wins over infinities).
 *  Warnings: `StsSingularity`, `StsDomain`.
 *  @{ */
OrpStatus orpsSumLn_16s32f(const Orp16s* pSrc, int len, Orp32f* pSum);
OrpStatus orpsSumLn_32f(const Orp32f* pSrc, int len, Orp32f* pSum);
OrpStatus orpsSumLn_32f64f(const Orp32f* pSrc, int len, Orp64f* pSum);
OrpStatus orpsSumLn_64f(const Orp64f* pSrc, int len, Orp64f* pSum);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
