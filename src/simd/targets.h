// The vector widths that kernels are compiled for. Include before anything of Highway.
//
// ORPSP_WIDTHS, set by the build, is the sum of those that are built: 128 + 256 + 512 in a release. A build with fewer
// is for development and for tests under sanitizers; what it lacks is done by the nearest width that it has.
#pragma once

#define ORPSP_HAS_128 ((ORPSP_WIDTHS & 128) != 0)
#define ORPSP_HAS_256 ((ORPSP_WIDTHS & 256) != 0)
#define ORPSP_HAS_512 ((ORPSP_WIDTHS & 512) != 0)

#define HWY_DISABLED_TARGETS \
  (~((ORPSP_HAS_128 ? HWY_SSSE3 : 0) | (ORPSP_HAS_256 ? HWY_AVX2 : 0) | (ORPSP_HAS_512 ? HWY_AVX3 : 0)))

// The namespaces of 128, 256 and 512 bits.
#if ORPSP_HAS_128
#define ORPSP_NAMESPACE_128 N_SSSE3
#elif ORPSP_HAS_256
#define ORPSP_NAMESPACE_128 N_AVX2
#else
#define ORPSP_NAMESPACE_128 N_AVX3
#endif
#if ORPSP_HAS_256
#define ORPSP_NAMESPACE_256 N_AVX2
#else
#define ORPSP_NAMESPACE_256 ORPSP_NAMESPACE_128
#endif
#if ORPSP_HAS_512
#define ORPSP_NAMESPACE_512 N_AVX3
#else
#define ORPSP_NAMESPACE_512 ORPSP_NAMESPACE_256
#endif
