// Load of the library: chooses, once, the processor variant and the vector width that every entry uses.
#include "frame/entry.h"
#include "orpcore.h"
#include "simd/targets.h"

extern "C" {
Orp32s VariantIndex = 0;
Orp32s ownEntryIndex = 0;
}

namespace {

void chooseImplementations() {
  const uint64_t features = orpGetEnabledCpuFeatures();
  const auto has = [features](uint64_t bits) { return (features & bits) == bits; };
  VariantIndex = has(ORP_CPU_SSSE3 | ORP_CPU_MOVBE) ? 1 : 0;
  const bool has256 = has(ORP_CPU_SSSE3 | ORP_CPU_AVX2), has512 = has256 && has(ORP_CPU_AVX512);
  const int row = ORPSP_HAS_512 && has512 ? 2 : ORPSP_HAS_256 && (has256 || !ORPSP_HAS_128) ? 1 : 0;
  ownEntryIndex = 2 * row + VariantIndex;
  ownSetVectorBits(128 << row);
}

}  // namespace

#if defined(_WIN32)

#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
  if (reason == DLL_PROCESS_ATTACH) chooseImplementations();
  return TRUE;
}

#else

__attribute__((constructor)) static void onLoad() { chooseImplementations(); }

#endif
