// Zero, Set, Copy, Move, Flip and SwapBytes: elements as bytes, NaN payloads included.
#include <algorithm>
#include <array>

#include "elementwise.h"

using elementwise::Alias;
using elementwise::Extra;
using elementwise::Random;
using orptest::Guarded;

namespace {

template <class T>
T anyBytes(Random& random) {
  std::array<Orp8u, sizeof(T)> bytes;
  for (auto& byte : bytes) byte = static_cast<Orp8u>(random.bits());
  return std::bit_cast<T>(bytes);
}

template <class T>
std::vector<T> anyBytes(Random& random, size_t len) {
  std::vector<T> elements(len);
  for (auto& element : elements) element = anyBytes<T>(random);
  return elements;
}

template <int operands>
struct ByteOperation : elementwise::Operation<operands> {
  template <class T>
  T first(Random& random) const {
    return anyBytes<T>(random);
  }
  template <class T>
  T second(Random& random) const {
    return anyBytes<T>(random);
  }
  template <class D>
  bool matches(const D& got, const D& want) const {
    return std::memcmp(&got, &want, sizeof(D)) == 0;
  }
};

struct Zero : ByteOperation<1> {
  template <class D>
  D result(Extra, D) const {
    return {};
  }
};

struct Set : ByteOperation<2> {
  template <class D>
  D result(Extra, D value, D) const {
    return value;
  }
};

struct Copy : ByteOperation<1> {
  template <class D>
  D result(Extra, D x) const {
    return x;
  }
};

struct SwapBytes : ByteOperation<1> {
  template <class D>
  D result(Extra, D x) const {
    auto bytes = std::bit_cast<std::array<Orp8u, sizeof(D)>>(x);
    std::reverse(bytes.begin(), bytes.end());
    return std::bit_cast<D>(bytes);
  }
};

// Source and destination anywhere in one block, also at distances that are no whole number of elements.
template <class T>
void checkOverlaps(OrpStatus (*move)(const T*, T*, int)) {
  Random random;
  for (const int distance :
       {0, 1, 2, 3, 4, 5, 8, 12, 15, 16, 17, 24, 31, 32, 33, 48, 63, 64, 65, 96, 127, 128, 129, 200, 511, 1024}) {
    for (const size_t len : {1U, 2U, 3U, 7U, 16U, 33U, 64U, 100U, 257U, 1000U}) {
      for (const bool up : {false, true}) {
        const size_t bytes = len * sizeof(T), total = bytes + static_cast<size_t>(distance);
        const size_t from = up ? 0 : total - bytes, to = up ? total - bytes : 0;
        auto expected = anyBytes<Orp8u>(random, total);
        Guarded<Orp8u> block(expected, static_cast<size_t>(random.below(64)));
        std::memmove(expected.data() + to, expected.data() + from, bytes);
        const auto* const source = reinterpret_cast<const T*>(block.data() + from);
        ASSERT_EQ(StsOk, move(source, reinterpret_cast<T*>(block.data() + to), static_cast<int>(len)));
        ASSERT_EQ(expected, block.values()) << len << " elements, by " << distance << (up ? " up" : " down");
      }
    }
  }
}

template <class T, class Flip>
void checkFlip(const Flip& flip) {
  Random random;
  for (int len = 1; len < 300; ++len) {
    auto elements = anyBytes<T>(random, static_cast<size_t>(len));
    Guarded<T> source(elements, static_cast<size_t>(random.below(64)));
    Guarded<T> destination(source.size(), static_cast<size_t>(random.below(64)));
    const bool inPlace = flip(source.data(), destination.data(), len);
    ASSERT_TRUE(inPlace || elementwise::sameBytes(elements, source.values())) << len;
    std::reverse(elements.begin(), elements.end());
    ASSERT_TRUE(elementwise::sameBytes(elements, inPlace ? source.values() : destination.values())) << len;
  }
}

template <reference::Name name, class T>
void checkMovement(OrpStatus (*exported)(const T*, T*, int)) {
  if constexpr (name.isOf("Flip")) {
    checkFlip<T>([=](const T* source, T* destination, int len) {
      EXPECT_EQ(StsOk, exported(source, destination, len));
      return false;
    });
    checkFlip<T>([=](T* source, T*, int len) {
      EXPECT_EQ(StsOk, exported(source, source, len));
      return true;
    });
  } else if constexpr (name.isOf("SwapBytes")) {
    elementwise::check(exported, SwapBytes{});
  } else {
    static_assert(name.isOf("Copy") || name.isOf("Move"));
    elementwise::check(exported, Copy{});
    if constexpr (name.isOf("Move")) checkOverlaps(exported);
  }
}

template <reference::Name name, class T>
void checkMovement(OrpStatus (*exported)(T*, int)) {
  if constexpr (name.isOf("Flip")) {
    checkFlip<T>([=](T* source, T*, int len) {
      EXPECT_EQ(StsOk, exported(source, len));
      return true;
    });
  } else if constexpr (name.isOf("SwapBytes")) {
    elementwise::check(exported, SwapBytes{});
  } else {
    static_assert(name.isOf("Zero"));
    elementwise::check(exported, Zero{});
  }
}

template <reference::Name, class T>
void checkMovement(OrpStatus (*set)(T, T*, int)) {
  elementwise::check(set, Set{});
}

}  // namespace

#define ORPS_EXPORT(name, ...)                      \
  TEST(Move, name) { checkMovement<#name>(&name); } \
  static_assert(true)
#include "exports/move.inc"
#include "exports/reorder.inc"

// 64 MiB, more than the caches hold, take other ways through copying and moving.
TEST(Move, largeVectors) {
  constexpr size_t kBytes = size_t{64} << 20, kShift = 3 * 64 + 8;
  Random random;
  std::vector<Orp64s> pattern(kBytes / sizeof(Orp64s));
  for (auto& element : pattern) element = static_cast<Orp64s>(random.bits());
  const int len = static_cast<int>(pattern.size());

  Guarded<Orp64s> copied(pattern.size(), 24), moved(pattern.size(), 24);
  ASSERT_EQ(StsOk, orpsCopy_64s(pattern.data(), copied.data(), len));
  ASSERT_TRUE(pattern == copied.values());
  ASSERT_EQ(StsOk, orpsSet_64s(0x0123456789ABCDEF, copied.data(), len));
  ASSERT_TRUE(std::vector<Orp64s>(pattern.size(), 0x0123456789ABCDEF) == copied.values());
  ASSERT_EQ(StsOk, orpsZero_64s(copied.data(), len));
  ASSERT_TRUE(std::vector<Orp64s>(pattern.size()) == copied.values());

  constexpr int kStep = kShift / sizeof(Orp64s);
  for (const bool up : {false, true}) {
    moved.assign(pattern);
    Orp64s* const from = moved.data() + (up ? 0 : kStep);
    ASSERT_EQ(StsOk, orpsMove_64s(from, moved.data() + (up ? kStep : 0), len - kStep));
    auto expected = pattern;
    if (up)
      std::copy_backward(pattern.begin(), pattern.end() - kStep, expected.end());
    else
      std::copy(pattern.begin() + kStep, pattern.end(), expected.begin());
    ASSERT_TRUE(expected == moved.values()) << (up ? "up" : "down");
  }
}
