// Samples made from vectors of doubles or floats, and the loop that fills an array with them.
#if defined(ORPSP_GENERATE_SAMPLES_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_GENERATE_SAMPLES_INL_H_
#undef ORPSP_GENERATE_SAMPLES_INL_H_
#else
#define ORPSP_GENERATE_SAMPLES_INL_H_
#endif

#include "simd/complex-inl.h"
#include "simd/element.h"
#include "simd/map-inl.h"
#include "simd/round-inl.h"
#include "simd/unrolled-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

constexpr size_t kDoubleLanes = HWY_MAX_BYTES / sizeof(double);

// n, n + 1, ...
HWY_INLINE Doubles Indices(size_t n) { return hn::Iota(kDoubles, static_cast<double>(n)); }

// Numbers below two periods, less one where that is possible.
HWY_INLINE Doubles Wrapped(Doubles v, Doubles period) {
  return hn::IfThenElse(hn::Ge(v, period), hn::Sub(v, period), v);
}

// Rounded to nearest, ties to even; integers saturate, a NaN gives 0.
template <class D, class V>
HWY_INLINE hn::Vec<D> ToSamples(D d, V v) {
  using T = hn::TFromD<D>;
  if constexpr (std::is_same_v<T, hn::TFromV<V>>) {
    return v;
  } else if constexpr (std::is_same_v<T, float>) {
    return hn::DemoteTo(d, v);
  } else {
    return RoundTo<Rounding::kNearest>(d, hn::IfThenElseZero(hn::Eq(v, v), v));
  }
}

// As many elements as a vector of T has lanes: one or two vectors of their lanes.
template <class E, class T = double>
struct Group {
  using D = hn::Rebind<Lane<E>, hn::ScalableTag<T>>;
  static constexpr D d{};
  static constexpr size_t kVectors = Element<E>::kLanes, kCount = HWY_MAX_BYTES / sizeof(T);
  hn::Vec<D> v[kVectors];

  template <class V>
  static HWY_INLINE Group Of(V samples) {
    return {{ToSamples(d, samples)}};
  }
  template <class V>
  static HWY_INLINE Group Of(V re, V im) {
    const auto pairs = Join(Parts<V>{re, im});
    return {{ToSamples(d, pairs.lower), ToSamples(d, pairs.upper)}};
  }
  static HWY_INLINE Group Load(const E* p) {
    Group group;
    for (size_t i = 0; i < kVectors; ++i) group.v[i] = hn::LoadU(d, lanes(p) + i * kCount);
    return group;
  }
  static HWY_INLINE Group LoadFew(const E* p, size_t few) {
    Group group;
    for (size_t i = 0; i < kVectors; ++i) {
      const size_t count = LanesOf(i, few);
      group.v[i] = count > 0 ? HWY_NAMESPACE::LoadFew(d, lanes(p) + i * kCount, count) : hn::Zero(d);
    }
    return group;
  }
  HWY_INLINE void Store(E* p) const {
    for (size_t i = 0; i < kVectors; ++i) hn::StoreU(v[i], d, lanes(p) + i * kCount);
  }
  HWY_INLINE void StoreFew(E* p, size_t few) const {
    for (size_t i = 0; i < kVectors; ++i) {
      const size_t count = LanesOf(i, few);
      if (count > 0) HWY_NAMESPACE::StoreFew(v[i], d, lanes(p) + i * kCount, count);
    }
  }

 private:
  static HWY_INLINE size_t LanesOf(size_t i, size_t few) {
    return few * kVectors > i * kCount ? HWY_MIN(few * kVectors - i * kCount, kCount) : 0;
  }
};

// dst[n] = at(n), which gives the group that begins with element n, for n = 0, Group::kCount, ... in this order.
template <class E, class At>
HWY_INLINE void Fill(E* dst, size_t len, const At& at) {
  constexpr size_t kStep = decltype(at(size_t{0}))::kCount;
  size_t n = 0;
  for (; n + kStep <= len; n += kStep) at(n).Store(dst + n);
  if (n < len) at(n).StoreFew(dst + n, len - n);
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif  // include guard
