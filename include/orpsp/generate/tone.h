/** @file
 *  Tones and triangle waves, by floating-point parameters and a phase that the caller keeps, or by fixed-point
 *  parameters and a state.
 *
 *  | parameter | unit | range |
 *  |---|---|---|
 *  | magnitude | of the samples | above 0 |
 *  | rFreq | periods a sample | [0, 0.5) |
 *  | phase | radians | [0, 2 pi) |
 *  | asymmetry | radians | [-pi, pi), where -pi as the argument's type rounds it is accepted |
 *
 *  The phase of sample n is phase + 2 pi rFreq n. How many periods that is, is computed without any rounding error for
 *  all n, and no recurrence runs on: the error of a sample depends neither on n nor on how a signal is divided into
 *  calls. Samples are computed in double precision and rounded once to the element type: floating point to nearest,
 *  integers to nearest with ties to even. They are the same bits at every vector width and on every platform.
 *
 *  A NaN is outside of every range. An infinite magnitude is accepted and makes elements infinite or NaN.
 */
#ifndef ORPSP_GENERATE_TONE_H
#define ORPSP_GENERATE_TONE_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name Tone_Direct
 *  pDst[n] = magnitude cos(*pPhase + 2 pi rFreq n), of complex types magnitude e^(i (*pPhase + 2 pi rFreq n)).
 *
 *  Then *pPhase is the phase of sample len, in [0, 2 pi), rounded to its type: the next call goes on with the signal.
 *  (What accumulates over many calls is that rounding: up to 2.4e-7 a call for `Orp32f`. Where that counts, over hours
 *  of signal in small blocks, a double phase loses next to nothing and `ToneQ15` nothing at all.)
 *
 *  The error before rounding to the element type is below 5e-15 times the magnitude for `64f` and `64fc`, and below
 *  1e-14 times it for the other types. `hint` 1 asks for speed: those others are computed in single precision then,
 *  with an error below 3e-7 times the magnitude. Any other hint is the accurate way.
 *
 *  *pPhase is read and written before the samples: it may not lie within pDst, where a sample would replace it.
 *
 *  Statuses, in this order: `StsNullPtr` if pPhase is null; `StsToneMagnitude`, `StsToneFrequency`, `StsTonePhase` for
 *  parameters outside of their ranges; `StsNullPtr` if pDst is null; `StsBadSize`. Then neither samples nor phase have
 *  been written.
 *  @{ */
OrpStatus orpsTone_Direct_16s(Orp16s* pDst, int len, Orp16s magnitude, Orp32f rFreq, Orp32f* pPhase, int hint);
OrpStatus orpsTone_Direct_16sc(Orp16sc* pDst, int len, Orp16s magnitude, Orp32f rFreq, Orp32f* pPhase, int hint);
OrpStatus orpsTone_Direct_32f(Orp32f* pDst, int len, Orp32f magnitude, Orp32f rFreq, Orp32f* pPhase, int hint);
OrpStatus orpsTone_Direct_32fc(Orp32fc* pDst, int len, Orp32f magnitude, Orp32f rFreq, Orp32f* pPhase, int hint);
OrpStatus orpsTone_Direct_64f(Orp64f* pDst, int len, Orp64f magnitude, Orp64f rFreq, Orp64f* pPhase, int hint);
OrpStatus orpsTone_Direct_64fc(Orp64fc* pDst, int len, Orp64f magnitude, Orp64f rFreq, Orp64f* pPhase, int hint);
/** @} */

/** @name Triangle_Direct
 *  pDst[n] = magnitude t(phase of sample n). Over a period, t falls from 1 to -1 while the phase goes from 0 to
 *  pi + asymmetry, and rises to 1 again while it goes on to 2 pi: with h = pi + asymmetry,
 *
 *      t(x) = 1 - 2 x / h                       for 0 <= x < h
 *      t(x) = 2 (x - h) / (2 pi - h) - 1        for h <= x < 2 pi
 *
 *  Asymmetry 0 is the symmetric triangle, -pi a rising sawtooth. The imaginary part of complex types is a quarter of a
 *  period behind, t(x - pi / 2), as the sine is behind the cosine.
 *
 *  *pPhase goes on as for `Tone_Direct` and may not lie within pDst either. The error before rounding is that of a
 *  phase which is off by less than 1e-14 radians.
 *
 *  Statuses, in this order: `StsNullPtr` if pPhase is null; `StsTriangleMagnitude`, `StsTriangleFrequency`,
 *  `StsTriangleAsymmetry`, `StsTrianglePhase` for parameters outside of their ranges; `StsNullPtr` if pDst is null;
 *  `StsBadSize`. Then neither samples nor phase have been written.
 *  @{ */
OrpStatus orpsTriangle_Direct_16s(Orp16s* pDst, int len, Orp16s magnitude, Orp32f rFreq, Orp32f asymmetry,
                                  Orp32f* pPhase);
OrpStatus orpsTriangle_Direct_16sc(Orp16sc* pDst, int len, Orp16s magnitude, Orp32f rFreq, Orp32f asymmetry,
                                   Orp32f* pPhase);
OrpStatus orpsTriangle_Direct_32f(Orp32f* pDst, int len, Orp32f magnitude, Orp32f rFreq, Orp32f asymmetry,
                                  Orp32f* pPhase);
OrpStatus orpsTriangle_Direct_32fc(Orp32fc* pDst, int len, Orp32f magnitude, Orp32f rFreq, Orp32f asymmetry,
                                   Orp32f* pPhase);
OrpStatus orpsTriangle_Direct_64f(Orp64f* pDst, int len, Orp64f magnitude, Orp64f rFreq, Orp64f asymmetry,
                                  Orp64f* pPhase);
OrpStatus orpsTriangle_Direct_64fc(Orp64fc* pDst, int len, Orp64f magnitude, Orp64f rFreq, Orp64f asymmetry,
                                   Orp64f* pPhase);
/** @} */

/** @name Fixed-point parameters
 *  Parameters named Q15 are multiples of 2^-15: rFreqQ15 0 to 16383 (periods a sample), phaseQ15 0 to 205886 (radians),
 *  asymmetryQ15 -102943 to 102943 (radians); the magnitude is 1 at least. Samples are those of `Tone_Direct` and
 *  `Triangle_Direct` with hint 0.
 *
 *  A state holds the parameters and the number of samples so far, from which the phase is exact at any time: however a
 *  signal is divided into calls, for hours and days, its samples differ by less than 2e-14 times the magnitude before
 *  they are rounded. A state may be at any address; a copy of its bytes is a state of its own, in memory of the
 *  caller. One thread at a time may generate with a state. Its fields:
 *
 *  | bytes | tone | bytes | triangle |
 *  |---|---|---|---|
 *  | 0 | tag 0x434D4148 | 0 | tag 0x434D4149 |
 *  | 8 | magnitude (`Orp64f`) | 8 | magnitude (`Orp64f`) |
 *  | 16 | periods a sample (`Orp64f`) | 16 | periods a sample (`Orp64f`) |
 *  | 24 | phase of sample 0 (`Orp64f`) | 24 | phase of sample 0 (`Orp64f`) |
 *  | 32 | samples so far, modulo 2^64, low half first | 32 | asymmetry (`Orp64f`) |
 *  | 40 | its address if `InitAlloc` made it, else 0 (`Orp64u`) | 40 | 80 bytes of zeros |
 *  | | | 120 | samples so far, modulo 2^64, low half first, and 4 bytes of zeros |
 *  | | | 136 | its address if `InitAlloc` made it, else 0 (`Orp64u`) |
 *
 *  - `GetStateSize`: *pSize = bytes of a state. `StsNullPtr` if pSize is null.
 *  - `Init`: writes a state into memory of the caller. Statuses, in this order: `StsNullPtr`; then those of magnitude,
 *    frequency, phase, asymmetry (`StsToneMagnitude`, ... or `StsTriangleMagnitude`, ...).
 *  - `InitAlloc`: makes a state in memory of `orpMalloc` and stores its address in *ppState. The same statuses, then
 *    `StsNoMemory`; if it fails, *ppState is as before.
 *  - `Free`: releases what `InitAlloc` made, which no call accepts any more. A state in memory of the caller stays as
 *    it is, and may be used on. `StsNullPtr`, `StsSpecMismatch` if pState is no state of this generator.
 *  - `ToneQ15`, `TriangleQ15`: the next len samples. Statuses, in this order: `StsNullPtr` if pDst or pState is null,
 *    `StsBadSize`, `StsSpecMismatch` if pState is no state of this generator.
 *  - `_Direct`: the first len samples, without a state. `StsNullPtr`, `StsBadSize`, then as `Init`.
 *  @{ */
typedef struct OrpToneStateQ15_16s OrpToneStateQ15_16s;
OrpStatus orpsToneGetStateSizeQ15_16s(int* pSize);
OrpStatus orpsToneInitQ15_16s(OrpToneStateQ15_16s* pState, Orp16s magnitude, Orp16u rFreqQ15, Orp32u phaseQ15);
OrpStatus orpsToneInitAllocQ15_16s(OrpToneStateQ15_16s** ppState, Orp16s magnitude, Orp16u rFreqQ15, Orp32u phaseQ15);
OrpStatus orpsToneFree(OrpToneStateQ15_16s* pState);
OrpStatus orpsToneQ15_16s(Orp16s* pDst, int len, OrpToneStateQ15_16s* pState);
OrpStatus orpsToneQ15_Direct_16s(Orp16s* pDst, int len, Orp16s magnitude, Orp16u rFreqQ15, Orp32u phaseQ15);
typedef struct OrpTriangleStateQ15_16s OrpTriangleStateQ15_16s;
OrpStatus orpsTriangleGetStateSizeQ15_16s(int* pSize);
OrpStatus orpsTriangleInitQ15_16s(OrpTriangleStateQ15_16s* pState, Orp16s magnitude, Orp16u rFreqQ15, Orp32u phaseQ15,
                                  Orp32s asymmetryQ15);
OrpStatus orpsTriangleInitAllocQ15_16s(OrpTriangleStateQ15_16s** ppState, Orp16s magnitude, Orp16u rFreqQ15,
                                       Orp32u phaseQ15, Orp32s asymmetryQ15);
OrpStatus orpsTriangleFree(OrpTriangleStateQ15_16s* pState);
OrpStatus orpsTriangleQ15_16s(Orp16s* pDst, int len, OrpTriangleStateQ15_16s* pState);
OrpStatus orpsTriangleQ15_Direct_16s(Orp16s* pDst, int len, Orp16s magnitude, Orp16u rFreqQ15, Orp32u phaseQ15,
                                     Orp32s asymmetryQ15);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
