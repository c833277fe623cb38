// Inputs for the sorts: multisets of values, in their order, and arrangements of them. The sorted multiset is what a
// sort of any arrangement has to give.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <compare>
#include <cstring>
#include <ctime>
#include <limits>
#include <numeric>
#include <string_view>
#include <vector>

#include "orpcore.h"
#include "orpsp.h"
#include "support/guarded.h"
#include "support/lengths.h"
#include "support/random.h"

namespace sorting {

using orptest::Guarded;
using orptest::Random;

inline bool descends(std::string_view name) { return name.find("Descend") != name.npos; }

// The order by bits is IEEE 754's total order: -NaN, -inf, ..., -0, +0, ..., +inf, NaN.
struct Before {
  bool descend;
  template <class T>
  bool operator()(T a, T b) const {
    return descend ? std::strong_order(b, a) < 0 : std::strong_order(a, b) < 0;
  }
};

template <class T>
T fromBits(uint64_t bits) {
  T value;
  std::memcpy(&value, &bits, sizeof(T));  // the low bytes
  return value;
}

template <class T>
::testing::AssertionResult sameBits(const std::vector<T>& want, const std::vector<T>& got) {
  for (size_t n = 0; n < want.size(); ++n)
    if (std::memcmp(&want[n], &got[n], sizeof(T)) != 0)
      return ::testing::AssertionFailure() << got[n] << " instead of " << want[n] << " at " << n;
  return ::testing::AssertionSuccess();
}

// Kinds of multisets. Floats have NaNs of both signs with payloads in all but `small`.
enum Kind { kAny, kMixed, kFew, kBits, kSmall, kKinds };

template <class T>
std::vector<T> multiset(Kind kind, size_t len, Random& random, bool descend) {
  constexpr int kWidth = 8 * static_cast<int>(sizeof(T));
  std::vector<uint64_t> few;
  for (int i = random.below(4); i >= 0; --i) few.push_back(random.bits());
  if constexpr (std::is_floating_point_v<T>) {
    const uint64_t sign = uint64_t{1} << (kWidth - 1);
    const uint64_t infinity = sign - (uint64_t{1} << (std::numeric_limits<T>::digits - 1));
    const uint64_t specials[] = {0, 1, infinity - 1, infinity, infinity + 1, infinity + 2, sign - 2, sign - 1};
    for (int i = random.below(6); i > 0; --i) few.push_back(specials[random.below(8)] | (random.bits() & sign));
  }
  std::vector<T> values(len);
  for (T& value : values) {
    const uint64_t some = few[static_cast<size_t>(random.below(static_cast<int>(few.size())))];
    // One bit or two, or all the others: what a digit that is left out or cut off would not see.
    const uint64_t sparse = uint64_t{1} << random.below(kWidth) | uint64_t{1} << random.below(kWidth);
    switch (kind) {
      case kAny:
        value = random.below(50) == 0 ? fromBits<T>(some) : fromBits<T>(random.bits());
        break;
      case kMixed:
        value = random.below(4) == 0 ? fromBits<T>(some) : random.element<T>();
        break;
      case kFew:
        value = fromBits<T>(some);
        break;
      case kBits:
        value = fromBits<T>(random.bits() & 1 ? sparse : ~sparse);
        break;
      default:
        value = static_cast<T>(random.below(static_cast<int>(len)));
    }
  }
  std::sort(values.begin(), values.end(), Before{descend});
  return values;
}

// As many different values as the type has, in their order, without NaNs.
template <class T>
std::vector<T> distinct(size_t len, bool descend) {
  std::vector<T> values(len);
  for (size_t i = 0; i < len; ++i)
    values[i] = static_cast<T>(sizeof(T) > 1 ? static_cast<long>(i) - (std::is_signed_v<T> ? 30'000 : 0)
                                             : static_cast<long>(i * 256 / len));
  if (descend) std::reverse(values.begin(), values.end());
  return values;
}

using Ranks = std::vector<size_t>;

// Takes ascending ranks and makes those of the element in each place.
struct Shape {
  const char* name;
  void (*arrange)(Ranks& ranks, Random& random);
};

inline size_t any(size_t len, Random& random) { return static_cast<size_t>(random.below(static_cast<int>(len))); }

inline void sorted(Ranks&, Random&) {}
inline void reversed(Ranks& ranks, Random&) { std::reverse(ranks.begin(), ranks.end()); }
inline void shuffled(Ranks& ranks, Random& random) {
  for (size_t n = ranks.size(); n > 1; --n) std::swap(ranks[n - 1], ranks[any(n, random)]);
}
inline void nearlySorted(Ranks& ranks, Random& random) {
  for (int i = 0; i < 4; ++i) std::swap(ranks[any(ranks.size(), random)], ranks[any(ranks.size(), random)]);
}
inline void organPipe(Ranks& ranks, Random&) {
  for (size_t rank = 0; rank < ranks.size(); ++rank)
    ranks[rank % 2 == 0 ? rank / 2 : ranks.size() - 1 - rank / 2] = rank;
}
inline void sawTooth(Ranks& ranks, Random& random) {
  const size_t period = 1 + any(ranks.size(), random);
  size_t rank = 0;
  for (size_t phase = 0; phase < period; ++phase)
    for (size_t n = phase; n < ranks.size(); n += period) ranks[n] = rank++;
}
inline void runs(Ranks& ranks, Random& random) {
  shuffled(ranks, random);
  for (auto begin = ranks.begin(), end = begin; begin != ranks.end(); begin = end) {
    end += std::min(ranks.end() - begin, 1 + random.below(1 + static_cast<int>(ranks.size()) / 4) + ptrdiff_t{0});
    std::sort(begin, end);
    if (random.bits() & 1) std::reverse(begin, end);
  }
}
// Quadratic for a plain median of three [Musser: Introspective sorting and selection algorithms, SP&E 27 (1997)].
inline void medianKiller(Ranks& ranks, Random&) {
  const size_t half = ranks.size() / 4 * 2;
  for (size_t n = 0; n < half; ++n) {
    ranks[n] = n % 2 == 0 ? n : half + n - 1;
    ranks[half + n] = 2 * n + 1;
  }
}
// What an adversary [McIlroy: A killer adversary for quicksort, SP&E 29 (1999)] would answer to the steps documented
// for SortIndex: every partition takes the two smallest elements off its range and leaves a range of the same kind.
// Made backwards from the last such range: the exchanges of a partition are undone in front of it.
inline void documentedKiller(Ranks& ranks, Random&) {
  const size_t len = ranks.size();
  for (size_t first = len / 2 * 2; first-- > 0 && first-- > 0;) {
    if (len - first < 10) continue;
    const size_t middle = first + (len - first) / 2;
    ranks[first + 1] = ranks[middle];
    ranks[middle] = first + 1;
  }
}
inline constexpr Shape kShapes[] = {{"random", shuffled},
                                    {"runs", runs},
                                    {"sorted", sorted},
                                    {"reversed", reversed},
                                    {"nearly sorted", nearlySorted},
                                    {"organ pipe", organPipe},
                                    {"saw-tooth", sawTooth},
                                    {"median killer", medianKiller},
                                    {"documented killer", documentedKiller}};

template <class T>
std::vector<T> arranged(const Shape& shape, const std::vector<T>& sorted, Random& random) {
  Ranks ranks(sorted.size());
  std::iota(ranks.begin(), ranks.end(), size_t{0});
  shape.arrange(ranks, random);
  std::vector<T> values;
  for (const size_t rank : ranks) values.push_back(sorted[rank]);
  return values;
}

// 1 to 300, around powers of two and in between.
inline std::vector<int> lengths() {
  std::vector<int> lengths(300);
  std::iota(lengths.begin(), lengths.end(), 1);
  for (int power = 512; power <= 4096; power *= 2)
    lengths.insert(lengths.end(), {power - 1, power, power + 1, power + power / 3, power + power / 5 * 4});
  return lengths;
}

// Runs check(input, sorted) on the first `shapes` arrangements of every kind of multiset, of every length.
template <class T, class Check>
void sweep(bool descend, const std::vector<int>& lengths, const Check& check, size_t shapes = std::size(kShapes)) {
  Random random;
  for (const int len : lengths) {
    for (int kind = 0; kind < kKinds; ++kind) {
      const auto sorted = multiset<T>(static_cast<Kind>(kind), static_cast<size_t>(len), random, descend);
      for (size_t shape = 0; shape < shapes; ++shape) {
        check(arranged(kShapes[shape], sorted, random), sorted);
        if (::testing::Test::HasFailure()) {
          ADD_FAILURE() << len << " elements of kind " << kind << ", " << kShapes[shape].name;
          return;
        }
      }
    }
  }
}

#if defined(__SANITIZE_ADDRESS__)
inline constexpr size_t kLarge = 100'000;
#else
inline constexpr size_t kLarge = 200'000;
#endif

// Processor time of the fastest of some runs, each on a fresh copy.
template <class T, class Sort>
double secondsOf(const std::vector<T>& input, const Sort& sort) {
  double least = 1e9;
  for (int repeat = 0; repeat < 3; ++repeat) {
    auto values = input;
    const std::clock_t begin = std::clock();
    EXPECT_EQ(StsOk, sort(values.data(), static_cast<int>(values.size())));
    least = std::min(least, static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC);
  }
  return least;
}

// No input takes much longer than a random one: heapsort may take some times as long (ten on a busy machine), a
// quadratic sort takes more than a thousand times as long.
template <class T, class Sort>
void checkTimes(bool descend, const Sort& sort) {
  Random random;
  const auto sorted = distinct<T>(sizeof(T) < 4 ? 65'536 : kLarge, descend);
  const double atRandom = secondsOf(arranged(kShapes[0], sorted, random), sort);
  const auto check = [&](const char* name, const std::vector<T>& input) {
    const double seconds = secondsOf(input, sort);
    EXPECT_LE(seconds, 25 * atRandom + 0.01) << name << ", random: " << atRandom;
  };
  for (const Shape& shape : kShapes) check(shape.name, arranged(shape, sorted, random));
  for (const Kind kind : {kAny, kFew, kBits})
    check("repeated", arranged(kShapes[0], multiset<T>(kind, sorted.size(), random, descend), random));
  check("all equal", std::vector<T>(sorted.size(), T{7}));
  if constexpr (std::is_floating_point_v<T>) {
    const T nan = std::numeric_limits<T>::quiet_NaN();
    check("all NaN", std::vector<T>(sorted.size(), nan));
    auto half = arranged(kShapes[0], sorted, random);
    for (T& value : half)
      if (random.bits() & 1) value = nan;
    check("half NaN", half);
    // Clusters of clusters, each a small part of the one around it.
    for (T& value : half) value = std::ldexp(random.bits() & 1 ? T{1} : T{-1}, random.below(250) - 125);
    check("clusters", half);
  }
}

}  // namespace sorting
