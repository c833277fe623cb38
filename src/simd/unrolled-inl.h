// Loops that are unrolled: the counter is a constant, so that vectors which it indexes stay in registers.
#if defined(ORPSP_SIMD_UNROLLED_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_SIMD_UNROLLED_INL_H_
#undef ORPSP_SIMD_UNROLLED_INL_H_
#else
#define ORPSP_SIMD_UNROLLED_INL_H_
#endif

#include <hwy/highway.h>

#include <utility>

// Attributes of a lambda in code of one width.
#ifndef ORPSP_INLINED
#define ORPSP_INLINED HWY_ATTR __attribute__((always_inline))
#endif

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// f(0), ..., f(n - 1)
template <class F, size_t... k>
HWY_INLINE void Unroll(const F& f, std::index_sequence<k...>) {
  (f(std::integral_constant<size_t, k>{}), ...);
}
template <size_t n, class F>
HWY_INLINE void Unrolled(const F& f) {
  Unroll(f, std::make_index_sequence<n>{});
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif  // include guard
