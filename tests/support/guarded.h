// Arrays handed to the library: on the heap, exactly sized, at any address, with guards on both sides.
//
//   Guarded<Orp16s> src(values, misalignment), dst(len);   // dst holds a pattern
//   ASSERT_EQ(StsOk, orpsAbs_16s(src.data(), dst.data(), len));
//   EXPECT_EQ(expected, dst.values());                     // destructors look after the guards
//
// A write outside the array fails the test when the array is destroyed. AddressSanitizer stops at the first byte behind
// the array, reads included (in front of it at the first byte below an address that is a multiple of eight).
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/asan_interface.h>
#else
#define ASAN_POISON_MEMORY_REGION(address, size) static_cast<void>(0)
#define ASAN_UNPOISON_MEMORY_REGION(address, size) static_cast<void>(0)
#endif

namespace orptest {

template <class T>
class Guarded {
 public:
  // `len` elements filled with the pattern, `misalignment` bytes (any number) behind a 64-byte boundary.
  explicit Guarded(size_t len, size_t misalignment = 0)
      : size_(len), front_(kGuard + misalignment % kGuard), bytes_(front_ + len * sizeof(T) + kGuard) {
    block_ = static_cast<unsigned char*>(::operator new (bytes_, std::align_val_t{kGuard}));
    for (size_t i = 0; i < bytes_; ++i) block_[i] = pattern(i);
    ASAN_POISON_MEMORY_REGION(block_, front_);
    ASAN_POISON_MEMORY_REGION(block_ + back(), kGuard);
  }

  explicit Guarded(const std::vector<T>& values, size_t misalignment = 0) : Guarded(values.size(), misalignment) {
    assign(values);
  }

  Guarded(const Guarded&) = delete;
  Guarded& operator=(const Guarded&) = delete;

  ~Guarded() {
    ASAN_UNPOISON_MEMORY_REGION(block_, bytes_);
    EXPECT_TRUE(holdsPattern(0, front_)) << "written in front of an array of " << size_ << " elements";
    EXPECT_TRUE(holdsPattern(back(), bytes_)) << "written behind an array of " << size_ << " elements";
    ::operator delete (block_, std::align_val_t{kGuard});
  }

  T* data() { return reinterpret_cast<T*>(block_ + front_); }
  size_t size() const { return size_; }

  // Elements travel as copies: at an odd address a reference to one would be undefined.
  T operator[](size_t i) const {
    T value;
    std::memcpy(&value, block_ + front_ + i * sizeof(T), sizeof(T));
    return value;
  }
  void set(size_t i, const T& value) { std::memcpy(block_ + front_ + i * sizeof(T), &value, sizeof(T)); }
  std::vector<T> values() const {
    std::vector<T> copy(size_);
    if (size_ > 0) std::memcpy(copy.data(), block_ + front_, size_ * sizeof(T));
    return copy;
  }
  void assign(const std::vector<T>& values) {
    ASSERT_EQ(size_, values.size());
    if (size_ > 0) std::memcpy(block_ + front_, values.data(), size_ * sizeof(T));
  }

  // Nothing has been written since construction (without values).
  bool untouched() const { return holdsPattern(front_, back()); }

 private:
  static constexpr size_t kGuard = 64;

  // Differs from byte to byte, so that elements shifted or copied within the block are seen.
  static unsigned char pattern(size_t i) { return static_cast<unsigned char>(0xA5 + 29 * i); }

  bool holdsPattern(size_t begin, size_t end) const {
    for (size_t i = begin; i < end; ++i)
      if (block_[i] != pattern(i)) return false;
    return true;
  }
  size_t back() const { return front_ + size_ * sizeof(T); }

  size_t size_, front_, bytes_;
  unsigned char* block_;
};

}  // namespace orptest
