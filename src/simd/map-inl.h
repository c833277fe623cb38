// Element-wise loops: sources through an operation into a destination, whole vectors first to last and any length.
#if defined(ORPSP_SIMD_MAP_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_SIMD_MAP_INL_H_
#undef ORPSP_SIMD_MAP_INL_H_
#else
#define ORPSP_SIMD_MAP_INL_H_
#endif

#include <hwy/cache_control.h>
#include <hwy/highway.h>

#include <algorithm>
#include <cstdint>

#include "simd/element.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

inline constexpr hn::ScalableTag<double> kDoubles;
using Doubles = hn::Vec<hn::ScalableTag<double>>;

// Tag of the vector that holds `count` elements of type T.
template <class T, size_t count>
using TagOf = hn::FixedTag<Lane<T>, count * Element<T>::kLanes>;

#if HWY_TARGET != HWY_AVX3
// The first and the last `size` of some bytes, which may overlap.
template <size_t size>
HWY_INLINE void CopyEnds(char* to, const char* from, size_t bytes) {
  char first[size], last[size];
  __builtin_memcpy(first, from, size);
  __builtin_memcpy(last, from + (bytes - size), size);
  __builtin_memcpy(to, first, size);
  __builtin_memcpy(to + (bytes - size), last, size);
}

// Copies 1 to 32 bytes.
HWY_INLINE void CopyFew(void* to, const void* from, size_t bytes) {
  char* const t = static_cast<char*>(to);
  const char* const f = static_cast<const char*>(from);
  if (bytes >= 16) return CopyEnds<16>(t, f, bytes);
  if (bytes >= 8) return CopyEnds<8>(t, f, bytes);
  if (bytes >= 4) return CopyEnds<4>(t, f, bytes);
  if (bytes >= 2) return CopyEnds<2>(t, f, bytes);
  *t = *f;
}
#endif

// The first `count` lanes at p, count <= Lanes(d); nothing beyond them is touched. The other lanes are zero.
template <class D, class T = hn::TFromD<D>>
HWY_INLINE hn::Vec<D> LoadFew(D d, const T* p, size_t count) {
  constexpr bool kIsWhole = hn::MaxLanes(D{}) * sizeof(T) >= 16;  // of less the mask would cover lanes beyond
  constexpr bool kHasMaskedLoads = HWY_TARGET == HWY_AVX3 || (HWY_TARGET == HWY_AVX2 && sizeof(T) >= 4 && kIsWhole);
  if constexpr (kHasMaskedLoads) {
    return hn::MaskedLoad(hn::FirstN(d, count), d, p);
  } else {
#if HWY_TARGET != HWY_AVX3
    alignas(HWY_MAX_BYTES) T few[HWY_MAX_BYTES / sizeof(T)] = {};
    if (count > hn::MaxLanes(d)) __builtin_unreachable();
    CopyFew(few, p, count * sizeof(T));
    return hn::Load(d, few);
#endif
  }
}

template <class D, class T = hn::TFromD<D>>
HWY_INLINE void StoreFew(hn::Vec<D> v, D d, T* p, size_t count) {
#if HWY_TARGET == HWY_AVX3
  hn::BlendedStore(v, hn::FirstN(d, count), d, p);
#else
  alignas(HWY_MAX_BYTES) T few[HWY_MAX_BYTES / sizeof(T)];
  hn::Store(v, d, few);
  CopyFew(p, few, count * sizeof(T));
#endif
}

// A source is read by the element: `Load<count>(i)` gives elements [i, i + count), `LoadFew<count>(few)` the first
// `few` of fewer than `count`, `From(i)` the source that begins at element i.
template <class T>
struct Vector {
  using Type = T;
  static constexpr size_t kElementBytes = sizeof(T);
  const T* p;

  template <size_t count>
  HWY_INLINE auto Load(size_t i) const {
    return hn::LoadU(TagOf<T, count>{}, lanes(p + i));
  }
  template <size_t count>
  HWY_INLINE auto LoadFew(size_t few) const {
    return HWY_NAMESPACE::LoadFew(TagOf<T, count>{}, lanes(p), few * Element<T>::kLanes);
  }
  HWY_INLINE Vector From(size_t i) const { return {p + i}; }
  HWY_INLINE bool IsAt(const void* other) const { return p == other; }
};

// Notes lanes that a call will warn of, in operations that are called with const.
template <class T>
struct Watch {
  using D = hn::ScalableTag<T>;
  mutable hn::Mask<D> lanes = hn::MaskFromVec(hn::Zero(D{}));

  HWY_INLINE void Note(hn::Mask<D> mask) const { lanes = hn::Or(lanes, mask); }
  HWY_INLINE bool Found() const { return !hn::AllFalse(D{}, lanes); }
};

// A vector whose elements beyond the end count as `beyond`, for operations that warn of zeros, or to which they are
// not neutral.
template <class T>
struct Padded : Vector<T> {
  Lane<T> beyond;

  template <size_t count>
  HWY_INLINE auto LoadFew(size_t few) const {
    constexpr TagOf<T, count> d;
    const auto inside = hn::FirstN(d, few * Element<T>::kLanes);
    return hn::IfThenElse(inside, Vector<T>::template LoadFew<count>(few), hn::Set(d, beyond));
  }
  HWY_INLINE Padded From(size_t i) const { return {Vector<T>::From(i), beyond}; }
};

template <class T>
struct Constant {
  using Type = T;
  static constexpr size_t kElementBytes = sizeof(T);
  T value;

  template <size_t count>
  HWY_INLINE auto Load(size_t) const {
    constexpr TagOf<T, count> d;
    if constexpr (isComplex<T>) {
      return hn::OddEven(hn::Set(d, value.im), hn::Set(d, value.re));
    } else {
      return hn::Set(d, value);
    }
  }
  template <size_t count>
  HWY_INLINE auto LoadFew(size_t) const {
    return Load<count>(0);
  }
  HWY_INLINE Constant From(size_t) const { return *this; }
  HWY_INLINE bool IsAt(const void*) const { return false; }
};

// A real vector read as if it were complex, each element twice.
template <class T>
struct Twice {
  using Type = T;
  static constexpr size_t kElementBytes = 2 * sizeof(T);
  const T* p;

  template <class V>
  static HWY_INLINE auto Spread(V v) {
    constexpr hn::DFromV<V> d;
    constexpr hn::Twice<decltype(d)> dd;
    using Wide = hn::RepartitionToWide<decltype(hn::RebindToUnsigned<decltype(dd)>{})>;
    const auto wide = hn::PromoteTo(Wide{}, hn::BitCast(hn::RebindToUnsigned<decltype(d)>{}, v));
    const auto upper = hn::ShiftLeft<8 * sizeof(T)>(wide);
    return hn::BitCast(dd, hn::Or(wide, upper));
  }
  template <size_t count>
  HWY_INLINE auto Load(size_t i) const {
    return Spread(hn::LoadU(TagOf<T, count>{}, p + i));
  }
  template <size_t count>
  HWY_INLINE auto LoadFew(size_t few) const {
    return Spread(HWY_NAMESPACE::LoadFew(TagOf<T, count>{}, p, few));
  }
  HWY_INLINE Twice From(size_t i) const { return {p + i}; }
  HWY_INLINE bool IsAt(const void*) const { return false; }
};

// Lanes of another type: exactly from narrower ones, rounded to nearest from integers of the same width.
template <class D, class V>
HWY_INLINE hn::Vec<D> Lift(D d, V v) {
  using From = hn::TFromV<V>;
  using To = hn::TFromD<D>;
  constexpr bool kViaInt32 = std::is_floating_point_v<To> && sizeof(From) < 4;
  if constexpr (std::is_same_v<From, To>) {
    return v;
  } else if constexpr (kViaInt32) {
    return Lift(d, hn::PromoteTo(hn::Rebind<int32_t, D>{}, v));
  } else if constexpr (sizeof(To) == sizeof(From)) {
    return hn::ConvertTo(d, v);
  } else {
    return hn::PromoteTo(d, v);
  }
}

// Bytes that an operation works on for each element; operations that compute in a wider type say so by kWorkBytes.
template <class Op>
inline constexpr size_t kWorkBytes = 1;
template <class Op>
requires(Op::kWorkBytes > 0) inline constexpr size_t kWorkBytes<Op> = Op::kWorkBytes;

// From this many bytes of output on the destination is written past the caches, which could not hold it.
inline constexpr size_t kStreamBytes = size_t{24} << 20;

// dst[i] = op(tag of dst's lanes, src[i]...) for every i < len. Sources may be the destination itself, not overlap it
// otherwise: first and last vector are computed before anything is stored.
template <class Op, class TD, class... S>
HWY_INLINE void Map(const Op& op, TD* dst, size_t len, const S&... src) {
  constexpr size_t kStep = HWY_MAX_BYTES / HWY_MAX(kWorkBytes<Op>, std::max({sizeof(TD), S::kElementBytes...}));
  constexpr TagOf<TD, kStep> d;
  if (HWY_UNLIKELY(len < kStep)) {
    StoreFew(op(d, src.template LoadFew<kStep>(len)...), d, lanes(dst), len * Element<TD>::kLanes);
    return;
  }
  const size_t end = len - kStep;  // of the loops; the vector from here on is held until they are through
  const auto last = op(d, src.template Load<kStep>(end)...);
  size_t i = 0;
  if (len >= 8 * kStep) {
    const auto first = op(d, src.template Load<kStep>(0)...);
    const size_t behind = reinterpret_cast<uintptr_t>(dst) % (kStep * sizeof(TD));
    const bool aligns = kStep * sizeof(TD) >= 16 && behind % sizeof(TD) == 0;
    if (behind != 0 && aligns) i = kStep - behind / sizeof(TD);
    if (HWY_UNLIKELY(len >= kStreamBytes / sizeof(TD)) && aligns && !(src.IsAt(dst) || ...)) {
      for (; i < end; i += kStep) hn::Stream(op(d, src.template Load<kStep>(i)...), d, lanes(dst + i));
      hwy::FlushStream();
    } else {
#pragma GCC unroll 2
      for (; i < end; i += kStep) hn::StoreU(op(d, src.template Load<kStep>(i)...), d, lanes(dst + i));
    }
    hn::StoreU(first, d, lanes(dst));
  } else {
    for (; i < end; i += kStep) hn::StoreU(op(d, src.template Load<kStep>(i)...), d, lanes(dst + i));
  }
  hn::StoreU(last, d, lanes(dst + end));
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif
