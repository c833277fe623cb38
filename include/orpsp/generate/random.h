/** @file
 *  Random numbers: uniform and Gaussian (normal) noise. Not for cryptography.
 *
 *  The generator is SplitMix64 [Steele, Lea and Flood 2014: Fast splittable pseudorandom number generators, OOPSLA],
 *  used as a function: an element is made from the words that belong to its position in the sequence. So the same seed
 *  and parameters give the same bits on every processor, at every vector width and on every platform, in however many
 *  calls of whatever lengths the elements are drawn.
 *
 *  Uniform elements lie in [low, high) for floating point and in low ... high, both included, for integers:
 *  - Integers: low + floor(h (high - low + 1) / 2^32), h an integer of 32 bits (half of a word). Probabilities differ
 *    from each other by at most 2^-32.
 *  - Floating point: low + (high - low) u, u in [0, 1) a multiple of 2^-24 for 32f (from half of a word) and of 2^-52
 *    for 64f. Product and sum are rounded to nearest in the precision of the type, and the number below high stands for
 *    a sum that would reach it. A difference high - low beyond the greatest number does no harm. low = high gives low.
 *
 *  Gaussian elements are mean + stdDev g, with pairs of independent standard normal g [Box and Muller 1958: A note on
 *  the generation of random normal deviates]: positions 2j and 2j + 1 have g = r cos(a) and g = r sin(a), where
 *  r = sqrt(-2 ln u1) and a = 2 pi (u2 - 1/8), with u1 in (0, 1] of 52 bits from word 2j and u2 in [0, 1) of 54 bits
 *  from word 2j + 1. |g| is at most sqrt(104 ln 2) = 8.49. All is computed in double precision, g with an error below
 *  1e-14, and the sum is rounded to the type: integers to nearest with ties to even, then saturated; what is
 *  beyond the range of floating point becomes infinite. stdDev = 0 gives mean.
 *
 *  Any seed may be used, 0 included. Uniform and Gaussian sequences of one seed are made from different words, and so
 *  are those with a state and direct ones. Sequences of the same kind and seed that differ in type or parameters are
 *  made from the same words (but uniform 64f has words of its own), and are not independent.
 *
 *  Statuses, in this order: `StsNullPtr`; `StsBadSize` if len is not positive; `StsBadArg` if low is above high, stdDev
 *  is negative, or a parameter is infinite or a NaN; `StsSpecMismatch` if the state is not one of this function's kind
 *  and type, or has been released; `StsNoMemory`. Nothing has been written then.
 */
#ifndef ORPSP_GENERATE_RANDOM_H
#define ORPSP_GENERATE_RANDOM_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name RandUniform, RandGauss with a state
 *  A state keeps the parameters and the position in the sequence. It may stand at any address, and may be copied as the
 *  bytes that it is made of; the copy goes on from the same position. Sequences of different seeds do not meet within
 *  2^32 elements; seed s then goes on with the elements of seed s + 1.
 *
 *  `GetSize` writes the bytes of a state (the same for all). `Init` makes a state in memory of the caller, `InitAlloc`
 *  in memory of its own, and writes its address. `Free` releases what `InitAlloc` made, and no call accepts that any
 *  more. A state that `Init` made, or a copy, stays as it is and may be used on; it need not be released.
 *
 *  The calls without a suffix write the next len elements. One state may not be used by two threads at the same time.
 *  @{ */
typedef struct OrpRandUniformState_8u OrpRandUniformState_8u;
OrpStatus orpsRandUniformGetSize_8u(int* pSize);
OrpStatus orpsRandUniformInit_8u(OrpRandUniformState_8u* pState, Orp8u low, Orp8u high, Orp32u seed);
OrpStatus orpsRandUniformInitAlloc_8u(OrpRandUniformState_8u** ppState, Orp8u low, Orp8u high, Orp32u seed);
OrpStatus orpsRandUniformFree_8u(OrpRandUniformState_8u* pState);
OrpStatus orpsRandUniform_8u(Orp8u* pDst, int len, OrpRandUniformState_8u* pState);
typedef struct OrpRandGaussState_8u OrpRandGaussState_8u;
OrpStatus orpsRandGaussGetSize_8u(int* pSize);
OrpStatus orpsRandGaussInit_8u(OrpRandGaussState_8u* pState, Orp8u mean, Orp8u stdDev, Orp32u seed);
OrpStatus orpsRandGaussInitAlloc_8u(OrpRandGaussState_8u** ppState, Orp8u mean, Orp8u stdDev, Orp32u seed);
OrpStatus orpsRandGaussFree_8u(OrpRandGaussState_8u* pState);
OrpStatus orpsRandGauss_8u(Orp8u* pDst, int len, OrpRandGaussState_8u* pState);
typedef struct OrpRandUniformState_16s OrpRandUniformState_16s;
OrpStatus orpsRandUniformGetSize_16s(int* pSize);
OrpStatus orpsRandUniformInit_16s(OrpRandUniformState_16s* pState, Orp16s low, Orp16s high, Orp32u seed);
OrpStatus orpsRandUniformInitAlloc_16s(OrpRandUniformState_16s** ppState, Orp16s low, Orp16s high, Orp32u seed);
OrpStatus orpsRandUniformFree_16s(OrpRandUniformState_16s* pState);
OrpStatus orpsRandUniform_16s(Orp16s* pDst, int len, OrpRandUniformState_16s* pState);
typedef struct OrpRandGaussState_16s OrpRandGaussState_16s;
OrpStatus orpsRandGaussGetSize_16s(int* pSize);
OrpStatus orpsRandGaussInit_16s(OrpRandGaussState_16s* pState, Orp16s mean, Orp16s stdDev, Orp32u seed);
OrpStatus orpsRandGaussInitAlloc_16s(OrpRandGaussState_16s** ppState, Orp16s mean, Orp16s stdDev, Orp32u seed);
OrpStatus orpsRandGaussFree_16s(OrpRandGaussState_16s* pState);
OrpStatus orpsRandGauss_16s(Orp16s* pDst, int len, OrpRandGaussState_16s* pState);
typedef struct OrpRandUniformState_32f OrpRandUniformState_32f;
OrpStatus orpsRandUniformGetSize_32f(int* pSize);
OrpStatus orpsRandUniformInit_32f(OrpRandUniformState_32f* pState, Orp32f low, Orp32f high, Orp32u seed);
OrpStatus orpsRandUniformInitAlloc_32f(OrpRandUniformState_32f** ppState, Orp32f low, Orp32f high, Orp32u seed);
OrpStatus orpsRandUniformFree_32f(OrpRandUniformState_32f* pState);
OrpStatus orpsRandUniform_32f(Orp32f* pDst, int len, OrpRandUniformState_32f* pState);
typedef struct OrpRandGaussState_32f OrpRandGaussState_32f;
OrpStatus orpsRandGaussGetSize_32f(int* pSize);
OrpStatus orpsRandGaussInit_32f(OrpRandGaussState_32f* pState, Orp32f mean, Orp32f stdDev, Orp32u seed);
OrpStatus orpsRandGaussInitAlloc_32f(OrpRandGaussState_32f** ppState, Orp32f mean, Orp32f stdDev, Orp32u seed);
OrpStatus orpsRandGaussFree_32f(OrpRandGaussState_32f* pState);
OrpStatus orpsRandGauss_32f(Orp32f* pDst, int len, OrpRandGaussState_32f* pState);
/** @} */

/** @name RandUniform_Direct, RandGauss_Direct
 *  The state is the seed. Afterwards *pSeed is the seed with which the next call goes on, as if both were one. All
 *  seeds share one cycle of 2^32 elements, in which they begin at position 0x9E3779B1 seed modulo 2^32: so small
 *  seeds, such as the numbers of channels, are far apart (the first 256 by 8 million elements, the first 1000 by 1.9
 *  million). pSeed may have any alignment.
 *  @{ */
OrpStatus orpsRandUniform_Direct_16s(Orp16s* pDst, int len, Orp16s low, Orp16s high, Orp32u* pSeed);
OrpStatus orpsRandGauss_Direct_16s(Orp16s* pDst, int len, Orp16s mean, Orp16s stdDev, Orp32u* pSeed);
OrpStatus orpsRandUniform_Direct_32f(Orp32f* pDst, int len, Orp32f low, Orp32f high, Orp32u* pSeed);
OrpStatus orpsRandGauss_Direct_32f(Orp32f* pDst, int len, Orp32f mean, Orp32f stdDev, Orp32u* pSeed);
OrpStatus orpsRandUniform_Direct_64f(Orp64f* pDst, int len, Orp64f low, Orp64f high, Orp32u* pSeed);
OrpStatus orpsRandGauss_Direct_64f(Orp64f* pDst, int len, Orp64f mean, Orp64f stdDev, Orp32u* pSeed);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
