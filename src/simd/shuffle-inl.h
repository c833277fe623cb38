// Shuffles known to the compiler, which picks the instruction.
#if defined(ORPSP_SIMD_SHUFFLE_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_SIMD_SHUFFLE_INL_H_
#undef ORPSP_SIMD_SHUFFLE_INL_H_
#else
#define ORPSP_SIMD_SHUFFLE_INL_H_
#endif

#include <hwy/highway.h>

#include <utility>

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

// The lanes of two vectors, picked by Pick: lane i of the result is lane pick(i) of a and then b.
template <class V, class Pick, size_t... i>
HWY_INLINE V ShuffledLanes(V a, V b, Pick, std::index_sequence<i...>) {
  using T = hn::TFromV<V>;
  using Raw = decltype(V::raw);
  typedef T Elements __attribute__((vector_size(sizeof(Raw))));
  return V{(Raw)__builtin_shufflevector((Elements)a.raw, (Elements)b.raw,
                                        static_cast<int>(Pick::pick(i, sizeof(Raw) / sizeof(T)))...)};
}
template <class Pick, class V>
HWY_INLINE V Shuffled(V a, V b) {
  return ShuffledLanes(a, b, Pick{}, std::make_index_sequence<sizeof(V) / sizeof(hn::TFromV<V>)>{});
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif  // include guard
