// Sorts that also tell the permutation: quicksort in fixed steps, its partition by bit sets [Edelkamp, Weiss:
// BlockQuicksort: How branch mispredictions don't affect quicksort, ESA 2016].
#include "orpsp/stats/sorting.h"

#include "frame/entry.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "stats/sort_index.cpp"
#include <hwy/foreach_target.h>

#include "simd/forms-inl.h"
#include "stats/sort.h"
#include "stats/sort_order-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

constexpr size_t kBlock = 64;    // elements whose comparisons are the bits of a number
constexpr size_t kSelected = 9;  // elements of the longest range that is sorted by selection

HWY_INLINE uint64_t LowBits(size_t count) { return count < 64 ? (uint64_t{1} << count) - 1 : ~uint64_t{0}; }
HWY_INLINE size_t CountBits(uint64_t bits) { return static_cast<size_t>(__builtin_popcountll(bits)); }
HWY_INLINE size_t LowestBit(uint64_t bits) { return static_cast<size_t>(__builtin_ctzll(bits)); }
HWY_INLINE uint64_t ReverseBits(uint64_t bits) {
  bits = __builtin_bswap64(bits);
  bits = (bits >> 4 & 0x0F0F0F0F0F0F0F0F) | (bits & 0x0F0F0F0F0F0F0F0F) << 4;
  bits = (bits >> 2 & 0x3333333333333333) | (bits & 0x3333333333333333) << 2;
  return (bits >> 1 & 0x5555555555555555) | (bits & 0x5555555555555555) << 1;
}

// Order by bits (sorting.h) as an order of integers.
template <class T>
HWY_INLINE auto Ordered(T key) {
  if constexpr (std::is_floating_point_v<T>) {
    return kFloatOrder<T>.Key(__builtin_bit_cast(hwy::MakeSigned<T>, key));
  } else {
    return key;
  }
}
template <class V>
HWY_INLINE auto OrderedLanes(V keys) {
  using T = hn::TFromV<V>;
  if constexpr (std::is_floating_point_v<T>) {
    constexpr hn::RebindToSigned<hn::DFromV<V>> di;
    return kFloatOrder<T>.Key(di, hn::BitCast(di, keys));
  } else {
    return keys;
  }
}

template <class D>
HWY_INLINE uint64_t MaskBits(D d, hn::Mask<D> mask) {
  uint64_t bits = 0;
  hn::StoreMaskBits(d, mask, reinterpret_cast<uint8_t*>(&bits));
  return bits;
}

// How ranges are split: as the contract says; or, once that has gone wrong too often, by keys in the order by bits and
// equal ones by their indices, around pivots that are taken at random. The second order has no equal elements, so that
// its result does not depend on how it comes about.
enum class Mode { steps, total };

// Sorts some of len >= kBlock elements and their indices.
template <class T, bool descend>
class IndexSort {
 public:
  IndexSort(T* keys, int32_t* indices, size_t len) : keys_(keys), indices_(indices), len_(len) {}

  // Sorts the first `count` of them.
  void Run(size_t count) {
    // Organ pipes, sawtooths and other waves need up to 7 log2(count) splits (of a million elements; of more somewhat
    // more), random elements 2 log2(count): only what is made for these steps needs more than the limit.
    const size_t mostDepth = 16 * (63 - static_cast<size_t>(__builtin_clzll(count)));
    Range pending[2 * 64];
    size_t pendingCount = 0;
    Range now{0, count, mostDepth, Mode::steps};
    for (;;) {
      if (Finished(now)) {
        if (pendingCount == 0) return;
        now = pending[--pendingCount];
        continue;
      }
      if (now.depth == 0) now = {now.first, now.count, mostDepth, Mode::total};
      Range smaller, larger;
      if (now.mode == Mode::steps) {
        Split<Mode::steps>(now, smaller, larger);
      } else {
        Split<Mode::total>(now, smaller, larger);
      }
      if (smaller.count > larger.count) {
        const Range range = smaller;
        smaller = larger;
        larger = range;
      }
      now = larger;
      if (smaller.count == 0) continue;
      pending[pendingCount++] = larger;
      now = smaller;
    }
  }

 private:
  struct Range {
    size_t first, count, depth;  // depth: splits that remain
    Mode mode;
  };
  struct Element {
    T key;
    int32_t index;
  };

  static constexpr hn::ScalableTag<T> kD{};
  static constexpr size_t kLanes = HWY_MAX_BYTES / sizeof(T);
  // Elements of the longest range that is sorted by their ranks; of bytes more than these are hardly ever different.
  static constexpr size_t kRanked = sizeof(T) == 1 ? 16 : HWY_MIN(kBlock, 6 * kLanes);

  Element At(size_t i) const { return {get(keys_ + i), get(indices_ + i)}; }
  HWY_INLINE void Put(size_t i, Element e) {
    orpsp::put(keys_ + i, e.key);
    orpsp::put(indices_ + i, e.index);
  }
  HWY_INLINE void Swap(size_t i, size_t j) {
    const Element a = At(i), b = At(j);
    Put(i, b);
    Put(j, a);
  }

  // x belongs behind y
  static HWY_INLINE bool Behind(auto x, auto y) { return descend ? x < y : x > y; }
  static HWY_INLINE auto BehindLanes(auto x, auto y) {
    if constexpr (descend) {
      return hn::Lt(x, y);
    } else {
      return hn::Gt(x, y);
    }
  }
  template <Mode mode>
  static HWY_INLINE bool Behind(Element x, Element y) {
    if constexpr (mode == Mode::steps) {
      return Behind(x.key, y.key);
    } else {
      const auto a = Ordered(x.key), b = Ordered(y.key);
      return a == b ? x.index > y.index : Behind(a, b);
    }
  }
  // The element belongs behind the pivot or is equal to it.
  template <Mode mode>
  static HWY_INLINE bool MayFollow(Element x, Element pivot) {
    if constexpr (mode == Mode::steps) {
      return descend ? x.key <= pivot.key : x.key >= pivot.key;
    } else {
      return !Behind<mode>(pivot, x);
    }
  }

  template <Mode mode>
  HWY_INLINE void Order(size_t i, size_t j) {
    const Element a = At(i), b = At(j);
    const bool exchanges = Behind<mode>(a, b);
    Put(i, {exchanges ? b.key : a.key, exchanges ? b.index : a.index});
    Put(j, {exchanges ? a.key : b.key, exchanges ? a.index : b.index});
  }

  bool Finished(const Range& range) {
    if (range.count <= 1) return true;
    if (range.count <= kRanked) {
      if (rankless_ > 0) {
        --rankless_;
      } else {
        if (ranked(range.first, range.count)) return true;
        rankless_ = 8;
      }
    }
    if (range.mode == Mode::steps) {
      if (range.count > kSelected) return false;
      Select(range.first, range.count);
    } else {
      if (range.count > kSelected && range.depth > 0) return false;
      Heapsort(range.first, range.count);
    }
    return true;
  }

  size_t Random(size_t count) {
    random_ = random_ * 6364136223846793005 + 1442695040888963407;  // [Knuth: MMIX]
    return (random_ >> 32) * count >> 32;
  }

  template <Mode mode>
  void Split(const Range& range, Range& before, Range& after) {
    const size_t first = range.first, last = first + range.count - 1, middle = first + range.count / 2;
    if constexpr (mode == Mode::total) {
      for (const size_t i : {first, middle, last}) Swap(i, first + Random(range.count));
    }
    Order<mode>(first, last);
    Order<mode>(middle, last);
    Order<mode>(first, middle);
    const Element pivot = At(middle);
    const size_t border = Partition<mode>(first + 1, last + 1, pivot);
    size_t end = border;  // those between end and border are in place; behind the border none equals the pivot
    while (end > first && MayFollow<mode>(At(end - 1), pivot)) --end;
    before = {first, end - first, range.depth - 1, mode};
    after = {border, last + 1 - border, range.depth - 1, mode};
  }

  // Bits of the elements of the block at `first` that belong behind the pivot.
  template <Mode mode>
  HWY_INLINE uint64_t BehindPivot(size_t first, Element pivot) const {
    uint64_t bits = 0, same = 0;
    if constexpr (mode == Mode::steps) {
      const auto v = hn::Set(kD, pivot.key);
#pragma GCC unroll 8
      for (size_t i = 0; i < kBlock; i += kLanes)
        bits |= MaskBits(kD, BehindLanes(hn::LoadU(kD, keys_ + first + i), v)) << i;
    } else {
      const auto v = OrderedLanes(hn::Set(kD, pivot.key));
      constexpr hn::DFromV<decltype(v)> d;
      for (size_t i = 0; i < kBlock; i += kLanes) {
        const auto keys = OrderedLanes(hn::LoadU(kD, keys_ + first + i));
        bits |= MaskBits(d, BehindLanes(keys, v)) << i;
        same |= MaskBits(d, hn::Eq(keys, v)) << i;
      }
    }
    for (; same != 0; same &= same - 1) {
      const size_t i = LowestBit(same);
      bits |= uint64_t{get(indices_ + first + i) > pivot.index} << i;
    }
    return bits;
  }

  // Exchanges elements of `up`, counted from `base` upwards, with those of `down`, counted from `top` downwards, until
  // either has none left.
  HWY_INLINE void Exchange(size_t base, uint64_t& up, size_t top, uint64_t& down) {
    for (size_t n = HWY_MIN(CountBits(up), CountBits(down)); n != 0; --n) {
      Swap(base + LowestBit(up), top - LowestBit(down));
      up &= up - 1;
      down &= down - 1;
    }
  }

  // Moves the elements of [left, right) that belong behind the pivot to its end: the first of them changes places with
  // the last of the others, and so on. Returns where they begin.
  template <Mode mode>
  HWY_INLINE size_t Partition(size_t left, size_t right, Element pivot) {
    uint64_t up = 0, down = 0;  // those left to exchange in the blocks [left - 64, left) and [right, right + 64)
    while (right - left >= kBlock) {
      if (up == 0) {
        up = BehindPivot<mode>(left, pivot);
        left += kBlock;
      } else {
        right -= kBlock;
        down = ReverseBits(~BehindPivot<mode>(right, pivot));
      }
      Exchange(left - kBlock, up, right + kBlock - 1, down);
    }
    // What is between the blocks serves as partner of the block that has elements left.
    const size_t between = right - left, window = HWY_MIN(left, len_ - kBlock);
    const uint64_t all = LowBits(between);
    const uint64_t rest = between == 0 ? 0 : BehindPivot<mode>(window, pivot) >> (left - window) & all;
    if (up != 0) {
      down = ReverseBits(~rest & all);
      Exchange(left - kBlock, up, left + kBlock - 1, down);
      if (up != 0) return PartitionBlock(left - kBlock, kBlock, up);
      return PartitionBlock(left, between, ~ReverseBits(down) & all);
    }
    up = rest;
    if (down != 0) {
      Exchange(left, up, right + kBlock - 1, down);
      if (down != 0) return PartitionBlock(right, kBlock, ~ReverseBits(down));
    }
    return PartitionBlock(left, between, up);
  }

  // Partition of a block whose comparisons are known.
  HWY_INLINE size_t PartitionBlock(size_t first, size_t count, uint64_t bits) {
    const size_t others = count - CountBits(bits);
    uint64_t up = bits & LowBits(others), down = ReverseBits(~bits & LowBits(count) & ~LowBits(others));
    Exchange(first, up, first + kBlock - 1, down);
    return first + others;
  }

  void Select(size_t first, size_t count) {
    for (size_t last = first + count - 1; last > first; --last) {
      size_t most = first;
      T key = get(keys_ + first);
      for (size_t i = first + 1; i <= last; ++i) {
        const T other = get(keys_ + i);
        const bool more = Behind(other, key);
        most = more ? i : most;
        key = more ? other : key;
      }
      Swap(most, last);
    }
  }

  // Without equal elements any method gives the same result: here each goes to the place that the number of those in
  // front of it says. False, and nothing done, if elements are equal or NaN.
  template <size_t vectors = 1>
  HWY_NOINLINE bool ranked(size_t first, size_t count) {
    constexpr size_t kWindow = vectors * kLanes;
    if constexpr (kWindow < kRanked) {
      if (count > kWindow) return ranked<vectors + 1>(first, count);
    }
    using DI = hn::RebindToSigned<decltype(kD)>;
    using Rank = hn::TFromD<DI>;
    constexpr DI di;
    constexpr hn::CappedTag<int32_t, kLanes> d32;
    const size_t window = HWY_MIN(first, len_ - kWindow), before = first - window;
    hn::Vec<decltype(kD)> keys[vectors];
    hn::Vec<DI> ranks[vectors];
#pragma GCC unroll 16
    for (size_t v = 0; v < vectors; ++v) {
      keys[v] = hn::LoadU(kD, keys_ + window + v * kLanes);
      ranks[v] = hn::Zero(di);
    }
    for (size_t i = first; i < first + count; ++i) {
      const auto key = hn::Set(kD, get(keys_ + i));
#pragma GCC unroll 16
      for (size_t v = 0; v < vectors; ++v) {
        const auto more = hn::RebindMask(di, BehindLanes(keys[v], key));
        ranks[v] = hn::IfThenElse(more, hn::Add(ranks[v], hn::Set(di, 1)), ranks[v]);
      }
    }
    alignas(HWY_MAX_BYTES) T key[kWindow];
    alignas(HWY_MAX_BYTES) Rank rank[kWindow];
    alignas(HWY_MAX_BYTES) int32_t index[kWindow];
#pragma GCC unroll 16
    for (size_t v = 0; v < vectors; ++v) {
      hn::Store(keys[v], kD, key + v * kLanes);
      hn::Store(ranks[v], di, rank + v * kLanes);
    }
    for (size_t i = 0; i < kWindow; i += hn::Lanes(d32))
      hn::Store(hn::LoadU(d32, indices_ + window + i), d32, index + i);
    size_t sum = 0;
    for (size_t i = before; i < before + count; ++i) sum += static_cast<size_t>(rank[i]);
    if (sum != count * (count - 1) / 2) return false;
    for (size_t i = before; i < before + count; ++i) Put(first + static_cast<size_t>(rank[i]), {key[i], index[i]});
    return true;
  }

  HWY_NOINLINE void Heapsort(size_t first, size_t count) {
    for (size_t root = count / 2; root-- > 0;) Sift(first, root, count);
    for (size_t end = count; --end > 0;) {
      Swap(first, first + end);
      Sift(first, 0, end);
    }
  }
  void Sift(size_t first, size_t root, size_t end) {
    const Element moved = At(first + root);
    for (size_t child = 2 * root + 1; child < end; child = 2 * root + 1) {
      if (child + 1 < end && Behind<Mode::total>(At(first + child + 1), At(first + child))) ++child;
      if (!Behind<Mode::total>(At(first + child), moved)) break;
      Put(first + root, At(first + child));
      root = child;
    }
    Put(first + root, moved);
  }

  T* keys_;
  int32_t* indices_;
  size_t len_;
  uint64_t random_ = 0;
  int rankless_ = 0;  // ranges to come whose ranks are not tried: where some elements are equal, others are
};

template <bool descend, class T>
OrpStatus sortIndex(T* pSrcDst, Orp32s* pDstIndx, int len) {
  ORPS_CHECK_VECTOR(len, pSrcDst, pDstIndx);
  const size_t count = toSize(len);
  constexpr hn::ScalableTag<int32_t> d;
  if (count < kBlock) {  // a few elements are sorted where whole blocks can be read
    T keys[kBlock] = {};
    int32_t indices[kBlock];
    for (size_t i = 0; i < kBlock; i += hn::Lanes(d)) hn::StoreU(hn::Iota(d, static_cast<int32_t>(i)), d, indices + i);
    __builtin_memcpy(keys, pSrcDst, count * sizeof(T));
    IndexSort<T, descend>(keys, indices, kBlock).Run(count);
    __builtin_memcpy(pSrcDst, keys, count * sizeof(T));
    __builtin_memcpy(pDstIndx, indices, count * sizeof(int32_t));
    return StsOk;
  }
  auto next = hn::Iota(d, 0);
  size_t i = 0;
  for (; i + hn::Lanes(d) <= count; i += hn::Lanes(d)) {
    hn::StoreU(next, d, pDstIndx + i);
    next = hn::Add(next, hn::Set(d, static_cast<int32_t>(hn::Lanes(d))));
  }
  for (; i < count; ++i) put(pDstIndx + i, static_cast<int32_t>(i));
  IndexSort<T, descend>(pSrcDst, pDstIndx, count).Run(count);
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/sort_index.inc"
#include "frame/exports-inl.h"
