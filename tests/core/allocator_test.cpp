// Aligned memory and the allocators behind it.
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <set>
#include <thread>
#include <vector>

#include "orpcore.h"
#include "orpsp.h"

namespace {

// An allocator that keeps account, fails on demand and gives badly aligned blocks.
class Arena {
 public:
  explicit Arena(size_t offset = 0) : offset_(offset) {}
  void install() { orpSetAllocator(&allocate, &release, this); }
  size_t live() const { return live_.size(); }
  size_t lastRequest = 0;
  bool fails = false;

  static void* allocate(void* context, size_t bytes) {
    auto* const self = static_cast<Arena*>(context);
    self->lastRequest = bytes;
    if (self->fails) return nullptr;
    char* const block = static_cast<char*>(std::malloc(bytes + self->offset_)) + self->offset_;
    self->live_.insert(block);
    return block;
  }
  static void release(void* context, void* block) {
    auto* const self = static_cast<Arena*>(context);
    EXPECT_EQ(1u, self->live_.erase(block)) << "released by an allocator that did not allocate it";
    std::free(static_cast<char*>(block) - self->offset_);
  }

 private:
  size_t offset_;
  std::set<void*> live_;
};

class Allocator : public testing::Test {
 protected:
  void TearDown() override { orpSetAllocator(nullptr, nullptr, nullptr); }
};

bool isAligned(const void* block) { return reinterpret_cast<uintptr_t>(block) % 64 == 0; }

TEST_F(Allocator, BlocksAreAlignedWhateverTheAllocatorGives) {
  for (const size_t offset : {0U, 1U, 16U, 63U}) {
    Arena arena(offset);
    arena.install();
    for (const int64_t bytes : {1, 63, 64, 65, 100'000}) {
      void* const block = orpMalloc(bytes);
      ASSERT_NE(nullptr, block);
      EXPECT_TRUE(isAligned(block)) << bytes << " bytes, offset " << offset;
      EXPECT_LT(arena.lastRequest, static_cast<size_t>(bytes) + 128);
      std::memset(block, 0x5A, static_cast<size_t>(bytes));
      orpFree(block);
      EXPECT_EQ(0u, arena.live());
    }
  }
}

TEST_F(Allocator, RefusesSizesWithoutAsking) {
  Arena arena;
  arena.install();
  for (const int64_t bytes : {int64_t{0}, int64_t{-1}, INT64_MIN}) EXPECT_EQ(nullptr, orpMalloc(bytes)) << bytes;
  EXPECT_EQ(0u, arena.lastRequest);
  orpFree(nullptr);
}

TEST_F(Allocator, FailureIsANullPointer) {
  EXPECT_EQ(nullptr, orpMalloc(INT64_MAX)) << "more than there is";
  Arena arena;
  arena.install();
  arena.fails = true;
  EXPECT_EQ(nullptr, orpMalloc(1));
  EXPECT_EQ(nullptr, orpsMalloc_32f(100)) << "the library uses it too";
  arena.fails = false;
  void* const block = orpMalloc(1);
  EXPECT_NE(nullptr, block) << "and recovers";
  orpFree(block);
}

TEST_F(Allocator, BlocksRememberTheirAllocator) {
  void* const fromSystem = orpMalloc(10);
  Arena first, second;
  first.install();
  void* const fromFirst = orpMalloc(10);
  Orp8u* const vectorFromFirst = orpsMalloc_8u(10);
  second.install();
  void* const fromSecond = orpMalloc(10);
  EXPECT_EQ(2u, first.live());
  EXPECT_EQ(1u, second.live());
  orpFree(fromFirst);
  orpsFree(vectorFromFirst);
  orpFree(fromSystem);
  orpSetAllocator(nullptr, nullptr, nullptr);
  orpFree(fromSecond);
  EXPECT_EQ(0u, first.live());
  EXPECT_EQ(0u, second.live());
  orpFree(orpMalloc(10));
  EXPECT_EQ(0u, second.live()) << "back to the system's";
}

TEST_F(Allocator, OneFunctionAloneChangesNothing) {
  Arena arena, other;
  arena.install();
  orpSetAllocator(&Arena::allocate, nullptr, &other);
  orpSetAllocator(nullptr, &Arena::release, &other);
  void* const block = orpMalloc(10);
  EXPECT_EQ(1u, arena.live());
  EXPECT_EQ(0u, other.live());
  orpFree(block);
}

TEST_F(Allocator, ServesManyThreads) {
  std::vector<std::thread> threads;
  std::vector<int> faults(4, 0);
  for (int& wrong : faults) {
    threads.emplace_back([&wrong] {
      for (int i = 1; i <= 1000; ++i) {
        void* const block = orpMalloc(i);
        wrong += !block || !isAligned(block);
        orpFree(block);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(std::vector<int>(4, 0), faults);
}

TEST(AlignPtr, GoesUpToTheNextMultiple) {
  alignas(128) char block[256];
  for (const int alignment : {1, 2, 16, 32, 64, 128}) {
    EXPECT_EQ(block, orpAlignPtr(block, alignment)) << alignment;
    EXPECT_EQ(block + alignment, orpAlignPtr(block + 1, alignment)) << alignment;
    EXPECT_EQ(block + 128, orpAlignPtr(block + 128 - alignment + 1, alignment)) << alignment;
  }
}

TEST(AlignPtr, OtherAlignmentsChangeNothing) {
  char block[8];
  for (const int alignment : {0, 3, 48, -64, INT_MIN})
    EXPECT_EQ(block + 1, orpAlignPtr(block + 1, alignment)) << alignment;
}

}  // namespace
