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

enum class Kind {
  kBytes,
  kNonzeroBytes,
  kInt16,
  kSmallNonzero16,
  kTiny16,  // -10 to 10
  kFloat,   // 0.5 to 2
  kDouble,
  kSignedFloat,  // -8 to 8
  kSignedDouble
};

struct Case {
  std::string name;
  Kind kind;            // of the data
  size_t elementBytes;  // of the destination, or of the source if the result is not a vector
  Work library, plain, volk = nullptr;
  double tolerance = 0;  // relative, for results of floating point that the compiler may contract; 0: same bits
  Work sleef = nullptr, fastSleef = nullptr;  // SLEEF's functions of 1 and of 3.5 units in the last place
  size_t resultBytes = 0;                     // of a result that is not a vector
};

// Runs every case at every length and writes a Markdown table for each group to standard output.
int run(std::span<const std::span<const Case>> groups, int argc, char** argv);

}  // namespace bench
