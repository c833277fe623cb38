/** @file
 *  Version of the library and aligned vectors.
 */
#ifndef ORPSP_FRAME_H
#define ORPSP_FRAME_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** What the library says of itself. */
typedef struct {
  Orp32s major;
  Orp32s minor;
  Orp32s revision;
  Orp32s buildNumber;
  char cpuCode[4];         /**< the processor variant, "u8" or "n8", padded with zeros */
  const char* nameText;    /**< name of the library in this variant */
  const char* versionText; /**< version and build as text */
  const char* dateText;    /**< date of the version */
} OrpLibraryVersion;

/** @name Version
 *  Never fails; the record is constant and belongs to the library. The variant is chosen once, when the library is
 *  loaded: "n8" if the processor features reported by `orpGetEnabledCpuFeatures` hold both SSSE3 and MOVBE, else "u8".
 *  @{ */
const OrpLibraryVersion* orpsGetLibVersion(void);
/** @} */

/** @name Aligned vectors
 *  `orpsMalloc_<type>(len)` returns uninitialised memory for `len` elements on a 64-byte boundary, or null if `len` is
 *  not positive or there is no memory. The byte count is a signed 32-bit number: ask `orpMalloc` for blocks of 2 GiB
 *  and more (a count that overflows wraps, and no status reports it). `orpsFree` releases such a block; null is fine.
 *  @{ */
Orp8u* orpsMalloc_8u(int len);
Orp8s* orpsMalloc_8s(int len);
Orp16u* orpsMalloc_16u(int len);
Orp16s* orpsMalloc_16s(int len);
Orp8sc* orpsMalloc_8sc(int len);
Orp32u* orpsMalloc_32u(int len);
Orp32s* orpsMalloc_32s(int len);
Orp32f* orpsMalloc_32f(int len);
Orp16sc* orpsMalloc_16sc(int len);
Orp64s* orpsMalloc_64s(int len);
Orp64f* orpsMalloc_64f(int len);
Orp32sc* orpsMalloc_32sc(int len);
Orp32fc* orpsMalloc_32fc(int len);
Orp64sc* orpsMalloc_64sc(int len);
Orp64fc* orpsMalloc_64fc(int len);
void orpsFree(void* ptr);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
