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

#include "frame/entry_plain.h"

#include "exports/memory.inc"

}  // namespace orpsp
