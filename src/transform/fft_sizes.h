// Sizes of FFT specifications and of their parts, and what Init does without vectors. The formulas stand in
// include/orpsp/transform/fft_spec.h.
#pragma once

#include <cstddef>
#include <cstdint>

#include "orpsp/types.h"
#include "transform/fft.h"

namespace orpsp {

// The complex transform of 2^order points of T (float or double). Multiples of 64; all zero for orders up to 5.
template <class T>
size_t complexTwiddleBytes(int order);  // what the twiddle table may take
template <class T>
size_t complexIndexBytes(int order);  // 0 for large orders, which keep all they need beside the twiddles
template <class T>
size_t complexWorkBytes(int order);

// A specification of 2^order points as the caller describes it; isReal and sampleBytes as in FftKindOf.
struct FftShape {
  int order, flag, hint;
  bool isReal;
  size_t sampleBytes;
};

struct FftSizes {
  uint64_t spec, init, work;
};

template <class T>
constexpr int highestOrder(bool isReal) {
  return (sizeof(T) == 4 ? 28 : 27) + (isReal ? 1 : 0);
}

constexpr bool isNormFlag(int flag) { return flag == 1 || flag == 2 || flag == 4 || flag == 8; }

// What the GetSize functions answer. A work size that exceeds an int is answered as 0: calls make room themselves.
template <class T>
FftSizes fftSizes(const FftShape& shape);

// Fills the fields of a record. The pointers say where the tables go; the tag is 0 until they are there.
template <class T>
void fillSpec(const FftShape& shape, FftSpec<T>& spec);

}  // namespace orpsp
