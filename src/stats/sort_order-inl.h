// The order of the sorts, as an order of signed integers.
#if defined(ORPSP_STATS_SORT_ORDER_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_STATS_SORT_ORDER_INL_H_
#undef ORPSP_STATS_SORT_ORDER_INL_H_
#else
#define ORPSP_STATS_SORT_ORDER_INL_H_
#endif

#include "simd/map-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// Elements are sorted as signed integers by a key, which is the element with some bits inverted: `flip` of all
// elements, `ifNegative` of the negative ones. So unsigned integers, floats by their bits and the descending order are
// served.
template <class T>
struct KeyOrder {
  T flip, ifNegative;

  [[nodiscard]] HWY_INLINE T Key(T value) const {
    return static_cast<T>(value ^ flip ^ (value < 0 ? ifNegative : T{0}));
  }
  template <class D>
  HWY_INLINE hn::Vec<D> Key(D d, hn::Vec<D> v) const {
    return hn::Xor(hn::Xor(v, hn::Set(d, flip)), hn::And(hn::BroadcastSignBit(v), hn::Set(d, ifNegative)));
  }
  template <class D>
  HWY_INLINE hn::Vec<D> Value(D d, hn::Vec<D> key) const {
    const auto flipped = hn::Xor(key, hn::Set(d, flip));
    return hn::Xor(flipped, hn::And(hn::BroadcastSignBit(flipped), hn::Set(d, ifNegative)));
  }
};

template <class T>
inline constexpr KeyOrder<hwy::MakeSigned<T>> kFloatOrder = {0, hwy::HighestValue<hwy::MakeSigned<T>>()};

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif
