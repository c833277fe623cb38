// The table of the step that makes the spectrum of N = 2^order real points of a complex transform of N / 2 points.
//
// With w = 2 pi / N the step needs sin(k w) / 2 and cos(k w) / 2, k < N / 4, for two neighbouring lanes (real and
// imaginary part) at a time: every sine stands twice, every cosine as itself and negated. Orders below 5 need no
// table.
//
//   orders 5 to kLastDirectOrder    half sines for N / 4 values of k, then half cosines
//   orders beyond                   the sum of two angles: k = kFineRoots * i + j
//                                   cos(j w) - 1 twice ... for kFineRoots values of j, then sin(j w) twice ...,
//                                   then half a sine and half a cosine of kFineRoots * i * w, i < N / 4 / kFineRoots
//
// Where it is made of sums, the small difference cos - 1 keeps the products small: what they add is rounded once,
// against the coarse root.
#if defined(ORPSP_TRANSFORM_FFT_SPLIT_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_TRANSFORM_FFT_SPLIT_INL_H_
#undef ORPSP_TRANSFORM_FFT_SPLIT_INL_H_
#else
#define ORPSP_TRANSFORM_FFT_SPLIT_INL_H_
#endif

#include <hwy/highway.h>

#include "transform/sine.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace fft {
namespace {

constexpr int kLastDirectOrder = 13;
constexpr size_t kFineRoots = 1024;

// Elements of the table of an order.
constexpr size_t splitLength(int order) {
  const size_t n = size_t{1} << order;
  return order < 5 ? 0 : order <= kLastDirectOrder ? n : 4 * kFineRoots + n / 2 / kFineRoots;
}

// Fills the table of an order from 5 on. The sines' order may be greater than `order`, not smaller.
template <class T>
HWY_INLINE void FillSplitTable(int order, const QuarterSine<T>& sine, T* table) {
  const size_t count = size_t{1} << (order - 2);
  if (order <= kLastDirectOrder) {
    for (size_t k = 0; k < count; ++k) {
      const UnitRoot<T> w = unitRoot(sine, k, order);  // (cos, -sin)
      table[2 * k] = table[2 * k + 1] = -w.im / 2;
      table[2 * (count + k)] = w.re / 2;
      table[2 * (count + k) + 1] = -w.re / 2;
    }
    return;
  }
  for (size_t j = 0; j < kFineRoots; ++j) {
    const UnitRoot<T> w = unitRoot(sine, j, order);
    table[2 * j] = table[2 * j + 1] = -(w.im * w.im) / (1 + w.re);  // cos - 1 without cancellation
    table[2 * (kFineRoots + j)] = table[2 * (kFineRoots + j) + 1] = -w.im;
  }
  T* const coarse = table + 4 * kFineRoots;
  for (size_t i = 0; i < count / kFineRoots; ++i) {
    const UnitRoot<T> w = unitRoot(sine, kFineRoots * i, order);
    coarse[2 * i] = -w.im / 2;
    coarse[2 * i + 1] = w.re / 2;
  }
}

}  // namespace
}  // namespace fft
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif
