// Radix sorts of values and of indices. No vector instructions serve these.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <tuple>
#include <utility>

#include "frame/access.h"
#include "frame/check.h"
#include "frame/parallel.h"
#include "frame/pause.h"
#include "frame/width.h"
#include "orpsp/stats/sorting.h"
#include "simd/element.h"
#include "stats/sort.h"

namespace orpsp {
namespace {

// ---- Keys and digits

template <size_t bytes>
using Unsigned = std::tuple_element_t<bytes == 1   ? 0
                                      : bytes == 2 ? 1
                                      : bytes == 4 ? 2
                                                   : 3,
                                      std::tuple<uint8_t, uint16_t, uint32_t, uint64_t>>;

template <class T>
using Key = Unsigned<sizeof(T)>;

// Between the bits of an element and the unsigned integer that is ordered as the elements are.
template <class T>
constexpr Key<T> kSign = static_cast<Key<T>>(Key<T>{1} << (kBits<T> - 1));

// All bits of a negative float change, of other signed elements only the sign.
template <class T>
Key<T> changed(bool isNegative) {
  return static_cast<Key<T>>(isFloat<T>            ? kSign<T> | -static_cast<Key<T>>(isNegative)
                             : std::is_signed_v<T> ? kSign<T>
                                                   : 0);
}
template <class T, bool descend>
Key<T> keyOf(Key<T> bits) {
  const Key<T> key = bits ^ changed<T>((bits & kSign<T>) != 0);
  return static_cast<Key<T>>(descend ? ~key : key);
}
template <class T, bool descend>
Key<T> bitsOf(Key<T> key) {
  if (descend) key = static_cast<Key<T>>(~key);
  return key ^ changed<T>((key & kSign<T>) == 0);
}

// Keys are read and written as such in arrays of any type, at any address.
template <class T>
Key<T> load(const void* p) {
  Key<T> bits;
  std::memcpy(&bits, p, sizeof(bits));
  return bits;
}
template <class T>
void store(T* p, Key<T> bits) {
  std::memcpy(p, &bits, sizeof(bits));
}
template <class T, bool descend>
Key<T> keyAt(const void* p) {
  return keyOf<T, descend>(load<T>(p));
}

// The widths of a key's digits, the least significant first; each has counters of its own in one table.
template <size_t... widths>
struct Digits {
  static constexpr size_t kCount = sizeof...(widths);
  static constexpr size_t kWidth[] = {widths...};
  static constexpr size_t kCounters = ((size_t{1} << widths) + ...);
  static constexpr size_t kMostWidth = std::max({widths...});

  static constexpr size_t shift(size_t digit) {
    size_t bits = 0;
    for (size_t i = 0; i < digit; ++i) bits += kWidth[i];
    return bits;
  }
  static constexpr size_t firstCounter(size_t digit) {
    size_t counters = 0;
    for (size_t i = 0; i < digit; ++i) counters += size_t{1} << kWidth[i];
    return counters;
  }
  template <size_t digit>
  static size_t get(auto key) {
    return static_cast<size_t>(key >> shift(digit)) & ((size_t{1} << kWidth[digit]) - 1);
  }
  // work(std::integral_constant) for every digit
  static void forEach(auto work) {
    [&]<size_t... digit>(std::index_sequence<digit...>) { (work(std::integral_constant<size_t, digit>{}), ...); }
    (std::make_index_sequence<kCount>{});
  }
};

template <size_t bytes>
struct DigitsOf;
template <>
struct DigitsOf<1> : Digits<8> {};
template <>
struct DigitsOf<2> : Digits<8, 8> {};
template <>
struct DigitsOf<4> : Digits<11, 11, 10> {};
template <>
struct DigitsOf<8> : Digits<11, 11, 10, 11, 11, 10> {};

// How often each value of each digit occurs in `len` keys.
template <class D>
struct Counters {
  uint32_t table[D::kCounters] = {};

  Counters(size_t len, auto keyAt) {
    for (size_t i = 0; i < len; ++i) {
      const auto key = keyAt(i);
      D::forEach([&](auto digit) { ++of<digit>()[D::template get<digit>(key)]; });
    }
  }
  template <size_t digit>
  uint32_t* of() {
    return table + D::firstCounter(digit);
  }
  // The places where the keys with each value of a digit begin.
  template <size_t digit>
  uint32_t* places() {
    uint32_t* const counters = of<digit>();
    uint32_t sum = 0;
    for (size_t i = 0; i < size_t{1} << D::kWidth[digit]; ++i) sum += std::exchange(counters[i], sum);
    return counters;
  }
};

// ---- Values

// Length from which on passes over digits are quicker, measured: never with vectors of 256 bits or more.
inline size_t radixFrom(size_t elementBytes) { return vectorBits() == 128 && elementBytes > 1 ? 700 : SIZE_MAX; }

// One pass over keys; the last one makes elements of them again.
template <class T, bool descend, class D, size_t digit>
void scatter(const T* from, T* to, size_t len, uint32_t* places) {
  const auto move = [=](Key<T> key) {
    store(to + places[D::template get<digit>(key)]++, digit + 1 < D::kCount ? key : bitsOf<T, descend>(key));
  };
  size_t i = 0;
  for (; i + 2 <= len; i += 2) {
    const Key<T> first = load<T>(from + i), second = load<T>(from + i + 1);
    move(first);
    move(second);
  }
  if (i < len) move(load<T>(from + i));
}

// Sorts into `result`, which is `from` or `to`.
template <class T, bool descend>
void sortByDigits(T* from, T* to, T* result, size_t len) {
  using D = DigitsOf<sizeof(T)>;
  Counters<D> counters(len, [=](size_t i) {
    const Key<T> key = keyAt<T, descend>(from + i);
    store(from + i, key);
    return key;
  });
  D::forEach([&](auto digit) {
    const bool shared = counters.template of<digit>()[D::template get<digit>(load<T>(from))] == len;
    if (shared && digit + 1 < D::kCount) return;  // by all keys
    scatter<T, descend, D, digit>(from, to, len, counters.template places<digit>());
    std::swap(from, to);
  });
  if (from != result) std::memcpy(result, from, len * sizeof(T));
}

template <class T, bool descend>
void sortInto(T* data, T* tmp, T* result, size_t len) {
  if (len >= radixFrom(sizeof(T))) return sortByDigits<T, descend>(data, tmp, result, len);
  // Equal keys are equal bits, so that there is no order among them to keep.
  if (data != result) std::memcpy(result, data, len * sizeof(T));
  sortValues(result, len, descend);
}

// Each thread moves its half of the keys to either side of one in their middle, then sorts one of the sides.
template <class T, bool descend>
void sortByTwo(T* data, T* tmp, size_t len) {
  constexpr size_t kSample = 31;
  T sample[kSample];
  for (size_t i = 0; i < kSample; ++i) sample[i] = get(data + i * len / kSample);
  sortValues(sample, kSample, descend);
  const auto pivot = keyAt<T, descend>(sample + kSample / 2);

  const size_t begin[] = {0, len / 2, len};
  size_t below[2];  // the pivot, in each half
  onTwoThreads([&](int which) {
    size_t count = 0;
    for (size_t i = begin[which]; i < begin[which + 1]; ++i) count += keyAt<T, descend>(data + i) < pivot;
    below[which] = count;
  });
  const size_t border = below[0] + below[1];
  onTwoThreads([&](int which) {
    T* low = tmp + (which == 0 ? 0 : below[0]);
    T* high = tmp + border + (which == 0 ? 0 : begin[1] - below[0]);
    for (size_t i = begin[which]; i < begin[which + 1]; ++i) {
      const Key<T> bits = load<T>(data + i);
      const bool isLow = keyOf<T, descend>(bits) < pivot;
      store(isLow ? low : high, bits);
      low += isLow;
      high += !isLow;
    }
  });
  onTwoThreads([&](int which) {
    const size_t first = which == 0 ? 0 : border, count = which == 0 ? border : len - border;
    if (count != 0) sortInto<T, descend>(tmp + first, data + first, data + first, count);
  });
}

// Length from which on a second thread is asked for, and from which on it makes up for moving the keys once more.
template <class T>
constexpr size_t kTwoThreadsFrom = sizeof(T) == 8   ? 32
                                   : sizeof(T) == 4 ? 8192
                                                    : SIZE_MAX;
constexpr size_t kTwoThreadsGainFrom = 8192;

template <bool descend, class T>
OrpStatus sortRadix(T* pSrcDst, T* pTmp, int len) {
  ORPS_CHECK_VECTOR(len, pSrcDst, pTmp);
  const auto alone = [=] { sortInto<T, descend>(pSrcDst, pTmp, pSrcDst, toSize(len)); };
  if (toSize(len) < kTwoThreadsFrom<T> || !mayUseTwoThreads() || toSize(len) < kTwoThreadsGainFrom) {
    alone();
  } else if (!ranAlone(alone)) {
    sortByTwo<T, descend>(pSrcDst, pTmp, toSize(len));
  }
  return StsOk;
}

// ---- Indices

// Keys are read where they are. The bits of an index that a vector of this length leaves unused hold the key's next
// digit, where there are enough of them: it need not be looked up then.
template <class T, bool descend, class D>
class IndexSort {
 public:
  IndexSort(const T* keys, size_t stride, size_t len) : keys_(bytes(keys)), stride_(stride), len_(len) {}

  void run(uint32_t* result, uint32_t* tmp) {
    Counters<D> counters(len_, [this](size_t i) { return key(i); });
    uint32_t *from = D::kCount % 2 == 0 ? result : tmp, *to = from == tmp ? result : tmp;
    D::forEach([&](auto digit) {
      uint32_t* const places = counters.template places<digit>();
      if (len_ <= size_t{1} << (32 - D::kMostWidth)) {
        scatter<digit, true>(from, to, places);
      } else {
        scatter<digit, false>(from, to, places);
      }
      std::swap(from, to);
    });
  }

 private:
  [[nodiscard]] auto key(size_t i) const { return keyAt<T, descend>(keys_ + i * stride_); }

  template <size_t digit, bool carries>
  void scatter(const uint32_t* from, uint32_t* to, uint32_t* places) {
    constexpr bool kFirst = digit == 0, kLast = digit + 1 == D::kCount;
    constexpr size_t kShift = 32 - D::kWidth[digit];  // of the digit that comes with an index
    constexpr size_t kIndexBits = carries && !kFirst ? (size_t{1} << kShift) - 1 : UINT32_MAX;
    constexpr size_t kAhead = 32;
    for (size_t i = 0; i < len_; ++i) {
      // Keys are looked up all over the source.
      if (!kFirst && !(carries && kLast) && i + kAhead < len_)
        __builtin_prefetch(keys_ + (get(from + i + kAhead) & kIndexBits) * stride_);
      const size_t word = kFirst ? i : get(from + i);
      size_t index = word & kIndexBits;
      const size_t value = carries && !kFirst ? word >> kShift : D::template get<digit>(key(index));
      if constexpr (carries && !kLast) index |= D::template get<digit + 1>(key(index)) << (32 - D::kWidth[digit + 1]);
      put(to + places[value]++, static_cast<uint32_t>(index));
    }
  }

  const Orp8u* keys_;
  size_t stride_, len_;
};

template <class T>
constexpr size_t kInsertedMost = 12 * sizeof(T);

// A few indices, by insertion.
template <class T, bool descend>
void insertIndices(const T* keys, size_t stride, uint32_t* result, size_t len) {
  Key<T> sorted[kInsertedMost<T>];
  for (size_t i = 0; i < len; ++i) {
    const Key<T> key = keyAt<T, descend>(bytes(keys) + i * stride);
    size_t to = i;
    for (; to > 0 && sorted[to - 1] > key; --to) {
      sorted[to] = sorted[to - 1];
      put(result + to, get(result + to - 1));
    }
    sorted[to] = key;
    put(result + to, static_cast<uint32_t>(i));
  }
}

// From this length on wide digits, and more counters for them, pay.
constexpr size_t kWideDigitsFrom = 2048;

template <bool descend, class T>
OrpStatus sortRadixIndex(const T* pSrc, Orp32u srcStrideBytes, Orp32s* pDstIndx, Orp32s* pTmpIndx, int len) {
  ORPS_CHECK_VECTOR(len, pSrc, pDstIndx, pTmpIndx);
  ORPS_RETURN_IF(srcStrideBytes < sizeof(T), StsBadSize);
  const auto result = reinterpret_cast<uint32_t*>(pDstIndx), tmp = reinterpret_cast<uint32_t*>(pTmpIndx);
  if (toSize(len) <= kInsertedMost<T>) {
    insertIndices<T, descend>(pSrc, srcStrideBytes, result, toSize(len));
  } else if (sizeof(T) == 4 && toSize(len) < kWideDigitsFrom) {
    IndexSort<T, descend, Digits<8, 8, 8, 8>>(pSrc, srcStrideBytes, toSize(len)).run(result, tmp);
  } else {
    IndexSort<T, descend, DigitsOf<sizeof(T)>>(pSrc, srcStrideBytes, toSize(len)).run(result, tmp);
  }
  return StsOk;
}

}  // namespace

#include "frame/entry_plain.h"

#include "exports/radix.inc"

}  // namespace orpsp
