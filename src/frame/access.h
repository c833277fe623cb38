// Elements at any address, lengths as sizes, sizes up to a multiple.
#pragma once

#include <cstddef>

namespace orpsp {

// Read and written as bytes: the caller's arrays need not be aligned.
template <class T>
inline T get(const T* p) {
  T value;
  __builtin_memcpy(&value, p, sizeof(T));
  return value;
}
template <class T>
inline void put(T* p, T value) {
  __builtin_memcpy(p, &value, sizeof(T));
}

// A length that has been checked.
__attribute__((always_inline)) constexpr size_t toSize(int len) { return static_cast<size_t>(len); }

// `bytes` up to the next multiple of `step`, a power of two.
__attribute__((always_inline)) constexpr size_t upToMultiple(size_t bytes, size_t step) {
  return (bytes + step - 1) & ~(step - 1);
}

}  // namespace orpsp
