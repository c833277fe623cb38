#include "stats/logarithm.h"

#include <cmath>

namespace orpsp {
namespace {

// A number and what rounding took from it [Dekker: A floating-point technique for extending the available precision,
// Numer. Math. 18 (1971) 224-242]. There is no fused multiply-add on every processor.
struct Double {
  double value, rest;
};

Double sum(double a, double b) {
  const double value = a + b, other = value - a;
  return {value, (a - (value - other)) + (b - other)};
}

Double split(double a) {
  constexpr double kHalves = 0x1p27 + 1;
  const double scaled = kHalves * a, high = scaled - (scaled - a);
  return {high, a - high};
}

Double product(double a, double b) {
  const double value = a * b;
  const Double p = split(a), q = split(b);
  return {value, ((p.value * q.value - value) + p.value * q.rest + p.rest * q.value) + p.rest * q.rest};
}

}  // namespace

double logarithm(double significand, int64_t exponent) {
  int itsExponent;
  double m = std::frexp(significand, &itsExponent);
  if (m < 0x1.6a09e667f3bcdp-1) {  // sqrt(1/2)
    m *= 2;
    --itsExponent;
  }
  // ln(m) = 2 (z + z^3 / 3 + z^5 / 5 + ...) with z = (m - 1) / (m + 1), |z| < 0.172
  const Double below = sum(m, 1);
  const double z = (m - 1) / below.value;
  const Double back = product(z, below.value);
  const double rest = (((m - 1) - back.value) - back.rest - z * below.rest) / below.value;
  const double square = z * z;
  double series = 1.0 / 25;
  for (int k = 23; k >= 3; k -= 2) series = series * square + 1.0 / k;
  const double higher = z * square * series;

  constexpr Double kLn2 = {0x1.62e42fefa39efp-1, 0x1.abc9e3b39803fp-56};
  const auto whole = static_cast<double>(exponent + itsExponent);
  const Double ofExponent = product(whole, kLn2.value), total = sum(ofExponent.value, 2 * z);
  return total.value + (total.rest + ofExponent.rest + whole * kLn2.rest + 2 * (rest + higher));
}

}  // namespace orpsp
