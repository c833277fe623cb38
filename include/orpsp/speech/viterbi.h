/** @file
 *  Steps of a Viterbi decoder for four-dimensional trellis codes, as modems use them [Wei 1987: Trellis-coded
 *  modulation with multidimensional constellations, IEEE Trans. IT-33].
 *
 *  A symbol has four dimensions: two complex points, sent one after the other. The calls keep nothing: a decoder is
 *  arrays as described here and, for every symbol, one call of each function.
 *
 *  Points. A point of the constellation has odd coordinates from -limit to limit; limit = 3 makes 16 points, 7 makes
 *  64. All coordinates have `fraction` fraction bits, received ones and those of points: the point (3, -1) is the
 *  element (3 * 2^fraction, -2^fraction).
 *
 *  Classes of points. Points whose coordinates are the same modulo 4 form a class. Class x turned counter-clockwise by
 *  90 degrees is class x + 1 modulo 4:
 *
 *  | class | real part modulo 4 | imaginary part modulo 4 |
 *  |---|---|---|
 *  | 0 | 1 | 1 |
 *  | 1 | 3 | 1 |
 *  | 2 | 3 | 3 |
 *  | 3 | 1 | 3 |
 *
 *  Subsets of symbols. Symbols with a first point of class x and a second one of class y belong to subset
 *  s = 2 ((y - x) modulo 4) + x modulo 2, which two pairs of classes share:
 *
 *  | subset | first pair (x, y) | second pair |
 *  |---|---|---|
 *  | 0 | 0, 0 | 2, 2 |
 *  | 1 | 1, 1 | 3, 3 |
 *  | 2 | 0, 1 | 2, 3 |
 *  | 3 | 1, 2 | 3, 0 |
 *  | 4 | 0, 2 | 2, 0 |
 *  | 5 | 1, 3 | 3, 1 |
 *  | 6 | 0, 3 | 2, 1 |
 *  | 7 | 1, 0 | 3, 2 |
 *
 *  Symbols of a subset are at a squared distance of 16 or more, symbols of two subsets of 4 or more if the numbers of
 *  these differ in bit 1, else of 8 or more. A turn of both points by 90 degrees inverts bit 0 of the subset.
 *
 *  Metrics are squared distances with 8 fraction bits: neighbouring points are at a distance of 4 * 256. Sums saturate
 *  at 65535.
 *
 *  Branches and trellis. A branch is a number: 8 * (the state that it comes from) + (the subset of its symbols). Four
 *  branches lead into every state; pTrellis[b * nStates + state], 0 <= b < 4, are those of a state. Which of the four
 *  comes first matters between equal metrics only; a state with fewer branches repeats one.
 *
 *  Codes. Any trellis of this form will do. The following are of systematic encoders with feedback [Ungerboeck 1987:
 *  Trellis-coded modulation with redundant signal sets, IEEE Communications Magazine 25(2)], found by a search (for 64
 *  states among codes with few feedback terms). With bits b0, b1 and b2 of the subset: b0 and b2 are two bits of data,
 *  b1 is bit 0 of the state, and
 *
 *      next = (state >> 1) ^ (b0 ? g0 : 0) ^ (b1 ? g1 : 0) ^ (b2 ? g2 : 0)
 *
 *  Further bits of data choose one of the symbols of the subset.
 *
 *  | states | g0 | g1 | g2 | least squared distance of sequences of subsets |
 *  |---|---|---|---|---|
 *  | 16 | 3 | 9 | 4 | 20 |
 *  | 32 | 6 | 17 | 9 | 24 |
 *  | 64 | 27 | 34 | 14 | 24 |
 *
 *  So sequences of symbols are at a squared distance of 16 or more, that within a subset: 4 times that of neighbouring
 *  points. Turned by 90 degrees, a sequence of one of these codes is one again; a receiver that cannot tell needs data
 *  coded by differences.
 *
 *  A decoder for the code of 16 states. It decides on a symbol when DEPTH - 1 more have come; DEPTH = 32 is ample. The
 *  trellis, Orp16u trellis[4 * 16], with int count[16] = {0}:
 *
 *      for (state = 0; state < 16; ++state)
 *        for (k = 0; k < 4; ++k) {
 *          subset = (k & 1) + 2 * (state & 1) + 4 * (k >> 1);
 *          next = (state >> 1) ^ (subset & 1 ? 3 : 0) ^ (subset & 2 ? 9 : 0) ^ (subset & 4 ? 4 : 0);
 *          trellis[16 * count[next]++ + next] = 8 * state + subset;
 *        }
 *
 *  The arrays:
 *
 *      Orp16sc points[8], symbols[16 * DEPTH];
 *      Orp16u distances[8], branchMetrics[8], paths[16 * DEPTH];
 *      Orp16u metrics[16];  // 0; if the encoder is known to start in some states, 65535 for all others
 *
 *  For symbol t = 0 ... T - 1, which has been received as received[2 * t] and received[2 * t + 1]:
 *
 *      row = t % DEPTH;
 *      orpsGetVarPointDV_16sc(received + 2 * t, points, distances, 2, limit, fraction);
 *      orpsBuildSymblTableDV4D_16sc(points, distances, symbols + 16 * row, branchMetrics, 1);
 *      orpsUpdatePathMetricsDV_16u(branchMetrics, trellis, metrics, metrics, paths + 16 * row, 16, &state);
 *      if (t >= DEPTH - 1)
 *        orpsCalcStatesDV_16sc(paths, symbols, decoded + 2 * (t - DEPTH + 1), 1, 16, DEPTH, row, state);
 *
 *  The last DEPTH symbols come from the last state (if there are fewer, T takes the place of DEPTH):
 *
 *      orpsCalcStatesDV_16sc(paths, symbols, decoded + 2 * (T - DEPTH), DEPTH, 16, DEPTH, row, state);
 *
 *  The first two calls depend on nothing before them and may treat many symbols at once. The last one may decide on
 *  several symbols at once, which saves going back as often: on DEPTH / 2 after every DEPTH / 2 symbols, say.
 */
#ifndef ORPSP_SPEECH_VITERBI_H
#define ORPSP_SPEECH_VITERBI_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name GetVarPointDV
 *  Variants of len received points: pDstPoints[4 n + x] is the point of class x that is nearest to pSrc[n], and
 *  pDstDistances[4 n + x] the squared distance with 8 fraction bits, rounded to nearest with ties upward. Of two points
 *  equally near in a coordinate it is the one with the greater coordinate.
 *  Coordinates of received points are to be at most (limit + 1) 2^fraction in magnitude. One beyond is replaced by that
 *  bound first, and the call returns the warning `StsVarPoint`; so no distance is above 18 * 256.
 *  Statuses: `StsOk`, `StsVarPoint`, `StsNullPtr`, `StsBadSize`, then `StsBadArg` (limit not positive or not odd,
 *  fraction outside 0 ... 13, or (limit + 1) 2^fraction above 32768). Arrays may not overlap.
 *  @{ */
OrpStatus orpsGetVarPointDV_16sc(const Orp16sc* pSrc, Orp16sc* pDstPoints, Orp16u* pDstDistances, int len, int limit,
                                 int fraction);
/** @} */

/** @name BuildSymblTableDV4D
 *  For each of len symbols the nearest symbol of each of the 8 subsets: of its two pairs of classes the one with the
 *  lesser sum of distances, the first one if both are equal. pPoints[8 n + x] and pDistances[8 n + x] are the variants
 *  of the first point of symbol n, those at 8 n + 4 + y of its second point, as `GetVarPointDV` gives them for 2 len
 *  points. pDstSymbols[16 n + 2 s] and pDstSymbols[16 n + 2 s + 1] become the two points for subset s,
 *  pDstMetrics[8 n + s] the sum of their distances, saturated after the comparison.
 *  Statuses: `StsOk`, `StsNullPtr`, `StsBadSize`. Arrays may not overlap, but pDstMetrics may be pDistances.
 *  @{ */
OrpStatus orpsBuildSymblTableDV4D_16sc(const Orp16sc* pPoints, const Orp16u* pDistances, Orp16sc* pDstSymbols,
                                       Orp16u* pDstMetrics, int len);
/** @} */

/** @name UpdatePathMetricsDV
 *  The step of all states that a symbol makes. Of the four branches into a state, pDstPaths[state] is the one with the
 *  least sum of pSrcMetrics[the state that it comes from] and pBranchMetrics[its subset], saturated; of equal ones the
 *  first. pDstMetrics[state] is that sum minus the least of all states' sums, and *pBestState the state where it is 0,
 *  the lowest of several.
 *  pBranchMetrics has 8 elements, pTrellis 4 nStates; metrics and paths have nStates. pDstMetrics may be pSrcMetrics;
 *  no other arrays may overlap. With the metrics of the calls above nothing saturates once every state has been
 *  reached, if every state leads to every other in 6 steps (in those of the codes above, in 2 to 4).
 *  Statuses: `StsOk`, `StsNullPtr`, `StsBadSize` (nStates outside 1 ... 8192), then `StsBadArg` (a branch in pTrellis
 *  comes from no state).
 *  @{ */
OrpStatus orpsUpdatePathMetricsDV_16u(const Orp16u* pBranchMetrics, const Orp16u* pTrellis, const Orp16u* pSrcMetrics,
                                      Orp16u* pDstMetrics, Orp16u* pDstPaths, int nStates, int* pBestState);
/** @} */

/** @name CalcStatesDV
 *  Goes back through the states of the latest depth symbols and writes the oldest len of these symbols, oldest first:
 *  pDst[2 n] and pDst[2 n + 1] are the points of the n-th.
 *  pPaths and pSymbols are circular tables of depth rows; that of the latest symbol is `row`, before it is row - 1, and
 *  before row 0 is row depth - 1. pPaths[r * nStates + s] is the branch into state s that `UpdatePathMetricsDV`
 *  chose, pSymbols[16 r] to pSymbols[16 r + 15] are the points that `BuildSymblTableDV4D` chose. `state` is the state
 *  after the latest symbol, usually the best one. As long as fewer rows have been written, depth can be their number.
 *  Statuses: `StsOk`, `StsNullPtr`, `StsBadSize` (nStates outside 1 ... 8192, depth not positive, len outside
 *  1 ... depth), then `StsBadArg` (row outside 0 ... depth - 1, state outside 0 ... nStates - 1, a branch on the way
 *  comes from no state). pDst may not overlap pSymbols.
 *  @{ */
OrpStatus orpsCalcStatesDV_16sc(const Orp16u* pPaths, const Orp16sc* pSymbols, Orp16sc* pDst, int len, int nStates,
                                int depth, int row, int state);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
