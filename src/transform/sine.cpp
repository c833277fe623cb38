// Sines for twiddle factors: a static table, computed by the compiler, and finer ones made from it.
//
// A fine angle is a multiple a of 2 pi / 1024 and a remainder d below that step:
//
//   sin(a + d) = sin a + cos a sin d + sin a (cos d - 1)
//
// Only the first product is large enough for its rounding to show. Its factors are cut into a head of 26 bits and a
// tail, so that the product of heads is exact, and it is added with its rounding error [Dekker 1971].
//
// [Dekker 1971] T. J. Dekker, A floating-point technique for extending the available precision, Numer. Math. 18.
#include "transform/sine.h"

#include <algorithm>
#include <array>

#include "transform/exact_sine.h"

namespace orpsp {
namespace {

constexpr size_t kPoints = size_t{1} << kStaticSineOrder, kQuarter = kPoints / 4, kEighth = kPoints / 8;
constexpr long double sineAt(size_t k) { return exactSine(k, kStaticSineOrder); }

// A number as the sum of its leading 26 bits and the rest.
struct Split {
  double head, tail;
};

constexpr double headOf(double x) {
  const double scaled = x * 0x8000001p0;
  return scaled - (scaled - x);
}

constexpr auto kSplitSines = [] {
  std::array<Split, kQuarter + 1> table{};
  for (size_t k = 0; k <= kQuarter; ++k) {
    const long double sine = sineAt(k);
    const double head = headOf(static_cast<double>(sine));
    table[k] = {head, static_cast<double>(sine - head)};
  }
  return table;
}();

constexpr auto kSines = [] {
  std::array<double, kQuarter + 1> table{};
  for (size_t k = 0; k <= kQuarter; ++k) table[k] = static_cast<double>(sineAt(k));
  return table;
}();

// All around the circle.
constexpr auto SineTable1024 = [] {
  std::array<float, kPoints> table{};
  for (size_t k = 0; k < kPoints; ++k) {
    const size_t half = k % (kPoints / 2);
    const auto sine = static_cast<float>(sineAt(half <= kQuarter ? half : kPoints / 2 - half));
    table[k] = k > kPoints / 2 ? -sine : sine;
  }
  return table;
}();

// Sines and cosines of remainders d = 2 pi i / 2^order, a few at a time.
struct Remainders {
  static constexpr size_t kMost = 64;
  double head[kMost], tail[kMost];  // of sin d
  double versed[kMost];             // cos d - 1

  void fill(int order, size_t first, size_t count) {
    constexpr double kHead = headOf(static_cast<double>(kTwoPi));
    constexpr auto kMiddle = static_cast<double>(kTwoPi - kHead);
    constexpr auto kTail = static_cast<double>(kTwoPi - kHead - kMiddle);
    const double unit = 1 / static_cast<double>(size_t{1} << order);
    for (size_t i = 0; i < count; ++i) {
      const double n = static_cast<double>(first + i) * unit;  // of at most 20 bits: n * kHead is exact
      const double d = n * kHead + n * kMiddle, square = d * d;
      const double rest = n * kHead - d + n * kMiddle + n * kTail;
      const double bend = d * square * (square * (1.0 / 120 - square * (1.0 / 5040)) - 1.0 / 6);
      head[i] = headOf(d);
      tail[i] = d - head[i] + (rest + bend);
      versed[i] = square * (square * (1.0 / 24 - square * (1.0 / 720)) - 0.5);
    }
  }

  // base + slope sin d + base (cos d - 1)
  double step(Split base, Split slope, size_t i) const {
    const double product = slope.head * head[i], sum = base.head + product, lost = product - (sum - base.head);
    const double small = slope.head * tail[i] + slope.tail * (head[i] + tail[i]);
    return sum + (lost + (base.tail + ((base.head + base.tail) * versed[i] + small)));
  }
};

}  // namespace

template <>
QuarterSine<float> staticSine() {
  return {SineTable1024.data(), kStaticSineOrder};
}
template <>
QuarterSine<double> staticSine() {
  return {kSines.data(), kStaticSineOrder};
}

template <class T>
QuarterSine<T> fillSine(int order, T* table) {
  const size_t stride = size_t{1} << (order - kStaticSineOrder), quarter = kQuarter * stride;
  Remainders remainders;
  for (size_t first = 0; first < stride; first += Remainders::kMost) {
    const size_t count = std::min(Remainders::kMost, stride - first);
    remainders.fill(order, first, count);
    for (size_t k = 0; k < kEighth; ++k) {
      const Split sine = kSplitSines[k], cosine = kSplitSines[kQuarter - k], minus = {-sine.head, -sine.tail};
      T* const up = table + k * stride + first;
      T* const down = table + quarter - k * stride - first;
      for (size_t i = 0; i < count; ++i) {
        up[i] = static_cast<T>(remainders.step(sine, cosine, i));
        *(down - i) = static_cast<T>(remainders.step(cosine, minus, i));
      }
    }
  }
  table[quarter / 2] = static_cast<T>(kSines[kEighth]);
  return {table, order};
}

template QuarterSine<float> fillSine(int order, float* table);
template QuarterSine<double> fillSine(int order, double* table);

}  // namespace orpsp
