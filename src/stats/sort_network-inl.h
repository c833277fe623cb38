// Sorting networks in registers: a matrix of lanes whose columns are sorted by Batcher's merge exchange and then
// merged, two by two, by bitonic networks. [Batcher: Sorting networks and their applications, AFIPS 1968; Knuth: The
// Art of Computer Programming 3, 5.2.2 M]
#if defined(ORPSP_STATS_SORT_NETWORK_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_STATS_SORT_NETWORK_INL_H_
#undef ORPSP_STATS_SORT_NETWORK_INL_H_
#else
#define ORPSP_STATS_SORT_NETWORK_INL_H_
#endif

#include <utility>

#include "simd/shuffle-inl.h"
#include "stats/sort_order-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// Without instructions for minimum and maximum (SSE4.1) a comparison serves both.
template <class T>
inline constexpr bool kLacksMinMax = HWY_TARGET == HWY_SSSE3 && sizeof(T) >= 4;

template <class V>
HWY_INLINE void SortPair(V& a, V& b) {
  if constexpr (kLacksMinMax<hn::TFromV<V>>) {
    const V exchange = hn::And(hn::VecFromMask(hn::DFromV<V>{}, hn::Gt(a, b)), hn::Xor(a, b));
    a = hn::Xor(a, exchange);
    b = hn::Xor(b, exchange);
  } else {
    const V less = hn::Min(a, b);
    b = hn::Max(a, b);
    a = less;
  }
}

template <size_t mask>
struct Exchanged {  // lanes i and i ^ mask
  static constexpr size_t pick(size_t i, size_t) { return i ^ mask; }
};
template <size_t bit>
struct SecondWhereSet {
  static constexpr size_t pick(size_t i, size_t lanes) { return i & bit ? lanes + i : i; }
};

template <size_t mask, class V>
HWY_INLINE V ExchangeLanes(V v) {
  return Shuffled<Exchanged<mask>>(v, v);
}

// Lanes i and i ^ mask put in order, the greater in the one whose bit is set.
template <size_t mask, size_t bit, class V>
HWY_INLINE V SortLanes(V v) {
  const V other = ExchangeLanes<mask>(v);
  if constexpr (kLacksMinMax<hn::TFromV<V>>) {
    constexpr hn::DFromV<V> d;
    const V greater = hn::VecFromMask(d, hn::Gt(v, other));
    const V takes = hn::Xor(greater, Shuffled<SecondWhereSet<bit>>(hn::Zero(d), hn::Set(d, hn::TFromV<V>{-1})));
    return hn::Xor(v, hn::And(takes, hn::Xor(v, other)));
  } else {
    return Shuffled<SecondWhereSet<bit>>(hn::Min(v, other), hn::Max(v, other));
  }
}

template <size_t rows>
struct MergeExchange {
  struct Pairs {
    size_t count, first[64], second[64];
  };
  static constexpr Pairs kPairs = [] {
    Pairs pairs{};
    for (size_t p = rows / 2; p > 0; p /= 2) {
      for (size_t q = rows / 2, r = 0, distance = p;; distance = q - p, q /= 2, r = p) {
        for (size_t i = 0; i + distance < rows; ++i) {
          if ((i & p) != r) continue;
          pairs.first[pairs.count] = i;
          pairs.second[pairs.count++] = i + distance;
        }
        if (q == p) break;
      }
    }
    return pairs;
  }();
};

template <size_t rows, class V, size_t... i>
HWY_INLINE void SortColumns(V (&v)[rows], std::index_sequence<i...>) {
  constexpr auto& pairs = MergeExchange<rows>::kPairs;
  (SortPair(v[pairs.first[i]], v[pairs.second[i]]), ...);
}

// Groups of `width` lanes hold two ascending sequences, row by row, one in their lower half, one in the upper. Element
// j of one is compared with element j from the end of the other, which leaves the lesser ones in the upper rows as two
// halves of a bitonic sequence in the same arrangement: so rows are halved until each holds `width` neighbours.
template <size_t width, size_t height, size_t rows, class V, size_t... i>
HWY_INLINE void MergeRows(V (&v)[rows], std::index_sequence<i...> pairs) {
  if constexpr (height >= 2) {
    constexpr size_t half = height / 2;
    const auto step = [](V& upper, V& lower) HWY_ATTR {
      lower = ExchangeLanes<width - 1>(lower);
      SortPair(upper, lower);
    };
    (step(v[i / half * height + i % half], v[i / half * height + height - 1 - i % half]), ...);
    MergeRows<width, half>(v, pairs);
  }
}

template <size_t distance, size_t rows, class V, size_t... i>
HWY_INLINE void SortInRows(V (&v)[rows], std::index_sequence<i...> all) {
  if constexpr (distance >= 1) {
    ((v[i] = SortLanes<distance, distance>(v[i])), ...);
    SortInRows<distance / 2>(v, all);
  }
}

template <size_t width, size_t lanes, size_t rows, class V, size_t... i>
HWY_INLINE void MergeColumns(V (&v)[rows], std::index_sequence<i...> all) {
  if constexpr (width <= lanes) {
    MergeRows<width, rows>(v, std::make_index_sequence<rows / 2>{});
    ((v[i] = SortLanes<width - 1, width / 2>(v[i])), ...);
    SortInRows<width / 4>(v, all);
    MergeColumns<width * 2, lanes>(v, all);
  }
}

// Ones in the first `count` lanes.
template <class T, size_t lanes>
struct FirstLanes {
  struct Table {
    T at[2 * lanes];
  };
  static constexpr Table kTable = [] {
    Table table{};
    for (size_t i = 0; i < lanes; ++i) table.at[i] = -1;
    return table;
  }();
  static HWY_INLINE auto Get(size_t count) {
    return hn::LoadU(hn::FixedTag<T, lanes>{}, kTable.at + lanes - HWY_MIN(count, lanes));
  }
};

// Sorts n elements, lanes <= n <= rows * lanes. At least `full` rows are full.
template <size_t rows, size_t lanes, size_t full, class T, size_t... i>
HWY_INLINE void SortMatrix(T* p, size_t n, KeyOrder<T> order, std::index_sequence<i...> all) {
  constexpr hn::FixedTag<T, lanes> d;
  using V = hn::Vec<decltype(d)>;
  const auto most = hn::Set(d, hwy::HighestValue<T>());
  // Loads are moved back until they end with the range; what they read twice is replaced by the greatest key.
  const auto load = [&](size_t at) HWY_ATTR {
    if (at < full * lanes) return order.Key(d, hn::LoadU(d, p + at));
    const size_t from = HWY_MIN(at, n - lanes);
    const auto twice = hn::MaskFromVec(FirstLanes<T, lanes>::Get(at - from));
    return hn::IfThenElse(twice, most, order.Key(d, hn::LoadU(d, p + from)));
  };
  V v[rows] = {load(i * lanes)...};
  SortColumns(v, std::make_index_sequence<MergeExchange<rows>::kPairs.count>{});
  MergeColumns<2, lanes>(v, all);
  // Stores are moved back likewise; what they store twice comes by way of a copy.
  alignas(HWY_MAX_BYTES) T sorted[rows * lanes];
  const auto keep = [&](size_t at, V& row) HWY_ATTR {
    row = order.Value(d, row);
    if (at + lanes >= full * lanes) hn::Store(row, d, sorted + at);
  };
  const auto store = [&](size_t at, V row) HWY_ATTR {
    if (at < full * lanes) return hn::StoreU(row, d, p + at);
    const size_t to = HWY_MIN(at, n - lanes);
    hn::StoreU(hn::LoadU(d, sorted + to), d, p + to);
  };
  (keep(i * lanes, v[i]), ...);
  (store(i * lanes, v[i]), ...);
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif
