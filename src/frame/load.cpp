// Load of the library: chooses, once, the processor variant and the vector width that every entry uses.
#include "frame/entry.h"
#include "orpcore.h"

extern "C" {
Orp32s VariantIndex = 0;
Orp32s ownEntryIndex = 0;
}

namespace {

void chooseImplementations() {
  const uint64_t features = orpGetEnabledCpuFeatures();
  const auto has = [features](uint64_t bits) { return (features & bits) == bits; };
  VariantIndex = has(ORP_CPU_SSSE3 | ORP_CPU_MOVBE) ? 1 : 0;
  const int row = has(ORP_CPU_SSSE3 | ORP_CPU_AVX2 | ORP_CPU_AVX512) ? 2 : has(ORP_CPU_SSSE3 | ORP_CPU_AVX2) ? 1 : 0;
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
