// Arrays handed to the library: exactly sized, at any address, between pages that nobody may touch.
//
//   Guarded<Orp16s> src(values), dst(len), odd(len, 1);    // dst and odd hold a pattern
//   ASSERT_EQ(StsOk, orpsAbs_16s(src.data(), dst.data(), len));
//   EXPECT_EQ(expected, dst.values());                     // destructors look after the guards
//
// An array ends directly in front of a forbidden page, or, one in four, begins directly behind one: what is read beyond
// ends the program. (Masked loads touch nothing beyond.) With a misalignment it ends up to 63 bytes in front of the
// page. A write between array and page fails the test when the array is destroyed; AddressSanitizer stops at the first
// byte behind the array, reads included (in front of it at the first byte below a multiple of eight).
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <vector>

#if defined(__has_feature)
#if __has_feature(address_sanitizer) && !defined(__SANITIZE_ADDRESS__)
#define __SANITIZE_ADDRESS__ 1  // as GCC has it
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
// The sanitizer's own functions; not every compiler comes with their header.
extern "C" void __asan_poison_memory_region(const volatile void* address, size_t bytes);
extern "C" void __asan_unpoison_memory_region(const volatile void* address, size_t bytes);
#define ASAN_POISON_MEMORY_REGION(address, bytes) __asan_poison_memory_region(address, bytes)
#define ASAN_UNPOISON_MEMORY_REGION(address, bytes) __asan_unpoison_memory_region(address, bytes)
#else
#define ASAN_POISON_MEMORY_REGION(address, bytes) static_cast<void>(0)
#define ASAN_UNPOISON_MEMORY_REGION(address, bytes) static_cast<void>(0)
#endif

namespace orptest {

// Memory between two forbidden pages; given back, it serves the next array.
struct Pages {
  unsigned char* begin;
  size_t bytes;
};
Pages takePages(size_t bytes);
void giveBack(const Pages& pages);
bool nextBeginsAtPage();  // one array in four

inline constexpr size_t kAnyAddress = 0;

template <class T>
class Guarded {
 public:
  // `len` elements filled with the pattern, beside a page or `misalignment` bytes (any number) behind a 64-byte
  // boundary.
  explicit Guarded(size_t len, size_t misalignment = kAnyAddress)
      : size_(len), pages_(takePages(len * sizeof(T) + kGuard)) {
    const size_t room = pages_.bytes - len * sizeof(T);
    front_ = room;
    if (misalignment != kAnyAddress) {
      front_ -= (room - misalignment) % kGuard;
    } else if (nextBeginsAtPage()) {
      front_ = 0;
    }
    for (size_t i = guardBegin(); i < guardEnd(); ++i) pages_.begin[i] = pattern(i);
    ASAN_POISON_MEMORY_REGION(pages_.begin + guardBegin(), front_ - guardBegin());
    ASAN_POISON_MEMORY_REGION(pages_.begin + back(), guardEnd() - back());
  }

  explicit Guarded(const std::vector<T>& values, size_t misalignment = kAnyAddress)
      : Guarded(values.size(), misalignment) {
    assign(values);
  }

  Guarded(const Guarded&) = delete;
  Guarded& operator=(const Guarded&) = delete;

  ~Guarded() {
    ASAN_UNPOISON_MEMORY_REGION(pages_.begin + guardBegin(), guardEnd() - guardBegin());
    EXPECT_TRUE(holdsPattern(guardBegin(), front_)) << "written in front of an array of " << size_ << " elements";
    EXPECT_TRUE(holdsPattern(back(), guardEnd())) << "written behind an array of " << size_ << " elements";
    giveBack(pages_);
  }

  T* data() { return reinterpret_cast<T*>(pages_.begin + front_); }
  size_t size() const { return size_; }

  // Elements travel as copies: at an odd address a reference to one would be undefined.
  T operator[](size_t i) const {
    T value;
    std::memcpy(&value, pages_.begin + front_ + i * sizeof(T), sizeof(T));
    return value;
  }
  void set(size_t i, const T& value) { std::memcpy(pages_.begin + front_ + i * sizeof(T), &value, sizeof(T)); }
  std::vector<T> values() const {
    std::vector<T> copy(size_);
    if (size_ > 0) std::memcpy(copy.data(), pages_.begin + front_, size_ * sizeof(T));
    return copy;
  }
  void assign(const std::vector<T>& values) {
    ASSERT_EQ(size_, values.size());
    if (size_ > 0) std::memcpy(pages_.begin + front_, values.data(), size_ * sizeof(T));
  }

  // Nothing has been written since construction (without values).
  bool untouched() const { return holdsPattern(front_, back()); }

 private:
  static constexpr size_t kGuard = 64;

  // Differs from byte to byte, so that elements shifted or copied within the block are seen.
  static unsigned char pattern(size_t i) { return static_cast<unsigned char>(0xA5 + 29 * i); }

  bool holdsPattern(size_t begin, size_t end) const {
    for (size_t i = begin; i < end; ++i)
      if (pages_.begin[i] != pattern(i)) return false;
    return true;
  }
  size_t back() const { return front_ + size_ * sizeof(T); }
  size_t guardBegin() const { return front_ - std::min(front_, kGuard); }
  size_t guardEnd() const { return std::min(back() + kGuard, pages_.bytes); }

  size_t size_;
  Pages pages_;
  size_t front_;
};

}  // namespace orptest
