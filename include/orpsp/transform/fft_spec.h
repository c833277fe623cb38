/** @file
 *  Specifications of power-of-two FFTs: sizes, initialisation, release.
 *
 *  A specification fixes element type, length N = 2^order, normalisation and hint, and holds the tables that transforms
 *  read. It is written by `FFTInit` or `FFTInitAlloc` and only read from then on, so that one specification may serve
 *  any number of threads at once. A transform refuses a specification of another type, or one that was released.
 *
 *  `C_..c` types transform interleaved complex elements, `C_16s`, `C_32f`, `C_64f` and `C_32s` separate arrays of real
 *  and imaginary parts, `R_...` types real elements, whose spectra are packed (`orpsp/transform/spectra.h`). Integer
 *  types compute in floating point: those of 16 bits and `R_16s32s` in float, the others of 32 bits in double.
 */
#ifndef ORPSP_TRANSFORM_FFT_SPEC_H
#define ORPSP_TRANSFORM_FFT_SPEC_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name Specifications
 *  Highest order, and the 32-bit tag that every specification begins with:
 *
 *  | type | tag | order |   | type | tag | order |   | type | tag | order |
 *  |---|---|---|---|---|---|---|---|---|---|---|
 *  | C_16sc | 1 | 28 |   | C_32f | 5 | 28 |   | R_64f | 9 | 28 |
 *  | C_16s | 2 | 28 |   | R_32f | 6 | 29 |   | C_32sc | 0x434D414C | 27 |
 *  | R_16s | 3 | 29 |   | C_64fc | 7 | 27 |   | C_32s | 0x434D414D | 27 |
 *  | C_32fc | 4 | 28 |   | C_64f | 8 | 27 |   | R_32s | 0x434D414E | 28 |
 *  | | | |   | | | |   | R_16s32s | 0x434D414F | 29 |
 *
 *  The fields, 32-bit integers unless said: tag; order; 1 if the forward transform is multiplied by the factor, else 0;
 *  the same for the inverse; the factor (float, or double where the type computes in double); hint; bytes of work that
 *  a transform needs; 1 if `FFTInitAlloc` made the memory, else 0; then pointers to tables.
 *  @{ */
typedef struct OrpFftSpec_C_16sc OrpFftSpec_C_16sc;
typedef struct OrpFftSpec_C_16s OrpFftSpec_C_16s;
typedef struct OrpFftSpec_R_16s OrpFftSpec_R_16s;
typedef struct OrpFftSpec_C_32fc OrpFftSpec_C_32fc;
typedef struct OrpFftSpec_C_32f OrpFftSpec_C_32f;
typedef struct OrpFftSpec_R_32f OrpFftSpec_R_32f;
typedef struct OrpFftSpec_C_64fc OrpFftSpec_C_64fc;
typedef struct OrpFftSpec_C_64f OrpFftSpec_C_64f;
typedef struct OrpFftSpec_R_64f OrpFftSpec_R_64f;
typedef struct OrpFftSpec_C_32sc OrpFftSpec_C_32sc;
typedef struct OrpFftSpec_C_32s OrpFftSpec_C_32s;
typedef struct OrpFftSpec_R_32s OrpFftSpec_R_32s;
typedef struct OrpFftSpec_R_16s32s OrpFftSpec_R_16s32s;
/** @} */

/** @name FFTGetSize
 *  Bytes that a specification needs (*pSizeSpec), that `FFTInit` needs while it works (*pSizeInit, may be 0) and that
 *  every transform needs as its work buffer (*pSizeBuf, may be 0).
 *
 *  `flag` is the normalisation: 1 divides the forward transform by N, 2 the inverse one, 4 both by sqrt(N), 8 none.
 *  `hint` is stored and never checked. With hint 0 or 1, C_16s, C_16sc and R_16s of orders 1 to 3 take less memory.
 *
 *  Below, a(x) is x rounded up to a multiple of 64, quotients are rounded down, and Q(N) = a(4 (N / 4) + 4).
 *
 *  | C_32fc, C_32f | spec | init | work |
 *  |---|---|---|---|
 *  | order 0 to 5 | 200 | 0 | 0 |
 *  | 6 to 10 | a(8N + 8) + Q(N) + 256 | 0 | a(8N) + 64 |
 *  | 11, 12 | a(8N + 8) + Q(N) + 256 | Q(N) + 64 | a(8N) + 64 |
 *  | 13 to 17 | a(8N + 8) + a(N / 2) + Q(N) + 256 | Q(N) + 64 | a(8N) + 131072 + 64 |
 *  | 18 to 28 | S + 256 | Q(N) + 64 | W + 64 |
 *
 *  S and W: let s = 4, c = 10 for orders 18 and 19, s = 8, c = 14 above, and M = 2^(order - s). S' and W' are those of
 *  order - s if that is 18 or more, else S' = a(8M + 8) and W' = a(8M). Then S = S' + 4N + Q(N) and
 *  W = max(W', 8 * 2^c) for order 18; S = S' + 4N + 2^(order - 10) + 4160 and W = max(W', 8 * 2^c, 65536) above.
 *
 *  | C_64fc, C_64f | spec | init | work |
 *  |---|---|---|---|
 *  | order 0 to 5 | 200 | 0 | 0 |
 *  | 6 to 10 | a(16N + 16) + Q(N) + 256 | 0 | a(16N) + 64 |
 *  | 11 | a(16N + 16) + Q(N) + 256 | a(2N + 8) + 64 | a(16N) + 64 |
 *  | 12 to 16 | a(16N + 16) + a(N) + Q(N) + 256 | a(2N + 8) + 64 | a(16N) + 131072 + 64 |
 *  | 17 to 27 | S + 256 | a(2N + 8) + 64 | W + 64 |
 *
 *  S and W: s = 4, c = 10 for orders 17 and 18, s = 8, c = 14 above. S' and W' are those of order - s if that is 17 or
 *  more, else S' = a(16M + 16) and W' = a(16M). Then S = S' + 8N + Q(N) and W = max(W', 16 * 2^c) for order 17;
 *  S = S' + 8N + 2^(order - 9) + 8256 and W = max(W', 16 * 2^c, 131072) above.
 *
 *  Real types: H is what the complex type of order - 1 takes for its specification without 256 (nothing up to order 6).
 *  R_32f: T = a(8 (N / 4)) up to order 18, a(2^(order - 9) + 8192) above, B = Q(N). R_64f: T = a(16 (N / 4)) up to
 *  order 17, a(2^(order - 8) + 16384) above, B = a(2N + 8).
 *
 *  | R_32f, R_64f | spec | init | work |
 *  |---|---|---|---|
 *  | order 0 to 4 | 200 | 0 | 0 |
 *  | 5, 6 | 2T + 256 | 0 | 0 |
 *  | 7 to 10 | H + 2T + 256 | 0 | that of the complex type of order - 1 |
 *  | 11 and above | H + 2T + 256 | B + 64 | that of the complex type of order - 1 |
 *
 *  Integer types add to the floating-point type F that they compute with (64+ stands for 64 if the rest is not 0):
 *
 *  | integers | spec | init | work |
 *  |---|---|---|---|
 *  | C_16s, C_16sc, R_16s of order 0 | 136 | 0 | 0 |
 *  | C_16s, C_16sc, order 1 to 3, hint 0 or 1 | a(8N) + Q(N) + 192 | a(2 (N / 4) + 2) + 64 | 8N + 4N + 64 |
 *  | R_16s, order 1 to 3, hint 0 or 1 | a(4N) + a(4 (N / 8) + 4) + a(8N) + 192 | a(2 (N / 4) + 2) + 64 | 4N + 8 + 64 |
 *  | C_16s, C_16sc else (F = C_32fc) | F + 192 | F + 64 | F + 8N + 64 |
 *  | R_16s else (F = R_32f) | F + 192 | F + 64 | F + 4N + 8 + 64 |
 *  | R_16s32s (F = R_32f) | F + 128 | F + 64+ | F + 4N + 8 + 64 |
 *  | C_32s, C_32sc (F = C_64fc) | F + 128 | F + 64+ | F + 16N + 64 |
 *  | R_32s (F = R_64f) | F + 128 | F + 64+ | F + 8N + 16 + 64 |
 *
 *  Work sizes above INT_MAX, those of the integer types' highest orders, are given as 0: such transforms make room
 *  themselves.
 *
 *  Statuses, in this order: `StsOk`, `StsFftOrder` (order negative or above 30), `StsNullPtr`, `StsFftFlag` (flag not
 *  1, 2, 4 or 8), `StsFftOrder` (order above the type's highest). Nothing is written then.
 *  @{ */
OrpStatus orpsFFTGetSize_C_16sc(int order, int flag, int hint, int* pSizeSpec, int* pSizeInit, int* pSizeBuf);
OrpStatus orpsFFTGetSize_C_16s(int order, int flag, int hint, int* pSizeSpec, int* pSizeInit, int* pSizeBuf);
OrpStatus orpsFFTGetSize_R_16s(int order, int flag, int hint, int* pSizeSpec, int* pSizeInit, int* pSizeBuf);
OrpStatus orpsFFTGetSize_C_32fc(int order, int flag, int hint, int* pSizeSpec, int* pSizeInit, int* pSizeBuf);
OrpStatus orpsFFTGetSize_C_32f(int order, int flag, int hint, int* pSizeSpec, int* pSizeInit, int* pSizeBuf);
OrpStatus orpsFFTGetSize_R_32f(int order, int flag, int hint, int* pSizeSpec, int* pSizeInit, int* pSizeBuf);
OrpStatus orpsFFTGetSize_C_64fc(int order, int flag, int hint, int* pSizeSpec, int* pSizeInit, int* pSizeBuf);
OrpStatus orpsFFTGetSize_C_64f(int order, int flag, int hint, int* pSizeSpec, int* pSizeInit, int* pSizeBuf);
OrpStatus orpsFFTGetSize_R_64f(int order, int flag, int hint, int* pSizeSpec, int* pSizeInit, int* pSizeBuf);
OrpStatus orpsFFTGetSize_C_32sc(int order, int flag, int hint, int* pSizeSpec, int* pSizeInit, int* pSizeBuf);
OrpStatus orpsFFTGetSize_C_32s(int order, int flag, int hint, int* pSizeSpec, int* pSizeInit, int* pSizeBuf);
OrpStatus orpsFFTGetSize_R_32s(int order, int flag, int hint, int* pSizeSpec, int* pSizeInit, int* pSizeBuf);
OrpStatus orpsFFTGetSize_R_16s32s(int order, int flag, int hint, int* pSizeSpec, int* pSizeInit, int* pSizeBuf);
/** @} */

/** @name FFTInit
 *  Builds a specification in memory of the caller: pSpec holds *pSizeSpec bytes of `FFTGetSize` at any address,
 *  pSpecBuffer *pSizeInit bytes, needed by orders 11 and above and during the call only; it may be null below. The
 *  specification stands at the first multiple of 64 in pSpec; that address is stored in *ppFFTSpec. Its tables must
 *  not be moved, and it lives as long as its memory.
 *
 *  The factor is 1 / N for flags 1 and 2, 1 / sqrt(N) for flag 4, in double correctly rounded. In float the latter is
 *  made of the processor's approximate reciprocal square root r as (r * -0.5) * (N * r * r - 3), each operation rounded
 *  once, so that its last bit may differ from that of 1 / sqrt(N).
 *
 *  Twiddle factors come from sines that are rounded once, in double with an error below 0.501 units in the last place.
 *
 *  Statuses, in this order: `StsOk`, `StsNullPtr` (ppFFTSpec), `StsFftOrder` (order negative or above the type's
 *  highest), `StsNullPtr` (pSpec), `StsFftFlag`, `StsNullPtr` (pSpecBuffer, order 11 and above). A failure leaves
 *  ppFFTSpec's value as it is; after `StsFftFlag` or the last `StsNullPtr` pSpec holds a specification with tag 0.
 *  @{ */
OrpStatus orpsFFTInit_C_16sc(OrpFftSpec_C_16sc** ppFFTSpec, int order, int flag, int hint, Orp8u* pSpec,
                             Orp8u* pSpecBuffer);
OrpStatus orpsFFTInit_C_16s(OrpFftSpec_C_16s** ppFFTSpec, int order, int flag, int hint, Orp8u* pSpec,
                            Orp8u* pSpecBuffer);
OrpStatus orpsFFTInit_R_16s(OrpFftSpec_R_16s** ppFFTSpec, int order, int flag, int hint, Orp8u* pSpec,
                            Orp8u* pSpecBuffer);
OrpStatus orpsFFTInit_C_32fc(OrpFftSpec_C_32fc** ppFFTSpec, int order, int flag, int hint, Orp8u* pSpec,
                             Orp8u* pSpecBuffer);
OrpStatus orpsFFTInit_C_32f(OrpFftSpec_C_32f** ppFFTSpec, int order, int flag, int hint, Orp8u* pSpec,
                            Orp8u* pSpecBuffer);
OrpStatus orpsFFTInit_R_32f(OrpFftSpec_R_32f** ppFFTSpec, int order, int flag, int hint, Orp8u* pSpec,
                            Orp8u* pSpecBuffer);
OrpStatus orpsFFTInit_C_64fc(OrpFftSpec_C_64fc** ppFFTSpec, int order, int flag, int hint, Orp8u* pSpec,
                             Orp8u* pSpecBuffer);
OrpStatus orpsFFTInit_C_64f(OrpFftSpec_C_64f** ppFFTSpec, int order, int flag, int hint, Orp8u* pSpec,
                            Orp8u* pSpecBuffer);
OrpStatus orpsFFTInit_R_64f(OrpFftSpec_R_64f** ppFFTSpec, int order, int flag, int hint, Orp8u* pSpec,
                            Orp8u* pSpecBuffer);
OrpStatus orpsFFTInit_C_32sc(OrpFftSpec_C_32sc** ppFFTSpec, int order, int flag, int hint, Orp8u* pSpec,
                             Orp8u* pSpecBuffer);
OrpStatus orpsFFTInit_C_32s(OrpFftSpec_C_32s** ppFFTSpec, int order, int flag, int hint, Orp8u* pSpec,
                            Orp8u* pSpecBuffer);
OrpStatus orpsFFTInit_R_32s(OrpFftSpec_R_32s** ppFFTSpec, int order, int flag, int hint, Orp8u* pSpec,
                            Orp8u* pSpecBuffer);
OrpStatus orpsFFTInit_R_16s32s(OrpFftSpec_R_16s32s** ppFFTSpec, int order, int flag, int hint, Orp8u* pSpec,
                               Orp8u* pSpecBuffer);
/** @} */

/** @name FFTInitAlloc
 *  Builds a specification in memory of `orpMalloc` and stores its address in *ppFFTSpec; `FFTFree` releases it.
 *  Statuses, in this order: `StsOk`, `StsNullPtr` (ppFFTSpec), those of `FFTGetSize`, `StsNoMemory`. On a failure
 *  *ppFFTSpec keeps its value and no memory stays allocated.
 *  @{ */
OrpStatus orpsFFTInitAlloc_C_16sc(OrpFftSpec_C_16sc** ppFFTSpec, int order, int flag, int hint);
OrpStatus orpsFFTInitAlloc_C_16s(OrpFftSpec_C_16s** ppFFTSpec, int order, int flag, int hint);
OrpStatus orpsFFTInitAlloc_R_16s(OrpFftSpec_R_16s** ppFFTSpec, int order, int flag, int hint);
OrpStatus orpsFFTInitAlloc_C_32fc(OrpFftSpec_C_32fc** ppFFTSpec, int order, int flag, int hint);
OrpStatus orpsFFTInitAlloc_C_32f(OrpFftSpec_C_32f** ppFFTSpec, int order, int flag, int hint);
OrpStatus orpsFFTInitAlloc_R_32f(OrpFftSpec_R_32f** ppFFTSpec, int order, int flag, int hint);
OrpStatus orpsFFTInitAlloc_C_64fc(OrpFftSpec_C_64fc** ppFFTSpec, int order, int flag, int hint);
OrpStatus orpsFFTInitAlloc_C_64f(OrpFftSpec_C_64f** ppFFTSpec, int order, int flag, int hint);
OrpStatus orpsFFTInitAlloc_R_64f(OrpFftSpec_R_64f** ppFFTSpec, int order, int flag, int hint);
OrpStatus orpsFFTInitAlloc_C_32sc(OrpFftSpec_C_32sc** ppFFTSpec, int order, int flag, int hint);
OrpStatus orpsFFTInitAlloc_C_32s(OrpFftSpec_C_32s** ppFFTSpec, int order, int flag, int hint);
OrpStatus orpsFFTInitAlloc_R_32s(OrpFftSpec_R_32s** ppFFTSpec, int order, int flag, int hint);
OrpStatus orpsFFTInitAlloc_R_16s32s(OrpFftSpec_R_16s32s** ppFFTSpec, int order, int flag, int hint);
/** @} */

/** @name FFTGetBufSize
 *  *pBufferSize = the bytes of a transform's work buffer: *pSizeBuf of `FFTGetSize`.
 *  Statuses, in this order: `StsOk`, `StsNullPtr`, `StsSpecMismatch` (the specification has another type, or was
 *  released).
 *  @{ */
OrpStatus orpsFFTGetBufSize_C_16sc(const OrpFftSpec_C_16sc* pFFTSpec, int* pBufferSize);
OrpStatus orpsFFTGetBufSize_C_16s(const OrpFftSpec_C_16s* pFFTSpec, int* pBufferSize);
OrpStatus orpsFFTGetBufSize_R_16s(const OrpFftSpec_R_16s* pFFTSpec, int* pBufferSize);
OrpStatus orpsFFTGetBufSize_C_32fc(const OrpFftSpec_C_32fc* pFFTSpec, int* pBufferSize);
OrpStatus orpsFFTGetBufSize_C_32f(const OrpFftSpec_C_32f* pFFTSpec, int* pBufferSize);
OrpStatus orpsFFTGetBufSize_R_32f(const OrpFftSpec_R_32f* pFFTSpec, int* pBufferSize);
OrpStatus orpsFFTGetBufSize_C_64fc(const OrpFftSpec_C_64fc* pFFTSpec, int* pBufferSize);
OrpStatus orpsFFTGetBufSize_C_64f(const OrpFftSpec_C_64f* pFFTSpec, int* pBufferSize);
OrpStatus orpsFFTGetBufSize_R_64f(const OrpFftSpec_R_64f* pFFTSpec, int* pBufferSize);
OrpStatus orpsFFTGetBufSize_C_32sc(const OrpFftSpec_C_32sc* pFFTSpec, int* pBufferSize);
OrpStatus orpsFFTGetBufSize_C_32s(const OrpFftSpec_C_32s* pFFTSpec, int* pBufferSize);
OrpStatus orpsFFTGetBufSize_R_32s(const OrpFftSpec_R_32s* pFFTSpec, int* pBufferSize);
OrpStatus orpsFFTGetBufSize_R_16s32s(const OrpFftSpec_R_16s32s* pFFTSpec, int* pBufferSize);
/** @} */

/** @name FFTFree
 *  Sets the tag to 0, so that nothing accepts the specification any more, and releases the memory if the specification
 *  stands where `FFTInitAlloc` put it. Memory of the caller stays the caller's, and so does that of a copy: a copy of a
 *  specification's bytes owns nothing, reads the tables of the original, and may be used as long as these are there.
 *  Statuses, in this order: `StsOk`, `StsNullPtr`, `StsSpecMismatch` (the specification has another type, or was
 *  released).
 *  @{ */
OrpStatus orpsFFTFree_C_16sc(OrpFftSpec_C_16sc* pFFTSpec);
OrpStatus orpsFFTFree_C_16s(OrpFftSpec_C_16s* pFFTSpec);
OrpStatus orpsFFTFree_R_16s(OrpFftSpec_R_16s* pFFTSpec);
OrpStatus orpsFFTFree_C_32fc(OrpFftSpec_C_32fc* pFFTSpec);
OrpStatus orpsFFTFree_C_32f(OrpFftSpec_C_32f* pFFTSpec);
OrpStatus orpsFFTFree_R_32f(OrpFftSpec_R_32f* pFFTSpec);
OrpStatus orpsFFTFree_C_64fc(OrpFftSpec_C_64fc* pFFTSpec);
OrpStatus orpsFFTFree_C_64f(OrpFftSpec_C_64f* pFFTSpec);
OrpStatus orpsFFTFree_R_64f(OrpFftSpec_R_64f* pFFTSpec);
OrpStatus orpsFFTFree_C_32sc(OrpFftSpec_C_32sc* pFFTSpec);
OrpStatus orpsFFTFree_C_32s(OrpFftSpec_C_32s* pFFTSpec);
OrpStatus orpsFFTFree_R_32s(OrpFftSpec_R_32s* pFFTSpec);
OrpStatus orpsFFTFree_R_16s32s(OrpFftSpec_R_16s32s* pFFTSpec);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
