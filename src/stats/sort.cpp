// Sorts of values: counting, networks and a vectorised quicksort (quick_sort-inl.h).
//
// All elements are sorted as signed integers of their width, by keys (KeyOrder). Short ranges are sorted by networks,
// which compute keys as they load. Longer floats are replaced by their keys first; the quicksort then has to invert the
// same bits of all elements at most. Sorted and reversed vectors are recognised.
#include "stats/sort.h"

#include "frame/width.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "stats/sort.cpp"
#include <hwy/foreach_target.h>

#include "orpsp/stats/sorting.h"
#include "simd/forms-inl.h"
#include "stats/quick_sort-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// Whether the keys do not descend.
template <class T>
HWY_INLINE bool IsOrdered(const T* p, size_t n, KeyOrder<T> order) {
  constexpr hn::CappedTag<T, 16 / sizeof(T)> d;
  constexpr size_t kStep = hn::MaxLanes(d);
  if (n <= kStep) {
    bool ordered = true;
    for (size_t i = 1; i < n; ++i) ordered &= order.Key(get(p + i - 1)) <= order.Key(get(p + i));
    return ordered;
  }
  const auto descends = [&](size_t i) HWY_ATTR {
    const auto greater = hn::Gt(order.Key(d, hn::LoadU(d, p + i)), order.Key(d, hn::LoadU(d, p + i + 1)));
    return !hn::AllFalse(d, greater);
  };
  for (size_t i = 0; i + kStep < n - 1; i += kStep) {
    if (descends(i)) return false;
  }
  return !descends(n - 1 - kStep);
}

// ---- Bytes

// Few bytes are sorted as elements of 16 bits.
HWY_NOINLINE void SortFewBytes(int8_t* p, size_t n, KeyOrder<int8_t> order) {
  constexpr hn::FixedTag<int8_t, 8> d8;
  constexpr hn::FixedTag<int16_t, 8> d16;
  constexpr size_t kStep = 8;
  if (IsOrdered(p, n, order)) return;
  if (n < kStep) return SortFew(p, n, order);
  alignas(HWY_MAX_BYTES) int16_t keys[Short<int16_t>::kMostElements];
  for (size_t i = 0; i < n; i += kStep) {
    const size_t at = HWY_MIN(i, n - kStep);
    hn::StoreU(hn::PromoteTo(d16, order.Key(d8, hn::LoadU(d8, p + at))), d16, keys + at);
  }
  SortShort(keys, n, KeyOrder<int16_t>{0, 0});
  for (size_t i = 0; i < n; i += kStep) {
    const size_t at = HWY_MIN(i, n - kStep);
    hn::StoreU(order.Value(d8, hn::DemoteTo(d8, hn::LoadU(d16, keys + at))), d8, p + at);
  }
}

HWY_NOINLINE void CountBytes(uint8_t* p, size_t n, bool descends) {
  constexpr size_t kTables = 4;  // a counter is not needed again before its last increment has been stored
  alignas(HWY_MAX_BYTES) uint32_t counts[kTables][256] = {};
  size_t i = 0;
  for (; i + 8 <= n; i += 8) {
    uint64_t eight;
    __builtin_memcpy(&eight, p + i, 8);
#pragma GCC unroll 8
    for (size_t k = 0; k < 8; ++k) ++counts[k % kTables][eight >> (8 * k) & 0xFF];
  }
  for (; i < n; ++i) ++counts[0][p[i]];
  constexpr hn::ScalableTag<uint8_t> d;
  constexpr size_t kLanes = hn::MaxLanes(d);
  uint8_t* const end = p + n;
  for (unsigned k = 0; k < 256; ++k) {
    const unsigned value = descends ? 255 - k : k;
    const size_t count = size_t{counts[0][value]} + counts[1][value] + counts[2][value] + counts[3][value];
    const auto run = hn::Set(d, static_cast<uint8_t>(value));
    // What is written beyond the run belongs to the next one.
    if (HWY_LIKELY(count + kLanes <= static_cast<size_t>(end - p))) {
      for (i = 0; i < count; i += kLanes) hn::StoreU(run, d, p + i);
    } else {
      for (i = 0; i < count; ++i) p[i] = static_cast<uint8_t>(value);
    }
    p += count;
  }
}

// ---- Forms

template <class T>
struct ToKey {
  KeyOrder<T> order;
  HWY_INLINE auto operator()(auto d, auto v) const { return order.Key(d, v); }
};
template <class T>
struct FromKey {
  KeyOrder<T> order;
  HWY_INLINE auto operator()(auto d, auto v) const { return order.Value(d, v); }
};

template <class T>
HWY_NOINLINE void Reverse(T* p, size_t n) {
  constexpr hn::ScalableTag<T> d;
  constexpr size_t kStep = hn::MaxLanes(d);
  for (; n >= 2 * kStep; n -= 2 * kStep, p += kStep) {
    const auto first = hn::LoadU(d, p), last = hn::LoadU(d, p + n - kStep);
    hn::StoreU(hn::Reverse(d, last), d, p);
    hn::StoreU(hn::Reverse(d, first), d, p + n - kStep);
  }
  for (size_t i = 0; i < n / 2; ++i) {
    const T value = get(p + i);
    put(p + i, get(p + n - 1 - i));
    put(p + n - 1 - i, value);
  }
}

template <class T>
void SortBy(KeyOrder<T> order, T* p, size_t n) {
  if (IsOrdered(p, n, order)) return;
  if (n <= 16) return SortShort(p, n, order);
  if (IsOrdered(p, n, KeyOrder<T>{static_cast<T>(~order.flip), order.ifNegative})) return Reverse(p, n);
  if (n <= Short<T>::kMostElements) return SortShort(p, n, order);
  if (order.ifNegative == 0) return QuickSort(p, n, order.flip, SplitsByPivots(n));
  Map(ToKey<T>{order}, p, n, Vector<T>{p});
  QuickSort(p, n, T{0}, SplitsByPivots(n));
  Map(FromKey<T>{order}, p, n, Vector<T>{p});
}

template <bool descends, class T>
void SortValues(T* p, size_t n) {
  using Key = hwy::SignedFromSize<sizeof(T)>;
  const Key flip = static_cast<Key>((std::is_unsigned_v<T> ? hwy::LowestValue<Key>() : 0) ^ (descends ? -1 : 0));
  const KeyOrder<Key> order = {flip, isFloat<T> ? hwy::HighestValue<Key>() : Key{0}};
  if constexpr (sizeof(T) > 1) {
    SortBy(order, reinterpret_cast<Key*>(p), n);
  } else if (n <= Short<int16_t>::kMostElements) {
    SortFewBytes(reinterpret_cast<Key*>(p), n, order);
  } else {
    CountBytes(p, n, descends);
  }
}

template <bool descends, class T>
OrpStatus sort(T* pSrcDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrcDst);
  SortValues<descends>(pSrcDst, toSize(len));
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace orpsp {

template <class T>
void sortValues(T* data, size_t len, bool descends) {
  const auto sort = descends ? ORPS_OF_WIDTH(SortValues<kDescends, T>) : ORPS_OF_WIDTH(SortValues<kAscends, T>);
  sort(data, len);
}

template void sortValues(Orp8u*, size_t, bool);
template void sortValues(Orp16s*, size_t, bool);
template void sortValues(Orp16u*, size_t, bool);
template void sortValues(Orp32s*, size_t, bool);
template void sortValues(Orp32u*, size_t, bool);
template void sortValues(Orp32f*, size_t, bool);
template void sortValues(Orp64f*, size_t, bool);

}  // namespace orpsp
#endif

#define ORPSP_TABLE "exports/sort.inc"
#include "frame/exports-inl.h"
