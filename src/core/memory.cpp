// Aligned memory over a replaceable allocator.
#include <pthread.h>

#include <cstdlib>
#include <cstring>

#include "orpcore.h"

namespace {

struct Allocator {
  OrpAllocate allocate;
  OrpRelease release;
  void* context;
};

// Stands directly before every aligned block, so that orpFree needs nothing but the block.
struct Header {
  Allocator origin;
  void* base;
};

constexpr size_t kAlignment = 64;
constexpr size_t kOverhead = sizeof(Header) + kAlignment - 1;

constexpr Allocator kSystem = {[](void*, size_t bytes) { return std::malloc(bytes); },
                               [](void*, void* block) { std::free(block); }, nullptr};

// A lock of C: that of C++ can throw, and would make the library depend on the C++ runtime.
pthread_mutex_t guard = PTHREAD_MUTEX_INITIALIZER;
Allocator current = kSystem;

Allocator currentAllocator() {
  pthread_mutex_lock(&guard);
  const Allocator allocator = current;
  pthread_mutex_unlock(&guard);
  return allocator;
}

uintptr_t alignUp(uintptr_t address, uintptr_t alignment) { return (address + alignment - 1) & ~(alignment - 1); }

}  // namespace

void* orpMalloc(int64_t bytes) {
  if (bytes <= 0 || static_cast<uint64_t>(bytes) > SIZE_MAX - kOverhead) return nullptr;
  const Allocator origin = currentAllocator();
  void* const base = origin.allocate(origin.context, static_cast<size_t>(bytes) + kOverhead);
  if (!base) return nullptr;
  char* const first = static_cast<char*>(base) + sizeof(Header);
  const auto address = reinterpret_cast<uintptr_t>(first);
  char* const block = first + (alignUp(address, kAlignment) - address);
  const Header header{origin, base};
  std::memcpy(block - sizeof(Header), &header, sizeof(Header));
  return block;
}

void orpFree(void* ptr) {
  if (!ptr) return;
  Header header;
  std::memcpy(&header, static_cast<char*>(ptr) - sizeof(Header), sizeof(Header));
  header.origin.release(header.origin.context, header.base);
}

void* orpAlignPtr(void* ptr, int alignment) {
  const auto step = static_cast<uintptr_t>(alignment);
  if (alignment <= 0 || (step & (step - 1)) != 0) return ptr;
  const auto address = reinterpret_cast<uintptr_t>(ptr);
  return static_cast<char*>(ptr) + (alignUp(address, step) - address);
}

void orpSetAllocator(OrpAllocate allocate, OrpRelease release, void* context) {
  if (!allocate != !release) return;
  pthread_mutex_lock(&guard);
  current = allocate ? Allocator{allocate, release, context} : kSystem;
  pthread_mutex_unlock(&guard);
}
