// Products of packed spectra, without checks.
#if defined(ORPSP_TRANSFORM_SPECTRA_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_TRANSFORM_SPECTRA_INL_H_
#undef ORPSP_TRANSFORM_SPECTRA_INL_H_
#else
#define ORPSP_TRANSFORM_SPECTRA_INL_H_
#endif

#include "simd/complex_product-inl.h"
#include "simd/forms-inl.h"
#include "simd/totals.h"
#include "transform/spectrum_layout.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace fft {
namespace {

// Pairs of bins in the spectrum of n reals.
HWY_INLINE size_t CountOfPairs(size_t n) { return (n - 1) / 2; }

template <class T>
using Complex =
    std::conditional_t<sizeof(T) == 2, Orp16sc, std::conditional_t<std::is_same_v<T, Orp32f>, Orp32fc, Orp64fc>>;

template <class T>
HWY_INLINE auto AsPairs(T* p) {
  using C = Complex<std::remove_const_t<T>>;
  return reinterpret_cast<std::conditional_t<std::is_const_v<T>, const C*, C*>>(p);
}

// The product of two real bins.
template <class T>
HWY_INLINE T RealProduct(T a, T b, int scale) {
  if constexpr (isFloat<T>) {
    return a * b;
  } else {
    return static_cast<T>(scaledTotal(Int128{int64_t{a} * b}, scale, {kLeast<T>, kMost<T>}));
  }
}

template <class Op, class C>
HWY_NOINLINE void MultiplyPairs(const C* a, const C* b, C* dst, size_t count, int scale) {
  if constexpr (isFloat<C>) {
    Map(Op{}, dst, count, Vector<C>{a}, Vector<C>{b});
  } else {
    MapScaled<Op>(scale, dst, count, Vector<C>{a}, Vector<C>{b});
  }
}

// dst = a * b, or a times the conjugates of b, bin by bin, for the spectra of n reals; integers times 2^-scale, rounded
// to nearest and saturated. dst may be a or b. For layouts that keep bins 0 and n / 2 as real numbers.
template <class Layout, bool conjugate, class T>
HWY_INLINE void MultiplySpectra(const T* a, const T* b, T* dst, size_t n, int scale = 0) {
  static_assert(!Layout::kAllArePairs);
  const size_t at = Layout::pairs(n), count = CountOfPairs(n);
  const auto realBin = [=](size_t i) HWY_ATTR { put(dst + i, RealProduct(get(a + i), get(b + i), scale)); };
  realBin(0);
  if (n % 2 == 0) realBin(Layout::middle(n));
  if (count == 0) return;
  MultiplyPairs<ComplexProduct<conjugate>>(AsPairs(a + at), AsPairs(b + at), AsPairs(dst + at), count, scale);
}

}  // namespace
}  // namespace fft
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif  // include guard
