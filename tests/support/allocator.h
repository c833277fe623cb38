// An allocator that counts the library's blocks, and fails when it should.
#pragma once

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <vector>

#include "orpcore.h"

namespace orptest {

// While it lives, the library's memory comes from it. Fails from the given allocation on. Blocks that the library has
// released can be read until it is destroyed, if it keeps them.
class CountingAllocator {
 public:
  explicit CountingAllocator(int failsAt = INT_MAX, bool keeps = false) : failsAt_(failsAt), keeps_(keeps) {
    orpSetAllocator([](void* self, size_t bytes) { return static_cast<CountingAllocator*>(self)->allocate(bytes); },
                    [](void* self, void* block) { static_cast<CountingAllocator*>(self)->release(block); }, this);
  }
  ~CountingAllocator() {
    orpSetAllocator(nullptr, nullptr, nullptr);
    EXPECT_EQ(0, live) << "blocks leaked";
    for (void* const block : kept_) std::free(block);
  }
  CountingAllocator(const CountingAllocator&) = delete;
  CountingAllocator& operator=(const CountingAllocator&) = delete;

  int requests = 0, live = 0;

 private:
  void* allocate(size_t bytes) {
    if (requests++ >= failsAt_) return nullptr;
    ++live;
    return std::malloc(bytes);
  }
  void release(void* block) {
    --live;
    keeps_ ? kept_.push_back(block) : std::free(block);
  }

  int failsAt_;
  bool keeps_;
  std::vector<void*> kept_;
};

}  // namespace orptest
