// The product of complex elements in pairs, of floating-point and integer lanes.
#if defined(ORPSP_SIMD_COMPLEX_PRODUCT_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_SIMD_COMPLEX_PRODUCT_INL_H_
#undef ORPSP_SIMD_COMPLEX_PRODUCT_INL_H_
#else
#define ORPSP_SIMD_COMPLEX_PRODUCT_INL_H_
#endif

#include "simd/complex-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// a * b, or a times the conjugate of b.
template <bool conjugate>
struct ComplexProduct {
  template <class D>
  HWY_INLINE hn::Vec<D> operator()(D d, auto a, auto b) const {
    if constexpr (std::is_floating_point_v<hn::TFromD<D>>) {
      // The parts of a by themselves: where a is a constant, so are they.
      const auto sign = hn::SignBit(d), zero = hn::Zero(d);
      const auto direct = hn::Mul(hn::DupEven(a), b), crossed = hn::Mul(hn::DupOdd(a), hn::Reverse2(d, b));
      if constexpr (conjugate) return hn::Add(hn::Xor(direct, hn::OddEven(sign, zero)), crossed);
      return hn::Add(direct, hn::Xor(crossed, hn::OddEven(zero, sign)));
    } else {
      return Narrow(d, WideComplexProductForScaling(a, b));
    }
  }

  template <class T>
  static constexpr int kMostScale = 16 * sizeof(T) - 1;
  struct Rounded {
    int scale;
    HWY_INLINE auto operator()(auto d, auto a, auto b) const {
      return Narrow(d, WideComplexProductForScaling(a, b).Rounded(scale));
    }
  };
};

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif  // include guard
