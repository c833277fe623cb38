/** @file
 *  Sorting by comparison and by radix, of values and of indices.
 *
 *  Order of floating-point keys. SortRadix, SortRadixIndex and Sort order by bits: a key with the sign bit set comes
 *  before one without, so -0 before +0, a NaN without the sign bit behind +inf, one with it before -inf. No bit of an
 *  element changes. SortIndex compares as C does: -0 equals +0, and see there for NaNs.
 *  Results are the same on every processor and for any number of threads. Nothing allocates memory; a call needs about
 *  40 KiB of its thread's stack at most (SortRadix of `64f`), of both threads' where there are two.
 *  Statuses of all: `StsOk`, `StsNullPtr`, `StsBadSize` (a length that is not positive).
 */
#ifndef ORPSP_STATS_SORTING_H
#define ORPSP_STATS_SORTING_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name Sort
 *  Sorts pSrcDst in place. Equal integers cannot be told apart; floating-point elements are in the order by bits above,
 *  `Descend` in the opposite order. No input takes much longer than another.
 *  8-bit elements are counted where there are enough of them; others are sorted by a vectorised quicksort
 *  [Bramas: A novel hybrid quicksort algorithm vectorized using AVX-512, IJACSA 8 (2017) 337-344], with networks for
 *  short ranges [Batcher: Sorting networks and their applications, AFIPS 1968].
 *  @{ */
OrpStatus orpsSortAscend_8u_I(Orp8u* pSrcDst, int len);
OrpStatus orpsSortDescend_8u_I(Orp8u* pSrcDst, int len);
OrpStatus orpsSortAscend_16s_I(Orp16s* pSrcDst, int len);
OrpStatus orpsSortDescend_16s_I(Orp16s* pSrcDst, int len);
OrpStatus orpsSortAscend_16u_I(Orp16u* pSrcDst, int len);
OrpStatus orpsSortDescend_16u_I(Orp16u* pSrcDst, int len);
OrpStatus orpsSortAscend_32s_I(Orp32s* pSrcDst, int len);
OrpStatus orpsSortDescend_32s_I(Orp32s* pSrcDst, int len);
OrpStatus orpsSortAscend_32f_I(Orp32f* pSrcDst, int len);
OrpStatus orpsSortDescend_32f_I(Orp32f* pSrcDst, int len);
OrpStatus orpsSortAscend_64f_I(Orp64f* pSrcDst, int len);
OrpStatus orpsSortDescend_64f_I(Orp64f* pSrcDst, int len);
/** @} */

/** @name SortIndex
 *  Sorts pSrcDst in place and writes to pDstIndx[n] the index that element n had before.
 *
 *  Not stable, but reproducible: where equal elements end up follows from these steps. A range of at most nine elements
 *  is sorted by selection: the first of its largest elements is exchanged with the last one, and the range loses its
 *  last element, until one is left. A longer range first..last of n elements has its first, middle (first + n / 2) and
 *  last elements put in order: first and last are exchanged if first > last, middle and last if middle > last, first
 *  and middle if first > middle. The middle element is the pivot. A left cursor behind the first element advances over
 *  elements not greater than the pivot, a right one at the last element retreats over elements greater than it; while
 *  left is below right the two elements are exchanged, and both move on by one. Equal elements next to the boundary
 *  then belong to neither side: the left side ends in front of the elements >= pivot there, the right side begins
 *  behind the elements <= pivot. Both sides are sorted likewise. `Descend` exchanges > with < and >= with <=. [Hoare:
 *  Quicksort, The Computer Journal 5 (1962) 10-16]
 *
 *  NaNs: all comparisons with one are false. The elements are then permuted by the same steps, with cursors that stay
 *  in their range, and pDstIndx tells how; the order is of no use.
 *  A range of more than nine elements that 16 floor(log2(len)) partitions have led to is put in the order by bits
 *  instead, equal elements by their indices, in both directions; so the time is bounded by a multiple of len log(len).
 *  What is not made for it stays below: random, sorted, reversed or few different elements need up to 2 log2(len)
 *  partitions, organ pipes, sawtooths and periods of a sine up to 7 log2(len) for a million elements.
 *  pDstIndx may not overlap pSrcDst.
 *  @{ */
OrpStatus orpsSortIndexAscend_8u_I(Orp8u* pSrcDst, Orp32s* pDstIndx, int len);
OrpStatus orpsSortIndexDescend_8u_I(Orp8u* pSrcDst, Orp32s* pDstIndx, int len);
OrpStatus orpsSortIndexAscend_16s_I(Orp16s* pSrcDst, Orp32s* pDstIndx, int len);
OrpStatus orpsSortIndexDescend_16s_I(Orp16s* pSrcDst, Orp32s* pDstIndx, int len);
OrpStatus orpsSortIndexAscend_16u_I(Orp16u* pSrcDst, Orp32s* pDstIndx, int len);
OrpStatus orpsSortIndexDescend_16u_I(Orp16u* pSrcDst, Orp32s* pDstIndx, int len);
OrpStatus orpsSortIndexAscend_32s_I(Orp32s* pSrcDst, Orp32s* pDstIndx, int len);
OrpStatus orpsSortIndexDescend_32s_I(Orp32s* pSrcDst, Orp32s* pDstIndx, int len);
OrpStatus orpsSortIndexAscend_32f_I(Orp32f* pSrcDst, Orp32s* pDstIndx, int len);
OrpStatus orpsSortIndexDescend_32f_I(Orp32f* pSrcDst, Orp32s* pDstIndx, int len);
OrpStatus orpsSortIndexAscend_64f_I(Orp64f* pSrcDst, Orp32s* pDstIndx, int len);
OrpStatus orpsSortIndexDescend_64f_I(Orp64f* pSrcDst, Orp32s* pDstIndx, int len);
/** @} */

/** @name SortRadix
 *  Sorts pSrcDst in place by digits of its keys, the least significant first; equal keys keep their order, in both
 *  directions. pTmp is a work buffer of len elements; it may not overlap pSrcDst.
 *  Digits: 8 bits of 8- and 16-bit keys; 11, 11 and 10 bits of 32-bit keys, twice that of 64-bit keys. Where the method
 *  of Sort is quicker, as for short vectors and on processors with wide ones, it is used, to the same result.
 *  Two threads (orpcore.h) may be asked for from: 8192 elements of 32 bits, 32 of 64 bits; they share from 8192 on.
 *  @{ */
OrpStatus orpsSortRadixAscend_8u_I(Orp8u* pSrcDst, Orp8u* pTmp, int len);
OrpStatus orpsSortRadixDescend_8u_I(Orp8u* pSrcDst, Orp8u* pTmp, int len);
OrpStatus orpsSortRadixAscend_16s_I(Orp16s* pSrcDst, Orp16s* pTmp, int len);
OrpStatus orpsSortRadixDescend_16s_I(Orp16s* pSrcDst, Orp16s* pTmp, int len);
OrpStatus orpsSortRadixAscend_16u_I(Orp16u* pSrcDst, Orp16u* pTmp, int len);
OrpStatus orpsSortRadixDescend_16u_I(Orp16u* pSrcDst, Orp16u* pTmp, int len);
OrpStatus orpsSortRadixAscend_32s_I(Orp32s* pSrcDst, Orp32s* pTmp, int len);
OrpStatus orpsSortRadixDescend_32s_I(Orp32s* pSrcDst, Orp32s* pTmp, int len);
OrpStatus orpsSortRadixAscend_32u_I(Orp32u* pSrcDst, Orp32u* pTmp, int len);
OrpStatus orpsSortRadixDescend_32u_I(Orp32u* pSrcDst, Orp32u* pTmp, int len);
OrpStatus orpsSortRadixAscend_32f_I(Orp32f* pSrcDst, Orp32f* pTmp, int len);
OrpStatus orpsSortRadixDescend_32f_I(Orp32f* pSrcDst, Orp32f* pTmp, int len);
OrpStatus orpsSortRadixAscend_64f_I(Orp64f* pSrcDst, Orp64f* pTmp, int len);
OrpStatus orpsSortRadixDescend_64f_I(Orp64f* pSrcDst, Orp64f* pTmp, int len);
/** @} */

/** @name SortRadixIndex
 *  pDstIndx[0..len-1] = the indices of the elements in the order of their keys; equal keys by ascending index, in both
 *  directions. The key of element i is the value at byte i * srcStrideBytes behind pSrc, which needs no alignment. The
 *  source is not changed. pTmpIndx is a work buffer of len elements. None of the three may overlap another.
 *  Digits as in SortRadix, or narrower ones. Statuses also: `StsBadSize` for a stride less than the size of an element.
 *  @{ */
OrpStatus orpsSortRadixIndexAscend_8u(const Orp8u* pSrc, Orp32u srcStrideBytes, Orp32s* pDstIndx, Orp32s* pTmpIndx,
                                      int len);
OrpStatus orpsSortRadixIndexDescend_8u(const Orp8u* pSrc, Orp32u srcStrideBytes, Orp32s* pDstIndx, Orp32s* pTmpIndx,
                                       int len);
OrpStatus orpsSortRadixIndexAscend_16s(const Orp16s* pSrc, Orp32u srcStrideBytes, Orp32s* pDstIndx, Orp32s* pTmpIndx,
                                       int len);
OrpStatus orpsSortRadixIndexDescend_16s(const Orp16s* pSrc, Orp32u srcStrideBytes, Orp32s* pDstIndx, Orp32s* pTmpIndx,
                                        int len);
OrpStatus orpsSortRadixIndexAscend_16u(const Orp16u* pSrc, Orp32u srcStrideBytes, Orp32s* pDstIndx, Orp32s* pTmpIndx,
                                       int len);
OrpStatus orpsSortRadixIndexDescend_16u(const Orp16u* pSrc, Orp32u srcStrideBytes, Orp32s* pDstIndx, Orp32s* pTmpIndx,
                                        int len);
OrpStatus orpsSortRadixIndexAscend_32s(const Orp32s* pSrc, Orp32u srcStrideBytes, Orp32s* pDstIndx, Orp32s* pTmpIndx,
                                       int len);
OrpStatus orpsSortRadixIndexDescend_32s(const Orp32s* pSrc, Orp32u srcStrideBytes, Orp32s* pDstIndx, Orp32s* pTmpIndx,
                                        int len);
OrpStatus orpsSortRadixIndexAscend_32u(const Orp32u* pSrc, Orp32u srcStrideBytes, Orp32s* pDstIndx, Orp32s* pTmpIndx,
                                       int len);
OrpStatus orpsSortRadixIndexDescend_32u(const Orp32u* pSrc, Orp32u srcStrideBytes, Orp32s* pDstIndx, Orp32s* pTmpIndx,
                                        int len);
OrpStatus orpsSortRadixIndexAscend_32f(const Orp32f* pSrc, Orp32u srcStrideBytes, Orp32s* pDstIndx, Orp32s* pTmpIndx,
                                       int len);
OrpStatus orpsSortRadixIndexDescend_32f(const Orp32f* pSrc, Orp32u srcStrideBytes, Orp32s* pDstIndx, Orp32s* pTmpIndx,
                                        int len);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
