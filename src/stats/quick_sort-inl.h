// A vectorised quicksort, with networks for short ranges.
// [Bramas: A novel hybrid quicksort algorithm vectorized using AVX-512, IJACSA 8 (2017) 337-344; Blacher, Giesen,
// Kuehne: Fast and robust vectorized in-place sorting of primitive types, SEA 2021; Musser: Introspective sorting and
// selection algorithms, Software: Practice and Experience 27 (1997) 983-993]
#if defined(ORPSP_STATS_QUICK_SORT_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_STATS_QUICK_SORT_INL_H_
#undef ORPSP_STATS_QUICK_SORT_INL_H_
#else
#define ORPSP_STATS_QUICK_SORT_INL_H_
#endif

#include "frame/access.h"
#include "stats/sort_network-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// ---- Short ranges

template <class T>
struct Short {
  static constexpr size_t kLanes = HWY_MAX_BYTES / sizeof(T);  // of the widest matrix
  static constexpr size_t kMostElements = 16 * kLanes;         // 32 rows do not fit into the registers and gain nothing
};

template <class T>
void SortFew(T* p, size_t n, KeyOrder<T> order) {  // by insertion
  for (size_t i = 1; i < n; ++i) {
    const T value = get(p + i), key = order.Key(value);
    size_t at = i;
    for (; at > 0 && order.Key(get(p + at - 1)) > key; --at) put(p + at, get(p + at - 1));
    put(p + at, value);
  }
}

template <size_t rows, size_t lanes, size_t full = rows / 2, class T>
HWY_NOINLINE void SortMatrix(T* p, size_t n, KeyOrder<T> order) {
  SortMatrix<rows, lanes, full>(p, n, order, std::make_index_sequence<rows>{});
}

// Sorts a short range in the smallest matrix with room for it.
template <class T>
void SortShort(T* p, size_t n, KeyOrder<T> order) {
  constexpr size_t kLeast = HWY_MIN(4, 16 / sizeof(T)), kMost = Short<T>::kLanes;
  if (n < 4) return SortFew(p, n, order);
  if (n <= 4 * kLeast) return SortMatrix<4, kLeast, 1>(p, n, order);
  if (n <= 8 * kLeast) return SortMatrix<8, kLeast>(p, n, order);
  if (n <= 16 * kLeast && 2 * kLeast <= kMost) return SortMatrix<8, HWY_MIN(2 * kLeast, kMost)>(p, n, order);
  if (n <= 32 * kLeast && 4 * kLeast <= kMost) return SortMatrix<8, HWY_MIN(4 * kLeast, kMost)>(p, n, order);
  if (n <= 64 * kLeast && 8 * kLeast <= kMost) return SortMatrix<8, HWY_MIN(8 * kLeast, kMost)>(p, n, order);
  SortMatrix<16, kMost>(p, n, order);
}

// ---- Partition

// The order of lanes that brings those of the left side to the front, for each set of the others. A lane is named
// by `parts` consecutive numbers: bytes of a vector of 128 bits, otherwise halves or whole lanes. Up to eight lanes by
// such a table are quicker here than sixteen by the compressing instructions of AVX-512.
template <size_t lanes, size_t parts>
struct Orders {
  struct Table {
    alignas(16) uint8_t at[size_t{1} << lanes][lanes * parts];
    uint8_t count[size_t{1} << lanes];  // of lanes that go to the right
  };
  static constexpr Table kTable = [] {
    Table table{};
    for (size_t set = 0; set < size_t{1} << lanes; ++set) {
      size_t to = 0;
      for (size_t goesRight = 0; goesRight < 2; ++goesRight) {
        for (size_t i = 0; i < lanes; ++i) {
          if ((set >> i & 1) != goesRight) continue;
          table.count[set] = static_cast<uint8_t>(table.count[set] + goesRight);
          for (size_t part = 0; part < parts; ++part) table.at[set][to++] = static_cast<uint8_t>(i * parts + part);
        }
      }
    }
    return table;
  }();
};

// A gap between elements that are on the left or right side already; it fills up from both ends.
template <class T>
struct Gap {
  static constexpr size_t kLanes = HWY_MIN(8, HWY_MAX_BYTES / sizeof(T));
  using D = hn::FixedTag<T, kLanes>;
  using V = hn::Vec<D>;

  T *left, *right;
  V flips, threshold;  // keys greater than the threshold go to the right

  Gap(T* begin, T* end, T flip, T last)
      : left(begin), right(end), flips(hn::Set(D{}, flip)), threshold(hn::Set(D{}, last)) {}

  // The gap must have room for two vectors or exactly one.
  HWY_INLINE void Put(V v) {
    constexpr size_t kParts = sizeof(V) == 16 ? sizeof(T) : 8 / kLanes;
    constexpr auto& table = Orders<kLanes, kParts>::kTable;
    uint8_t bits[8];
    hn::StoreMaskBits(D{}, hn::Gt(hn::Xor(v, flips), threshold), bits);
    const size_t set = bits[0];
#if HWY_TARGET == HWY_SSSE3
    const size_t count = table.count[set];
#else
    const size_t count = toSize(__builtin_popcount(bits[0]));
#endif
    const V sides = Ordered(v, table.at[set]);
    hn::StoreU(sides, D{}, left);
    hn::StoreU(sides, D{}, right - kLanes);
    left += kLanes - count;
    right -= count;
  }

  static HWY_INLINE V Ordered(V v, const uint8_t* order) {
    if constexpr (sizeof(V) == 16) {
      constexpr hn::Repartition<uint8_t, D> d8;
      return hn::BitCast(D{}, hn::TableLookupBytes(hn::BitCast(d8, v), hn::Load(d8, order)));
#if HWY_TARGET != HWY_SSSE3
    } else if constexpr (sizeof(V) == 32) {
      const auto eight = hn::LoadU(hn::FixedTag<uint8_t, 8>{}, order);
      return V{_mm256_permutevar8x32_epi32(v.raw, _mm256_cvtepu8_epi32(eight.raw))};
#endif
#if HWY_TARGET == HWY_AVX3
    } else {
      const auto eight = hn::LoadU(hn::FixedTag<uint8_t, 8>{}, order);
      return V{_mm512_permutexvar_epi64(_mm512_cvtepu8_epi64(eight.raw), v.raw)};
#endif
    }
  }

  // Takes a block of `count` elements, a multiple of kLanes, upward or, with a negative step, downward. The next
  // block of this side will be the next one or a later one: it is fetched either way.
  HWY_INLINE void Take(const T* src, size_t count, ptrdiff_t step) {
    const ptrdiff_t ahead = step * static_cast<ptrdiff_t>(count / kLanes);
#pragma GCC unroll 4
    for (; count > 0; count -= kLanes, src += step) {
      hwy::Prefetch(src + ahead);
      Put(hn::LoadU(D{}, src));
    }
  }

  // Fills the gap with the `count` elements of src that are missing.
  HWY_INLINE void Fill(const T* src, size_t count) {
#pragma GCC unroll 4
    for (; count >= 2 * kLanes; count -= kLanes, src += kLanes) Put(hn::LoadU(D{}, src));
    const T flip = hn::GetLane(flips), last = hn::GetLane(threshold);
    for (; count > 0; --count, ++src) {
      const bool goesRight = static_cast<T>(*src ^ flip) > last;
      put(left, *src);
      put(right - 1, *src);
      left += !goesRight;
      right -= goesRight;
    }
  }
};

// Puts the elements whose keys are greater than `last` behind the others and returns where they begin.
// Blocks from both ends are set aside; then there is always one side where another block can be read and both sides
// have room for it.
template <class T>
HWY_NOINLINE T* Partition(T* p, size_t n, T flip, T last) {
  constexpr size_t kBlock = 4096 / sizeof(T), kLanes = Gap<T>::kLanes;
  alignas(HWY_MAX_BYTES) T aside[3 * kBlock];
  Gap<T> gap(p, p + n, flip, last);
  const size_t whole = n < 3 * kBlock ? 0 : n / kBlock - 2;  // blocks that stay
  const size_t count = n - whole * kBlock, front = whole == 0 ? count : kBlock;
  T *begin = p + front, *end = begin + whole * kBlock;
  const auto setAside = [](const T* src, T* dst, size_t elements) HWY_ATTR {
    constexpr hn::CappedTag<T, 64 / sizeof(T)> d;
    constexpr size_t kStep = hn::MaxLanes(d);
    for (size_t i = 0; i + kStep < elements; i += kStep) {
      hn::StoreU(hn::LoadU(d, src + i), d, dst + i);
      asm volatile("");  // or the compiler calls memcpy
    }
    hn::StoreU(hn::LoadU(d, src + elements - kStep), d, dst + elements - kStep);
  };
  setAside(p, aside, front);
  if (whole != 0) setAside(end, aside + front, count - front);
  while (begin < end) {
    if (begin - gap.left <= gap.right - end) {
      begin += kBlock;
      gap.Take(begin - kBlock, kBlock, kLanes);
    } else {
      end -= kBlock;
      gap.Take(end + kBlock - kLanes, kBlock, -static_cast<ptrdiff_t>(kLanes));
    }
  }
  gap.Fill(aside, count);
  return gap.left;
}

// ---- Quicksort

// Some keys in order, each the middle one of three from all over a range; the one in their middle makes a good
// pivot.
template <class T>
struct Sample {
  static constexpr size_t kCount = kLacksMinMax<T> ? 32 / sizeof(T) : 16;
  alignas(HWY_MAX_BYTES) T keys[kCount];

  HWY_INLINE Sample(const T* p, size_t n, T flip, uint64_t& random) {
    constexpr hn::CappedTag<T, kCount> d;
    using V = hn::Vec<decltype(d)>;
    random ^= random << 13;
    random ^= random >> 7;
    random ^= random << 17;
    const size_t stratum = n / 3, scatter = stratum - HWY_MIN(stratum, kCount);
    const auto begin = [=](size_t i)
                           HWY_ATTR { return p + i * stratum + (((random >> (21 * i)) & 0x1FFFFF) * scatter >> 21); };
    const T *a = begin(0), *b = begin(1), *c = begin(2);
    if (c + kCount > p + n) c = p + n - kCount;
    const auto flips = hn::Set(d, flip);
    for (size_t i = 0; i < kCount; i += hn::MaxLanes(d)) {
      V low = hn::Xor(hn::LoadU(d, a + i), flips);
      V middle = hn::Xor(hn::LoadU(d, b + i), flips);
      V high = hn::Xor(hn::LoadU(d, c + i), flips);
      SortPair(low, middle);
      SortPair(middle, high);
      SortPair(low, middle);
      hn::Store(middle, d, keys + i);
    }
    SortShort(keys, kCount, KeyOrder<T>{0, 0});
  }
  [[nodiscard]] T Middle() const { return keys[kCount / 2]; }
  [[nodiscard]] bool AllEqual() const { return keys[0] == keys[kCount - 1]; }
};

template <class T>
HWY_NOINLINE bool AreEqual(const T* p, size_t n) {
  constexpr hn::ScalableTag<T> d;
  const auto first = hn::Set(d, get(p));
  const size_t end = n - hn::MaxLanes(d);
  for (size_t i = 0; i < end; i += hn::MaxLanes(d)) {
    if (!hn::AllTrue(d, hn::Eq(hn::LoadU(d, p + i), first))) return false;
  }
  return hn::AllTrue(d, hn::Eq(hn::LoadU(d, p + end), first));
}

template <class T>
struct Ends {
  T least, greatest;
};

template <class T>
HWY_NOINLINE Ends<T> EndsOf(const T* p, size_t n, T flip) {
  constexpr hn::ScalableTag<T> d;
  constexpr size_t kLanes = hn::MaxLanes(d);
  auto least = hn::Set(d, hwy::HighestValue<T>()), greatest = hn::Set(d, hwy::LowestValue<T>());
  for (size_t i = 0; i < n; i += kLanes) {
    const auto keys = hn::Xor(hn::LoadU(d, p + HWY_MIN(i, n - kLanes)), hn::Set(d, flip));
    least = hn::Min(least, keys);
    greatest = hn::Max(greatest, keys);
  }
  alignas(HWY_MAX_BYTES) T low[kLanes], high[kLanes];
  hn::Store(least, d, low);
  hn::Store(greatest, d, high);
  Ends<T> ends = {low[0], high[0]};
  for (size_t i = 1; i < kLanes; ++i) ends = {HWY_MIN(ends.least, low[i]), HWY_MAX(ends.greatest, high[i])};
  return ends;
}

// Splits by pivots that a range may go through before its samples count as bad.
HWY_INLINE int SplitsByPivots(size_t n) { return 2 * (31 - __builtin_clz(static_cast<unsigned>(n))) + 4; }

// Sorts n elements by their keys, which are the elements with the bits of `flip` inverted.
template <class T>
void QuickSort(T* p, size_t n, T flip, int mostSplits) {
  struct Range {
    T* p;
    size_t n;
    T bound;     // no key is greater
    int splits;  // by pivots that are left
  };
  Range pending[32];  // the greater one of two ranges waits, so none of the others is half as long
  size_t waiting = 0;
  Range range = {p, n, hwy::HighestValue<T>(), mostSplits};
  uint64_t random = n * 0x9E3779B97F4A7C15 | 1;
  for (;;) {
    if (range.n <= Short<T>::kMostElements) {
      SortShort(range.p, range.n, KeyOrder<T>{flip, 0});
    } else {
      T last;  // key of the left side
      bool isEqual, finishesRight = false;
      if (HWY_LIKELY(range.splits > 0)) {
        const Sample<T> sample(range.p, range.n, flip, random);
        const T pivot = sample.Middle();
        // The elements equal to the greatest possible key are in their place once they are on the right.
        finishesRight = pivot == range.bound;
        isEqual =
            (finishesRight && pivot == hwy::LowestValue<T>()) || (sample.AllEqual() && AreEqual(range.p, range.n));
        last = static_cast<T>(pivot - finishesRight);
      } else {
        // The samples were bad ones. Halves of the keys' span instead of the elements: it has as many bits as a key.
        using U = std::make_unsigned_t<T>;
        const auto [least, greatest] = EndsOf(range.p, range.n, flip);
        const U span = static_cast<U>(static_cast<U>(greatest) - static_cast<U>(least));
        isEqual = span == 0;
        last = static_cast<T>(static_cast<U>(least) + span / 2);
      }
      if (!isEqual) {
        T* const middle = Partition(range.p, range.n, flip, last);
        const int splits = HWY_MAX(range.splits - 1, 0);
        Range left = {range.p, static_cast<size_t>(middle - range.p), last, splits};
        Range right = {middle, finishesRight ? 0 : range.n - left.n, range.bound, splits};
        const bool leftWaits = left.n > right.n;
        pending[waiting++] = leftWaits ? left : right;
        range = leftWaits ? right : left;
        continue;
      }
    }
    if (waiting == 0) return;
    range = pending[--waiting];
  }
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif
