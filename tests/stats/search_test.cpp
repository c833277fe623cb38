// FindNearest, CountInRange, ZeroCrossing.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <limits>
#include <vector>

#include "orpsp.h"
#include "support/guarded.h"
#include "support/random.h"

using orptest::Guarded;
using orptest::Random;

namespace {

// The first one of those that are nearest.
int nearest(const std::vector<Orp16u>& table, int value) {
  size_t best = 0;
  for (size_t i = 1; i < table.size(); ++i)
    if (std::abs(table[i] - value) < std::abs(table[best] - value)) best = i;
  return static_cast<int>(best);
}

// Ascending, from the values around zero, from those around the largest one or from all; many of them repeated.
std::vector<Orp16u> sortedTable(Random& random, int size) {
  const int kind = random.below(4), span = kind == 3 ? 65536 : 1 + random.below(3 * size);
  std::vector<Orp16u> table(static_cast<size_t>(size));
  for (auto& e : table) {
    const int value = random.below(std::min(span, 65536));
    e = static_cast<Orp16u>(kind == 0 ? value : kind == 1 ? 65535 - value : kind == 2 ? 32768 + value / 2 : value);
  }
  std::sort(table.begin(), table.end());
  return table;
}

void checkNearest(const std::vector<Orp16u>& table, const std::vector<Orp16u>& values, bool inPlace) {
  Guarded<Orp16u> src(values, 6), dst(values, 2), sorted(table, 10);
  Guarded<int> indices(values.size(), 4);
  const int len = static_cast<int>(values.size()), size = static_cast<int>(table.size());
  ASSERT_EQ(StsOk, orpsFindNearest_16u(inPlace ? dst.data() : src.data(), dst.data(), indices.data(), len,
                                       sorted.data(), size));
  for (size_t n = 0; n < values.size(); ++n) {
    const int want = nearest(table, values[n]);
    ASSERT_EQ(want, indices[n]) << values[n] << " in a table of " << size;
    ASSERT_EQ(table[static_cast<size_t>(want)], dst[n]) << values[n] << " in a table of " << size;
    Orp16u value = 0;
    int index = -1;
    ASSERT_EQ(StsOk, orpsFindNearestOne_16u(values[n], sorted.data(), size, &value, &index));
    ASSERT_TRUE(index == want && value == dst[n]) << values[n] << " in a table of " << size << ": at " << index;
  }
}

}  // namespace

TEST(FindNearest, everyValue) {
  std::vector<Orp16u> all(65536);
  for (size_t i = 0; i < all.size(); ++i) all[i] = static_cast<Orp16u>(i);
  Random random;
  for (const int size : {1, 2, 3, 4, 7, 20, 33, 64, 100}) checkNearest(sortedTable(random, size), all, false);
}

TEST(FindNearest, everyLength) {
  Random random;
  for (int len = 1; len <= 130 && !HasFatalFailure(); ++len) {
    for (int repeat = 0; repeat < 10; ++repeat) {
      const int size = 1 + random.below(80);
      const auto table = sortedTable(random, size);
      auto values = random.vector<Orp16u>(static_cast<size_t>(len));
      for (auto& v : values)  // often in the table, or beside one that is
        if (random.bits() & 1)
          v = static_cast<Orp16u>(table[static_cast<size_t>(random.below(size))] + random.below(5) - 2);
      checkNearest(table, values, repeat % 2 == 0);
    }
  }
}

TEST(FindNearest, longTables) {
  Random random;
  for (const int size : {1023, 1024, 1025, 65'535, 65'536, 65'537, 100'003, 300'000})
    checkNearest(sortedTable(random, size), random.vector<Orp16u>(150), false);
  checkNearest(std::vector<Orp16u>(100'000, 7), {0, 7, 8, 65535}, true);
}

TEST(FindNearest, tablesWithoutOrder) {
  Random random;
  for (const int size : {1, 2, 5, 64, 1000}) {
    Guarded<Orp16u> table(random.vector<Orp16u>(static_cast<size_t>(size))), out(500);
    Guarded<int> indices(500);
    const auto values = random.vector<Orp16u>(500);
    ASSERT_EQ(StsOk, orpsFindNearest_16u(values.data(), out.data(), indices.data(), 500, table.data(), size));
    for (size_t n = 0; n < 500; ++n) {
      ASSERT_TRUE(indices[n] >= 0 && indices[n] < size);
      ASSERT_EQ(table[static_cast<size_t>(indices[n])], out[n]);
    }
  }
}

TEST(FindNearest, lengthsOfTables) {
  const Orp16u table[] = {1};
  Orp16u value = 77;
  int index = 77;
  for (const int bad : {0, -1, INT_MIN}) {
    EXPECT_EQ(StsBadSize, orpsFindNearestOne_16u(1, table, bad, &value, &index));
    EXPECT_EQ(StsBadSize, orpsFindNearest_16u(table, &value, &index, 1, table, bad));
    EXPECT_EQ(StsBadSize, orpsFindNearest_16u(table, &value, &index, bad, table, 1));
    EXPECT_EQ(StsNullPtr, orpsFindNearestOne_16u(1, nullptr, bad, &value, &index));
    EXPECT_EQ(StsNullPtr, orpsFindNearest_16u(table, &value, &index, bad, nullptr, bad));
  }
  EXPECT_TRUE(value == 77 && index == 77);
}

TEST(CountInRange, boundsAndLengths) {
  Random random;
  const Orp32s bounds[] = {INT_MIN, INT_MIN + 1, -2, -1, 0, 1, 2, 3, 1000, INT_MAX - 1, INT_MAX};
  const auto check = [&](int len, bool few) {
    std::vector<Orp32s> x(static_cast<size_t>(len));
    for (auto& e : x) e = few ? bounds[random.below(std::size(bounds))] : random.element<Orp32s>();
    Guarded<Orp32s> src(x, static_cast<size_t>(random.below(64)));
    for (int repeat = 0; repeat < 12; ++repeat) {
      const Orp32s lower = bounds[random.below(std::size(bounds))], upper = bounds[random.below(std::size(bounds))];
      const auto want = std::count_if(x.begin(), x.end(), [=](Orp32s e) { return lower < e && e < upper; });
      int got = -1;
      ASSERT_EQ(StsOk, orpsCountInRange_32s(src.data(), len, &got, lower, upper));
      ASSERT_EQ(want, got) << "between " << lower << " and " << upper << " of " << len;
    }
  };
  for (int len = 1; len <= 150 && !HasFatalFailure(); ++len) {
    check(len, true);
    check(len, false);
  }
  check(1'000'003, true);
  std::vector<Orp32s> inside(2'000'000, INT_MAX - 1);
  int got = -1;
  ASSERT_EQ(StsOk, orpsCountInRange_32s(inside.data(), 2'000'000, &got, INT_MIN, INT_MAX));
  EXPECT_EQ(got, 2'000'000);
}

namespace {

template <class T>
Orp32f crossings(const std::vector<T>& x, int mode) {
  long halves = 0;
  for (size_t n = 1; n < x.size(); ++n) {
    const T a = x[n - 1], b = x[n];
    const auto sign = [](T e) { return (e > 0) - (e < 0); };
    if (mode == 0) halves += std::signbit(static_cast<double>(a)) != std::signbit(static_cast<double>(b)) ? 2 : 0;
    if (mode == 1) halves += (a < 0 && 0 < b) || (b < 0 && 0 < a) ? 2 : 0;
    if (mode == 2) halves += std::abs(sign(b) - sign(a));
  }
  return static_cast<Orp32f>(static_cast<double>(halves) / 2);
}

template <class T>
void checkCrossings(OrpStatus (*f)(const T*, int, Orp32f*, int)) {
  Random random;
  using Limits = std::numeric_limits<T>;
  std::vector<T> values = {0, 1, -1, Limits::max(), Limits::lowest(), Limits::max(), Limits::lowest(), 0};
  if constexpr (!std::is_integral_v<T>)
    values.insert(values.end(), {-T{0}, -T{0}, Limits::quiet_NaN(), -Limits::quiet_NaN(), Limits::infinity(),
                                 -Limits::infinity(), Limits::denorm_min(), -Limits::denorm_min()});
  for (int repeat = 0; repeat < 1560; ++repeat) {
    const int len = repeat < 1500 ? 1 + repeat / 10 : 70'000 * (1 + repeat % 6) + random.below(50);
    const bool numbers = repeat % 3 == 0, alternate = repeat % 5 == 0;
    std::vector<T> x(static_cast<size_t>(len));
    for (auto& e : x)
      e = numbers ? random.element<T>() : values[static_cast<size_t>(random.below(static_cast<int>(values.size())))];
    if (alternate)  // as many crossings as can be
      for (size_t n = 0; n < x.size(); ++n) x[n] = n % 2 == 0 ? Limits::max() : Limits::lowest();
    Guarded<T> src(x, static_cast<size_t>(random.below(64)));
    for (const int mode : {0, 1, 2}) {
      Orp32f got = -1;
      ASSERT_EQ(StsOk, f(src.data(), len, &got, mode));
      ASSERT_EQ(crossings(x, mode), got) << "mode " << mode << " of " << len;
    }
  }
  const T one[] = {-1, 1};
  Orp32f got = 77;
  for (const int bad : {-1, 3, INT_MIN, INT_MAX}) {
    EXPECT_EQ(StsNullPtr, f(nullptr, 0, &got, bad));
    EXPECT_EQ(StsBadSize, f(one, 0, &got, bad));
    EXPECT_EQ(StsBadArg, f(one, 2, &got, bad));
  }
  EXPECT_EQ(got, 77);
}

}  // namespace

TEST(ZeroCrossing, orpsZeroCrossing_16s32f) { checkCrossings(&orpsZeroCrossing_16s32f); }
TEST(ZeroCrossing, orpsZeroCrossing_32f) { checkCrossings(&orpsZeroCrossing_32f); }

// More crossings than a float counts, rounded once at the end.
TEST(ZeroCrossing, manyCrossings) {
  std::vector<Orp16s> x((1 << 24) + 4);
  for (size_t n = 0; n < x.size(); ++n) x[n] = n % 2 == 0 ? 5 : -5;
  for (const int mode : {0, 1, 2}) {
    Orp32f got = 0;
    ASSERT_EQ(StsOk, orpsZeroCrossing_16s32f(x.data(), (1 << 24) + 4, &got, mode));
    EXPECT_EQ(got, (1 << 24) + 4) << "mode " << mode;  // 2^24 + 3 is a tie
  }
}
