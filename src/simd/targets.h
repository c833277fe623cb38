// The vector widths that kernels are compiled for. Include before anything of Highway.
#pragma once

#define HWY_DISABLED_TARGETS (~(HWY_SSSE3 | HWY_AVX2 | HWY_AVX3))
