// Smallest and largest elements.
//
// An extreme is found at full speed, several vectors at a time; which lane or vector held it is not tracked. The forms
// with an index remember the block of elements in which it last became better, and search this block once, at the end.
#include "orpsp/stats/extrema.h"

#include "frame/entry.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "stats/extrema.cpp"
#include <hwy/foreach_target.h>

#include "simd/forms-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// The elements of a block, for an index. The value alone needs one only for the search that Value makes.
template <class T>
constexpr size_t kIndexBlock = 2048 / sizeof(T);
template <class T>
constexpr size_t kValueBlock = isFloat<T> ? 65536 / sizeof(T) : SIZE_MAX;

// ---- Which extreme

// The minimum and maximum instructions return their second operand if one is a NaN: Pick(x, best) passes NaNs over.
struct Least {
  template <class K>
  static constexpr K kWorst = isFloat<K> ? std::numeric_limits<K>::infinity() : kMost<K>;
  static HWY_INLINE auto Pick(auto x, auto best) { return hn::Min(x, best); }
  static HWY_INLINE auto IsBetter(auto x, auto best) { return hn::Lt(x, best); }
};

struct Greatest {
  template <class K>
  static constexpr K kWorst = isFloat<K> ? -std::numeric_limits<K>::infinity() : kLeast<K>;
  static HWY_INLINE auto Pick(auto x, auto best) { return hn::Max(x, best); }
  static HWY_INLINE auto IsBetter(auto x, auto best) { return hn::Gt(x, best); }
};

// ---- Keys of the elements: what an extreme is of

// The elements themselves. SSSE3 compares only signed lanes of 16 and 32 bits: unsigned ones have their top bit
// flipped.
template <class T>
struct Plain {
  static constexpr bool kFlips = HWY_TARGET == HWY_SSSE3 && std::is_unsigned_v<T> && sizeof(T) > 1;
  using Key = typename std::conditional_t<kFlips, std::make_signed<T>, std::type_identity<T>>::type;

  static HWY_INLINE auto Of(auto v) {
    if constexpr (kFlips) {
      constexpr hn::Rebind<Key, hn::DFromV<decltype(v)>> d;
      return hn::Xor(hn::BitCast(d, v), hn::Set(d, kLeast<Key>));
    } else {
      return v;
    }
  }
  static HWY_INLINE T Element(Key key) {
    if constexpr (kFlips) {
      return static_cast<T>(key ^ kLeast<Key>);
    } else {
      return key;
    }
  }
};

// Saturated absolute values.
template <class T>
struct Magnitude {
  using Key = T;
  static HWY_INLINE auto Of(auto v) { return SaturatedAbs(v); }
  static HWY_INLINE T Element(T key) { return key; }
};

// ---- One pass

// The extreme of all lanes.
template <class Side, class D>
HWY_INLINE hn::TFromD<D> Fold(D d, hn::Vec<D> v) {
  constexpr size_t kLaneBytes = sizeof(hn::TFromD<D>);
  if constexpr (hn::MaxLanes(D{}) * kLaneBytes > 16) {
    constexpr hn::Half<D> half;
    return Fold<Side>(half, Side::Pick(hn::LowerHalf(half, v), hn::UpperHalf(half, v)));
  } else {
    constexpr hn::Repartition<uint32_t, D> d32;
    constexpr hn::Repartition<uint16_t, D> d16;
    v = Side::Pick(v, hn::BitCast(d, hn::Shuffle1032(hn::BitCast(d32, v))));
    if constexpr (kLaneBytes <= 4) v = Side::Pick(v, hn::BitCast(d, hn::Shuffle2301(hn::BitCast(d32, v))));
    if constexpr (kLaneBytes <= 2) v = Side::Pick(v, hn::BitCast(d, hn::ShiftRight<16>(hn::BitCast(d32, v))));
    if constexpr (kLaneBytes == 1) v = Side::Pick(v, hn::BitCast(d, hn::ShiftRight<8>(hn::BitCast(d16, v))));
    return hn::GetLane(v);
  }
}

// An extreme so far, and the first element of the block in which it became better for the last time.
template <class Side, class K>
struct Extreme {
  using D = hn::ScalableTag<K>;
  using V = hn::Vec<D>;
  static constexpr K kWorst = Side::template kWorst<K>;

  K best = kWorst;
  size_t block = 0;
  V v0, v1, v2, v3;

  // The first vectors: what is taken may be a NaN, what is held may not.
  static HWY_INLINE V First(V x) {
    if constexpr (isFloat<K>) {
      return Side::Pick(x, hn::Set(D{}, kWorst));
    } else {
      return x;
    }
  }
  HWY_INLINE void Start(V x0, V x1, V x2, V x3) {
    v0 = First(x0);
    v1 = First(x1);
    v2 = First(x2);
    v3 = First(x3);
  }
  HWY_INLINE void Take(V x0, V x1, V x2, V x3) {
    v0 = Side::Pick(x0, v0);
    v1 = Side::Pick(x1, v1);
    v2 = Side::Pick(x2, v2);
    v3 = Side::Pick(x3, v3);
  }
  HWY_INLINE V All() const { return Side::Pick(Side::Pick(v0, v1), Side::Pick(v2, v3)); }
  HWY_INLINE void EndOnlyBlock(V all) { best = Fold<Side>(D{}, all); }
  HWY_INLINE void EndBlock(size_t begin) {
    const V all = All();
    if (hn::AllFalse(D{}, Side::IsBetter(all, hn::Set(D{}, best)))) return;
    best = Fold<Side>(D{}, all);
    block = begin;
  }
};

// All elements through all extremes, some of them more than once.
template <class Of, class T, class... E>
HWY_INLINE void Scan(const T* src, size_t len, size_t blockLen, E&... extremes) {
  constexpr hn::ScalableTag<T> d;
  constexpr size_t N = hn::MaxLanes(d);
  const auto at = [&](size_t i) HWY_ATTR { return Of::Of(hn::LoadU(d, src + i)); };
  if (len < N) {
    const auto x = Of::Of(hn::IfThenElse(hn::FirstN(d, len), LoadFew(d, src, len), hn::Set(d, get(src))));
    return (extremes.EndOnlyBlock(extremes.First(x)), ...);
  }
  if (len < 4 * N) {
    const size_t last = len - N, second = HWY_MIN(N, last), third = last - second;
    (extremes.Start(at(0), at(second), at(third), at(last)), ...);
    return (extremes.EndOnlyBlock(extremes.All()), ...);
  }
  (extremes.Start(at(0), at(N), at(2 * N), at(3 * N)), ...);
  const size_t last = len - 4 * N;
  size_t begin = 0, i = 4 * N - reinterpret_cast<uintptr_t>(src) % sizeof(hn::Vec<decltype(d)>) / sizeof(T);
  while (i < last) {
    const size_t end = blockLen < last - begin ? begin + blockLen : last;
    for (; i < end; i += 4 * N) {
      const auto x0 = at(i), x1 = at(i + N), x2 = at(i + 2 * N), x3 = at(i + 3 * N);
      (extremes.Take(x0, x1, x2, x3), ...);
    }
    (extremes.EndBlock(begin), ...);
    begin = i;
  }
  (extremes.Take(at(last), at(last + N), at(last + 2 * N), at(last + 3 * N)), ...);
  (extremes.EndBlock(begin), ...);
}

// The first element with this key, or len. There is none before `begin`.
template <class Of, class T>
HWY_NOINLINE size_t FirstWithKey(const T* src, size_t len, size_t begin, typename Of::Key key) {
  constexpr hn::ScalableTag<T> d;
  constexpr hn::Rebind<typename Of::Key, decltype(d)> dk;
  constexpr size_t N = hn::MaxLanes(d);
  const auto wanted = hn::Set(dk, key);
  const auto isAt = [&](size_t i) HWY_ATTR { return hn::Eq(Of::Of(hn::LoadU(d, src + i)), wanted); };
  if (len < N) {  // the lanes beyond the end repeat an element that is found before them
    const auto x = Of::Of(hn::IfThenElse(hn::FirstN(d, len), LoadFew(d, src, len), hn::Set(d, get(src))));
    const auto at = hn::FindFirstTrue(dk, hn::Eq(x, wanted));
    return at < 0 ? len : static_cast<size_t>(at);
  }
  size_t i = begin;
  for (; i + 4 * N <= len; i += 4 * N) {
    const auto any = hn::Or(hn::Or(isAt(i), isAt(i + N)), hn::Or(isAt(i + 2 * N), isAt(i + 3 * N)));
    if (!hn::AllFalse(dk, any)) break;
  }
  for (; i < len; i += N) {
    if (i + N > len) i = len - N;
    const auto at = hn::FindFirstTrue(dk, isAt(i));
    if (at >= 0) return i + static_cast<size_t>(at);
  }
  return len;
}

// ---- Results

template <class T>
struct Found {
  T value;
  size_t index;
};

template <class Of, class E, class T>
HWY_INLINE Found<T> Locate(const E& extreme, const T* src, size_t len) {
  const size_t at = FirstWithKey<Of>(src, len, extreme.block, extreme.best);
  const size_t index = at == len ? 0 : at;  // nowhere: all are NaNs
  if constexpr (isFloat<T>) {
    return {get(src + index), index};
  } else {
    return {Of::Element(extreme.best), index};
  }
}

// Zeros of both signs are equal, and the worst value may mean that there are only NaNs: the element itself decides.
template <class Of, class E, class T>
HWY_INLINE T Value(const E& extreme, const T* src, size_t len) {
  if constexpr (isFloat<T>) {
    if (HWY_UNLIKELY(extreme.best == 0 || extreme.best == E::kWorst)) return Locate<Of>(extreme, src, len).value;
    return extreme.best;
  } else {
    return Of::Element(extreme.best);
  }
}

template <class Side, template <class> class Of = Plain, class T>
OrpStatus extreme(const T* pSrc, int len, T* pValue) {
  ORPS_CHECK_VECTOR(len, pSrc, pValue);
  Extreme<Side, typename Of<T>::Key> found;
  Scan<Of<T>>(pSrc, toSize(len), kValueBlock<T>, found);
  put(pValue, Value<Of<T>>(found, pSrc, toSize(len)));
  return StsOk;
}

template <class Side, template <class> class Of = Plain, class T>
OrpStatus extremeIndx(const T* pSrc, int len, T* pValue, int* pIndx) {
  ORPS_CHECK_VECTOR(len, pSrc, pValue, pIndx);
  Extreme<Side, typename Of<T>::Key> found;
  Scan<Of<T>>(pSrc, toSize(len), kIndexBlock<T>, found);
  const auto [value, index] = Locate<Of<T>>(found, pSrc, toSize(len));
  put(pValue, value);
  put(pIndx, static_cast<int>(index));
  return StsOk;
}

template <class T>
OrpStatus minMax(const T* pSrc, int len, T* pMin, T* pMax) {
  ORPS_CHECK_VECTOR(len, pSrc, pMin, pMax);
  using Of = Plain<T>;
  Extreme<Least, typename Of::Key> least;
  Extreme<Greatest, typename Of::Key> greatest;
  Scan<Of>(pSrc, toSize(len), kValueBlock<T>, least, greatest);
  put(pMin, Value<Of>(least, pSrc, toSize(len)));
  put(pMax, Value<Of>(greatest, pSrc, toSize(len)));
  return StsOk;
}

template <class T>
OrpStatus minMaxIndx(const T* pSrc, int len, T* pMin, int* pMinIndx, T* pMax, int* pMaxIndx) {
  ORPS_CHECK_VECTOR(len, pSrc, pMin, pMinIndx, pMax, pMaxIndx);
  using Of = Plain<T>;
  Extreme<Least, typename Of::Key> least;
  Extreme<Greatest, typename Of::Key> greatest;
  Scan<Of>(pSrc, toSize(len), kIndexBlock<T>, least, greatest);
  const auto min = Locate<Of>(least, pSrc, toSize(len)), max = Locate<Of>(greatest, pSrc, toSize(len));
  put(pMin, min.value);
  put(pMinIndx, static_cast<int>(min.index));
  put(pMax, max.value);
  put(pMaxIndx, static_cast<int>(max.index));
  return StsOk;
}

// ---- Element by element

template <class Side>
struct Every {
  template <class V>
  HWY_INLINE V operator()(auto, V a, V b) const {
    const V picked = Side::Pick(b, a);  // a if they are equal, or one is a NaN
    if constexpr (isFloat<hn::TFromV<V>>) {
      return hn::IfThenElse(hn::IsNaN(a), b, picked);
    } else {
      return picked;
    }
  }
};

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/extrema.inc"
#include "frame/exports-inl.h"
