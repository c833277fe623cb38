// Aligned vectors: every type, and byte counts that leave 32 bits.
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstring>

#include "orpcore.h"
#include "orpsp.h"

namespace {

// Calls `visit(name, function)` for each orpsMalloc.
template <class Visit>
void forEachMalloc(Visit visit) {
  visit("8u", &orpsMalloc_8u);
  visit("8s", &orpsMalloc_8s);
  visit("16u", &orpsMalloc_16u);
  visit("16s", &orpsMalloc_16s);
  visit("8sc", &orpsMalloc_8sc);
  visit("32u", &orpsMalloc_32u);
  visit("32s", &orpsMalloc_32s);
  visit("32f", &orpsMalloc_32f);
  visit("16sc", &orpsMalloc_16sc);
  visit("64s", &orpsMalloc_64s);
  visit("64f", &orpsMalloc_64f);
  visit("32sc", &orpsMalloc_32sc);
  visit("32fc", &orpsMalloc_32fc);
  visit("64sc", &orpsMalloc_64sc);
  visit("64fc", &orpsMalloc_64fc);
}

// Notes how many bytes the library asks for, and refuses them.
class RequestedBytes {
 public:
  RequestedBytes() { orpSetAllocator(&note, &release, this); }
  ~RequestedBytes() { orpSetAllocator(nullptr, nullptr, nullptr); }
  int64_t last = 0;  // with what orpMalloc adds for itself, less than 128

 private:
  static void* note(void* context, size_t bytes) {
    static_cast<RequestedBytes*>(context)->last = static_cast<int64_t>(bytes);
    return nullptr;
  }
  static void release(void*, void*) {}
};

TEST(Malloc, GivesAlignedMemoryOfTheWholeLength) {
  forEachMalloc([]<class T>(const char* name, T* (*allocate)(int)) {
    SCOPED_TRACE(name);
    for (const int len : {1, 3, 1000}) {
      T* const block = allocate(len);
      ASSERT_NE(nullptr, block);
      EXPECT_EQ(0u, reinterpret_cast<uintptr_t>(block) % 64);
      std::memset(static_cast<void*>(block), 0x5A, static_cast<size_t>(len) * sizeof(T));
      orpsFree(block);
    }
  });
  orpsFree(nullptr);
}

TEST(Malloc, AsksForElementsTimesTheirSize) {
  RequestedBytes requested;
  forEachMalloc([&]<class T>(const char* name, T* (*allocate)(int)) {
    constexpr int kLen = 4096;
    EXPECT_EQ(nullptr, allocate(kLen)) << name;
    EXPECT_GE(requested.last, kLen * int64_t{sizeof(T)}) << name;
    EXPECT_LT(requested.last, kLen * int64_t{sizeof(T)} + 128) << name;
  });
}

TEST(Malloc, RefusesLengthsThatAreNotPositive) {
  RequestedBytes requested;
  forEachMalloc([]<class T>(const char* name, T* (*allocate)(int)) {
    constexpr int kWrapsToPositive = -static_cast<int>(0xC000'0000u / (sizeof(T) > 1 ? sizeof(T) : 2));
    for (const int len : {0, -1, kWrapsToPositive, INT_MIN}) EXPECT_EQ(nullptr, allocate(len)) << name << ", " << len;
  });
  EXPECT_EQ(0, requested.last) << "orpcore was asked";
}

// The byte count is a signed 32-bit product: it may wrap to something negative, to zero or to a small number.
TEST(Malloc, ByteCountWraps) {
  EXPECT_EQ(nullptr, orpsMalloc_16s(1 << 30));
  EXPECT_EQ(nullptr, orpsMalloc_32f(1 << 30));
  EXPECT_EQ(nullptr, orpsMalloc_64f((1 << 28) + 1));
  EXPECT_EQ(nullptr, orpsMalloc_64fc(1 << 28));

  RequestedBytes requested;
  EXPECT_EQ(nullptr, orpsMalloc_64fc((1 << 28) + 3));
  EXPECT_GE(requested.last, 3 * 16);
  EXPECT_LT(requested.last, 3 * 16 + 128);
}

}  // namespace
