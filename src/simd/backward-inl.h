// Copies for destinations that begin inside the source.
#if defined(ORPSP_SIMD_BACKWARD_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_SIMD_BACKWARD_INL_H_
#undef ORPSP_SIMD_BACKWARD_INL_H_
#else
#define ORPSP_SIMD_BACKWARD_INL_H_
#endif

#include "simd/complex-inl.h"
#include "simd/map-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// Moves bytes to the same address, to higher ones or to another array: from the end to the beginning.
template <class Put = StoreToCache>
HWY_NOINLINE void CopyBackward(const Orp8u* src, Orp8u* dst, size_t count, Put putVector = {}) {
  constexpr hn::ScalableTag<Orp8u> d;
  constexpr size_t kStep = HWY_MAX_BYTES;
  if (count < kStep) return StoreFew(LoadFew(d, src, count), d, dst, count);
  const auto first = hn::LoadU(d, src), last = hn::LoadU(d, src + (count - kStep));
  size_t i = count - reinterpret_cast<uintptr_t>(dst + count) % kStep;
  while (i > kStep) {
    i -= kStep;
    putVector(hn::LoadU(d, src + i), d, dst + i);
  }
  hn::StoreU(last, d, dst + (count - kStep));
  hn::StoreU(first, d, dst);
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif  // include guard
