/** @file
 *  orpcore: processor features, aligned memory and the number of threads, for orpSP and for its users.
 *
 *  Environment, read once, on first use; a malformed value is ignored:
 *  - `ORPCORE_CPU_FEATURES`: hexadecimal mask (with or without 0x) that the detected features are limited to. It can
 *    only take features away.
 *  - `ORPCORE_NUM_THREADS`: decimal, the number of threads to begin with (0 = one per processor core).
 *
 *  Every function may be called from any thread.
 */
#ifndef ORPCORE_H
#define ORPCORE_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#ifndef ORPCORE_API
#define ORPCORE_API /* how the library's own build exports its functions; nothing for its users */
#endif

/** Bits of the feature mask. Wide registers are reported only if the operating system saves them. */
#define ORP_CPU_SSSE3 0x10u   /**< SSSE3: what orpSP requires */
#define ORP_CPU_MOVBE 0x20u   /**< MOVBE */
#define ORP_CPU_AVX2 0x100u   /**< AVX2 with FMA, BMI1, BMI2, F16C, AES and PCLMULQDQ: 256-bit kernels */
#define ORP_CPU_AVX512 0x200u /**< AVX-512 F, VL, DQ, BW and CD beside AVX2: 512-bit kernels */

/** The enabled features: those of the processor, limited by the environment and by `orpSetCpuFeatures`. */
ORPCORE_API uint64_t orpGetEnabledCpuFeatures(void);

/** Limits the enabled features to those in `mask`; ~0 lifts the limit. Features that the processor lacks or that the
 *  environment took away do not come back. orpSP reads the mask once, while it is being loaded: a program that limits
 *  it loads orpcore first, calls this, and then loads orpSP. */
ORPCORE_API void orpSetCpuFeatures(uint64_t mask);

/** Register width in bits (128, 256 or 512) of the kernels that orpSP chose when it was loaded, 0 if it is not. */
ORPCORE_API int orpGetVectorBits(void);
/** For orpSP alone: notes the width it chose. */
ORPCORE_API void ownSetVectorBits(int bits);

/** Number of threads that one call of orpSP may use; 1 until the application or the environment asks for more. */
ORPCORE_API int ownGetNumThreads(void);

/** Sets the number of threads that one call may use: 0 = one per processor core, negative values count as 1. */
ORPCORE_API void orpSetNumThreads(int count);

/** `bytes` bytes of uninitialised memory on a 64-byte boundary; null if `bytes` is not positive or there is no memory.
 *  Costs less than 128 bytes more than asked for. */
ORPCORE_API void* orpMalloc(int64_t bytes);

/** Releases a block of `orpMalloc`; null is fine. */
ORPCORE_API void orpFree(void* ptr);

/** The first address at or above `ptr` that is a multiple of `alignment` (a power of two; anything else gives `ptr`).
 */
ORPCORE_API void* orpAlignPtr(void* ptr, int alignment);

/** Allocates `bytes` bytes of any alignment, or returns null. */
typedef void* (*OrpAllocate)(void* context, size_t bytes);
/** Releases what the matching OrpAllocate returned. */
typedef void (*OrpRelease)(void* context, void* block);

/** Makes `orpMalloc` take its memory from `allocate`. Both functions null: back to the system's allocator; one null: no
 *  effect. A block remembers the allocator that it came from, so blocks of an earlier allocator may still be released;
 *  the functions and the context must live until the last of their blocks is. */
ORPCORE_API void orpSetAllocator(OrpAllocate allocate, OrpRelease release, void* context);

#ifdef __cplusplus
}
#endif

#endif
