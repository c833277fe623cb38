// Smallest and largest elements, their first indices; MinEvery and MaxEvery.
#include <cmath>

#include "vector/elementwise.h"

using elementwise::Extra;
using orptest::Guarded;
using orptest::Random;

namespace {

template <class T>
struct Found {
  T value;
  int index;
};

template <bool largest, bool absolute, class T>
Found<T> extreme(const std::vector<T>& x) {
  Found<T> best{std::numeric_limits<T>::quiet_NaN(), 0};
  bool any = false;
  for (size_t n = 0; n < x.size(); ++n) {
    T value = x[n];
    if constexpr (absolute) value = reference::saturated<T>(value < 0 ? -reference::Int128{value} : value);
    if (value != value) continue;
    if (!any || (largest ? value > best.value : value < best.value)) best = {value, static_cast<int>(n)};
    any = true;
  }
  return best;
}

// Calls an export, whatever its results are, and compares them. False after the first failure.
template <reference::Name name, class T>
bool compareCall(auto* exported, Guarded<T>& src, Found<T> least, Found<T> greatest) {
  constexpr bool kBoth = name.contains("MinMax"), kIndex = name.contains("Indx");
  Found<T> first{1, -1}, second{1, -1};
  const int len = static_cast<int>(src.size());
  const auto status = [&] {
    if constexpr (kBoth && kIndex) {
      return exported(src.data(), len, &first.value, &first.index, &second.value, &second.index);
    } else if constexpr (kBoth) {
      return exported(src.data(), len, &first.value, &second.value);
    } else if constexpr (kIndex) {
      return exported(src.data(), len, &first.value, &first.index);
    } else {
      return exported(src.data(), len, &first.value);
    }
  }();
  const auto compare = [&](const Found<T>& got, const Found<T>& want) {
    EXPECT_TRUE(reference::same(got.value, want.value) && (!kIndex || got.index == want.index))
        << reference::shown(got.value) << " at " << got.index << ", not " << reference::shown(want.value) << " at "
        << want.index << " of " << len << " elements";
  };
  EXPECT_EQ(StsOk, status);
  compare(first, !kBoth && name.contains("Max") ? greatest : least);
  if (kBoth) compare(second, greatest);
  return !::testing::Test::HasFailure();
}

// A small and a large number between which the others lie, each twice at most; of Abs, with one sign or the other.
template <class T>
void place(Random& random, Guarded<T>& x, int first, int second, bool absolute) {
  const int len = static_cast<int>(x.size());
  const auto signedly = [&](int value) { return static_cast<T>(absolute && random.bits() & 1 ? -value : value); };
  for (const auto& [at, value] : {std::pair{first, 5}, std::pair{second, 100}}) {
    x.set(static_cast<size_t>(at), signedly(value));
    const int again = at + random.below(len - at);
    if (again != first && again != second) x.set(static_cast<size_t>(again), signedly(value));
  }
}

template <reference::Name name, class T>
void checkExtrema(auto* exported) {
  Random random;
  const auto check = [&](Guarded<T>& x) {
    constexpr bool kAbs = name.contains("Abs");
    const auto values = x.values();
    return compareCall<name>(exported, x, extreme<false, kAbs>(values), extreme<true, kAbs>(values));
  };
  // The extreme elements at every position, twice in one vector or in different ones.
  for (int len = 2; len <= 150; ++len) {
    Guarded<T> x(static_cast<size_t>(len), static_cast<size_t>(random.below(64)));
    for (int first = 0; first < len; ++first) {
      for (size_t n = 0; n < x.size(); ++n) x.set(n, static_cast<T>(20 + random.below(60)));
      place(random, x, first, (first + 1 + random.below(len - 1)) % len, name.contains("Abs"));
      if (!check(x)) return;
    }
  }
  // One of each at every position in several blocks of a kernel that works block by block.
  {
    const size_t length = 30'000 / sizeof(T) + static_cast<size_t>(random.below(100));
    Guarded<T> x(std::vector<T>(length, 50), static_cast<size_t>(random.below(64)));
    for (size_t at = 0; at < length; ++at) {
      const size_t other = (at + length / 3) % length;
      x.set(at, 5);
      x.set(other, 100);
      Found<T> small{5, static_cast<int>(at)}, large{100, static_cast<int>(other)};
      if (!compareCall<name>(exported, x, small, large)) return;
      x.set(at, 50);
      x.set(other, 50);
    }
  }
  // Longer than narrow lanes of indices can count.
  for (const int around : {256, 65'536, 131'072, 2'200'000}) {
    const int length = around + random.below(40) - 20;
    Guarded<T> x(static_cast<size_t>(length), static_cast<size_t>(random.below(64)));
    for (const int first : {length - 1 - random.below(200), random.below(length), 0}) {
      x.assign(std::vector<T>(x.size(), 50));
      if (first == 0 && !check(x)) return;
      place(random, x, first, (first + 1 + random.below(length - 1)) % length, name.contains("Abs"));
      if (!check(x)) return;
    }
  }
  // Few different values, among them the ends of the range; any values. NaNs among floats, or little else.
  using Limits = std::numeric_limits<T>;
  std::vector<T> few = {Limits::lowest(), Limits::max(), 0, 1, static_cast<T>(Limits::lowest() + 1)};
  if constexpr (std::is_signed_v<T>) few.insert(few.end(), {-1, static_cast<T>(-Limits::max())});
  if constexpr (std::is_floating_point_v<T>) few = {0, -T{0}, 1, Limits::infinity(), -Limits::infinity()};
  const int count = static_cast<int>(few.size());
  for (int repeat = 0; repeat < 3000; ++repeat) {
    const int length = 1 + random.below(repeat % 50 == 0 ? 5000 : 200);
    Guarded<T> x(static_cast<size_t>(length), static_cast<size_t>(random.below(64)));
    const int from = random.below(count), values = 1 + random.below(count - from), kind = repeat % 5;
    for (size_t n = 0; n < x.size(); ++n)
      x.set(n, kind == 0 ? random.element<T>() : few[static_cast<size_t>(from + random.below(values))]);
    if constexpr (std::is_floating_point_v<T>) {
      // At the beginning; all but one; all, or some.
      const size_t size = x.size(), at = static_cast<size_t>(repeat) % size;
      for (size_t n = 0; n < size; ++n) {
        const bool some = repeat % 4 == 0 || random.below(1 + repeat % 7) != 0;
        if (kind == 1 ? n < at : kind == 2 ? n != at : kind == 3 && some)
          x.set(n, random.bits() & 1 ? Limits::quiet_NaN() : -Limits::quiet_NaN());
      }
    }
    if (!check(x)) return;
  }
}

// The operands of MinEvery and MaxEvery, often equal ones and NaNs.
template <bool largest>
struct Every : elementwise::Operation<2> {
  template <class T>
  static T special(Random& random) {
    if constexpr (std::is_floating_point_v<T>) {
      using Limits = std::numeric_limits<T>;
      const T values[] = {0, -T{0}, Limits::quiet_NaN(), -Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity()};
      if (random.bits() & 1) return values[random.below(6)];
    }
    return elementwise::operand<T>(random);
  }
  template <class A>
  A first(Random& random) const {
    return special<A>(random);
  }
  template <class B>
  B second(Random& random) const {
    return special<B>(random);
  }
  template <class D>
  D result(Extra, D a, D b) const {
    if (a != a || b != b) return a != a ? b : a;
    return (largest ? b > a : b < a) ? b : a;
  }
};

template <reference::Name name, class T, class... X>
void checkExport(OrpStatus (*exported)(const T*, X...)) {
  if constexpr (name.contains("MinEvery")) {
    elementwise::check(exported, Every<false>{});
  } else if constexpr (name.contains("MaxEvery")) {
    elementwise::check(exported, Every<true>{});
  } else {
    checkExtrema<name, T>(exported);
  }
}

}  // namespace

#define ORPS_EXPORT(name, ...)                       \
  TEST(Extrema, name) { checkExport<#name>(&name); } \
  static_assert(true)
#include "exports/extrema.inc"
