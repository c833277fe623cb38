// Benchmarks that compare: the same work on the same data by the library, by a plain loop and, where it has the kernel,
// by VOLK, in one process. The report gives the library's best time and how many times longer the others took.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace bench {

// Three vectors on 64-byte boundaries, reused by all cases: two sources and a destination.
struct Data {
  static constexpr size_t kElements = size_t{1} << 24, kLargest = 8;  // elements of up to 8 bytes, or fewer of 16
  static constexpr size_t kBytes = kElements * kLargest + 4096;
  std::byte *first, *second, *result;

  template <class T>
  const T* a() const {
    return reinterpret_cast<const T*>(first);
  }
  template <class T>
  const T* b() const {
    return reinterpret_cast<const T*>(second);
  }
  template <class T>
  T* d() const {
    return reinterpret_cast<T*>(result);
  }
};

using Work = void (*)(const Data&, int len);

enum class Kind { kBytes, kInt16, kFloat, kDouble, kSmallNonzero16, kNonzeroBytes };

struct Case {
  std::string name;
  Kind kind;            // of the data
  size_t elementBytes;  // of the destination
  Work library, plain, volk = nullptr;
  double tolerance = 0;  // relative, for results of floating point that the compiler may contract; 0: same bits
};

// Runs every case at every length and writes a Markdown table to standard output.
int run(std::span<const Case> cases, int argc, char** argv);

}  // namespace bench
