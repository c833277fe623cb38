// Sines that the compiler computes.
#pragma once

#include <cstddef>

namespace orpsp {

constexpr long double kTwoPi = 6.28318530717958647692528676655900577L;

// first * (1 - square / (factor (factor + 1)) (1 - square / ((factor + 2) (factor + 3)) (...))): terms enough for
// square <= (pi / 4)^2.
constexpr long double sineSeries(long double first, long double square, int factor) {
  long double sum = 1;
  for (int n = factor + 24; n >= factor; n -= 2) sum = 1 - sum * square / (n * (n + 1));
  return first * sum;
}

// sin(2 pi k / 2^order) in the first quarter, from angles of the first eighth.
constexpr long double exactSine(size_t k, int order) {
  const size_t quarter = (size_t{1} << order) / 4;
  const bool isUpper = 2 * k > quarter;
  const long double x = kTwoPi * static_cast<long double>(isUpper ? quarter - k : k) / (size_t{1} << order);
  return isUpper ? sineSeries(1, x * x, 1) : sineSeries(x, x * x, 2);
}

}  // namespace orpsp
