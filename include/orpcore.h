/** @file
 *  orpcore: processor features, aligned memory and the number of threads, for orpSP and for its users.
 *
 *  Environment, read once, on first use; a malformed value is ignored:
 *  - `ORPCORE_CPU_FEATURES`: hexadecimal mask (with or without 0x) that the detected features are limited to. It can
 *    only take features away.
 *  - `ORPCORE_NUM_THREADS`: decimal, the number of threads to begin with (0 = one per processor that the
 *    process may use).
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

/** @name Threads
 *  A call of orpSP uses the calling thread alone until the application or the environment asks for more. Then long
 *  calls of some functions, which say so, are divided among as many threads as the function and this number allow.
 *  Results and statuses are those of one thread.
 *
 *  Helpers. orpSP starts threads of its own when the first call wants them, never more than this number less one. A
 *  call that finds them busy with other calls, or for which none can be started, runs on the calling thread. They
 *  handle no signals but those of their own faults. They work under the calling thread's floating-point environment,
 *  and raise their exceptions there. A helper without work looks for some for 2^17 ticks of the processor's
 *  time-stamp counter (30 to 130 microseconds), then sleeps. Helpers end when orpSP is unloaded; on Windows it stays
 *  loaded once it has any.
 *
 *  Waiting. A call returns when all its parts are done. The calling thread does the parts that no helper has begun,
 *  and waits for those in the middle; it spins about as long as its own part took, then sleeps. So a call takes
 *  longer than on one thread if the system takes a helper's processor away in the middle of a part, or if one is
 *  woken in vain. What is lost in this way is followed by a pause: calls run on the calling thread alone until they
 *  have taken as much time as was lost, and twice as much after each further loss, up to 64 times, until sharing has
 *  gained what the last loss cost. Therefore, however busy the machine, a sequence of calls takes at most twice the
 *  time of one thread, but for the start of the helpers and the last loss: a time slice of the system, a few
 *  milliseconds as a rule.
 *
 *  fork. The number of threads of the new process is 1 until it sets another.
 *  @{ */
/** Number of threads that one call may use. */
ORPCORE_API int orpGetNumThreads(void);
/** For orpSP: the same number. */
ORPCORE_API int ownGetNumThreads(void);

/** Sets the number of threads that one call may use: 0 = one per processor that the process may use now, negative
 *  values count as 1. More than 256 are as good as 256. */
ORPCORE_API void orpSetNumThreads(int count);
/** @} */

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
