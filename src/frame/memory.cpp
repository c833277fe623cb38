// Aligned vectors for callers.
#include "frame/entry.h"
#include "orpcore.h"
#include "orpsp/frame.h"

namespace orpsp {
namespace {

// The byte count is a wrapping signed 32-bit product; orpMalloc refuses what is not positive.
template <class T>
T* allocate(int len) {
  if (len <= 0) return nullptr;
  const auto bytes = static_cast<int32_t>(static_cast<uint32_t>(len) * sizeof(T));
  return static_cast<T*>(orpMalloc(bytes));
}

void release(void* ptr) { orpFree(ptr); }

}  // namespace

#define ORPS_EXPORT(name, implementation)                  \
  constexpr decltype(&::name) own_##name = implementation; \
  ORPS_ENTRY(name, own_##name, own_##name, own_##name, own_##name, own_##name, own_##name)
#include "exports/memory.inc"

}  // namespace orpsp
