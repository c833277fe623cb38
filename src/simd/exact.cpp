// Fixed-point arithmetic with 128 bits. Transcendental values come with an error below 2^-90; no value of the arguments
// allowed lies nearer to a tie without being one, and the ties are known: powers of ten have rational logarithms.
#include "simd/exact.h"

#include <cmath>
#include <limits>

namespace orpsp {
namespace {

using Int128 = __int128;
using Uint128 = unsigned __int128;

constexpr Uint128 join(uint64_t high, uint64_t low) { return static_cast<Uint128>(high) << 64 | low; }

// In units of 2^-128, 2^-124, 2^-125 and 2^-129.
constexpr Uint128 kFractionOfLog2E = join(0x71547652b82fe177, 0x7d0ffda0d23a7d11);
constexpr Uint128 kLn2 = join(0xb17217f7d1cf79ab, 0xc9e3b39803f2f6af);
constexpr Uint128 kTenOverLn10 = join(0x457cb3b4e13ca37e, 0xa0aca556e62034cf);
constexpr Uint128 kPi = join(0x6487ed5110b4611a, 0x62633145c06e0e68);
constexpr Uint128 kInversePi = join(0xa2f9836e4e441529, 0xfc2757d1f534ddc0);

// a * b * 2^-128, less than two units too small.
Uint128 product(Uint128 a, Uint128 b) {
  const auto aHigh = static_cast<uint64_t>(a >> 64), aLow = static_cast<uint64_t>(a);
  const auto bHigh = static_cast<uint64_t>(b >> 64), bLow = static_cast<uint64_t>(b);
  const Uint128 low = static_cast<Uint128>(aLow) * bLow;
  const Uint128 one = static_cast<Uint128>(aHigh) * bLow + (low >> 64);
  const Uint128 other = static_cast<Uint128>(aLow) * bHigh + static_cast<uint64_t>(one);
  return static_cast<Uint128>(aHigh) * bHigh + (one >> 64) + (other >> 64);
}

// above / below in units of 2^-128, above < below < 2^63.
Uint128 fraction(uint64_t above, uint64_t below) {
  const Uint128 first = static_cast<Uint128>(above) << 64;
  const Uint128 second = (first % below) << 64;
  return join(static_cast<uint64_t>(first / below), static_cast<uint64_t>(second / below));
}

int bitsOf(uint64_t n) { return n == 0 ? 0 : 64 - __builtin_clzll(n); }

int compare(Uint128 a, Uint128 b) { return a < b ? -1 : a > b ? 1 : 0; }

// `fromTie` says on which side of the tie above `below` a value lies, or that it is the tie.
int64_t rounded(int64_t below, int fromTie) {
  return below + (fromTie > 0 || (fromTie == 0 && below % 2 != 0) ? 1 : 0);
}

// value * 2^-bits to the nearest integer; no tie.
int64_t roundedFixed(Uint128 value, int64_t bits) {
  if (bits > 127) return 0;
  return static_cast<int64_t>((value >> bits) + (value >> (bits - 1) & 1));
}

// ln(n) in units of 2^-123.
Uint128 logarithm(uint32_t n) {
  const int exponent = bitsOf(n) - 1;
  const uint64_t power = uint64_t{1} << exponent;
  // ln(m) = 2 (z + z^3 / 3 + z^5 / 5 + ...) with z = (m - 1) / (m + 1) < 1/3
  Uint128 term = fraction(n - power, n + power), sum = term;
  const Uint128 square = product(term, term);
  for (unsigned k = 3; term != 0; k += 2) {
    term = product(term, square);
    sum += term / k;
  }
  return (sum >> 4) + (kLn2 >> 5) * static_cast<unsigned>(exponent);
}

// |atan2(im, re)| in units of 2^-125, for re^2 + im^2 < 2^63.
Uint128 angle(int64_t re, int64_t im) {
  const auto width = static_cast<uint64_t>(re < 0 ? -re : re), height = static_cast<uint64_t>(im < 0 ? -im : im);
  const uint64_t x = width > height ? width : height, y = width > height ? height : width;
  // atan(y / x) = xy / r^2 (1 + 2/3 u + 2/3 4/5 u^2 + ...) with u = y^2 / r^2 <= 1/2 [Euler 1755], in units of 2^-128
  const uint64_t square = x * x + y * y;
  const Uint128 u = fraction(y * y, square);
  Uint128 term = fraction(x * y, square), sum = 0;
  for (unsigned k = 1; term != 0; ++k) {
    sum += term;
    term = product(term, u) / (2 * k + 1) * (2 * k);
  }
  sum >>= 3;  // of 2^-125
  if (height > width) sum = kPi / 2 - sum;
  return re < 0 ? kPi - sum : sum;
}

}  // namespace

uint64_t floorRoot(Uint128 n) {
  auto root = static_cast<uint64_t>(std::sqrt(static_cast<double>(n)));
  if (root == 0) return 0;
  // One step of Newton's method, from 53 bits to all but the last.
  const auto rest = static_cast<Int128>(n - static_cast<Uint128>(root) * root);
  root += static_cast<uint64_t>(rest / (2 * static_cast<Int128>(root)));
  while (static_cast<Uint128>(root) * root > n) --root;
  while (static_cast<Uint128>(root + 1) * (root + 1) <= n) ++root;
  return root;
}

int64_t roundedRoot(uint64_t n, int scale) {
  if (n == 0 || scale > 40) return 0;  // roots are below 2^32
  if (scale <= 0) {
    if (scale < -63 || bitsOf(n) - 2 * scale > 126) return std::numeric_limits<int64_t>::max();
    const Uint128 square = static_cast<Uint128>(n) << (-2 * scale);
    const uint64_t root = floorRoot(square);
    const bool up = square - static_cast<Uint128>(root) * root > root;  // beyond (root + 1/2)^2; no integer is a tie
    return static_cast<int64_t>(root + (up ? 1 : 0));
  }
  const uint64_t below = floorRoot(n) >> scale;
  const Uint128 tie = static_cast<Uint128>(2 * below + 1) << (scale - 1);
  return rounded(static_cast<int64_t>(below), compare(n, tie * tie));
}

int64_t roundedHalfAngleRoot(int a, int b, int scale, int64_t below) {
  // The tie h = (below + 1/2) 2^scale is exceeded if |z| > 2 h^2 - a, all of it times a power of two that makes
  // integers.
  const Int128 twiceTie = 2 * static_cast<Int128>(below) + 1;
  const int up = scale > 0 ? 0 : 1 - 2 * scale;
  const Int128 right = (twiceTie * twiceTie << (scale > 0 ? 2 * scale - 1 : 0)) - (Int128{a} << up);
  if (right < 0) return below + 1;
  const auto square = static_cast<Uint128>(Int128{a} * a + Int128{b} * b);
  return rounded(below, compare(square << (2 * up), static_cast<Uint128>(right) * static_cast<Uint128>(right)));
}

int64_t roundedCubeRoot(uint32_t n, int scale, int64_t below) {
  const Uint128 tie = static_cast<Uint128>(2 * below + 1) << (scale > 0 ? scale - 1 : 0);
  return rounded(below, compare(static_cast<Uint128>(n) << (scale > 0 ? 0 : 3 - 3 * scale), tie * tie * tie));
}

int64_t roundedExp(int n, int scale, int64_t below) {
  if (n == 0) return below;  // a power of two; of the only tie, 1/2, that is the even neighbour
  // e^n = 2^(whole + part)
  const auto magnitude = static_cast<uint64_t>(n < 0 ? -int64_t{n} : int64_t{n});
  const Uint128 low = static_cast<Uint128>(magnitude) * static_cast<uint64_t>(kFractionOfLog2E);
  const Uint128 high = static_cast<Uint128>(magnitude) * static_cast<uint64_t>(kFractionOfLog2E >> 64) + (low >> 64);
  auto whole = static_cast<int64_t>(magnitude + static_cast<uint64_t>(high >> 64));
  Uint128 part = high << 64 | static_cast<uint64_t>(low);
  if (n < 0) {
    part = ~part;
    whole = -whole - 1;
  }
  // 2^part in units of 2^-126
  const Uint128 x = product(part, kLn2);
  Uint128 term = Uint128{1} << 126, sum = term;
  for (unsigned k = 1; term != 0; ++k) {
    term = product(term, x) / k;
    sum += term;
  }
  return roundedFixed(sum, 126 - (whole - scale));
}

int64_t roundedLn(uint32_t n, int scale, int64_t below) {
  return n == 1 ? below : roundedFixed(logarithm(n), int64_t{123} + scale);
}

int64_t roundedDecibels(uint32_t n, int scale, int64_t below) {
  int decibels = 0;
  for (uint64_t power = 1; power <= n; power *= 10, decibels += 10) {
    if (power != n) continue;
    // Only multiples of 10 scaled down have ties, and doubles hold them exactly.
    const int64_t twice = int64_t{2} * decibels;
    return scale <= 0 || scale > 10
               ? below
               : rounded(below, compare(static_cast<Uint128>(twice), static_cast<Uint128>(2 * below + 1) << scale));
  }
  return roundedFixed(product(logarithm(n), kTenOverLn10), int64_t{119} + scale);
}

int64_t roundedAngle(int re, int im, int scale, int64_t below) {
  return im == 0 && re >= 0 ? below : roundedFixed(angle(re, im), int64_t{125} + scale);
}

int64_t roundedHalfTurns(int64_t re, int64_t im, int64_t below) {
  return im == 0 && re >= 0 ? below : roundedFixed(product(angle(re, im), kInversePi), 126 - 15);
}

}  // namespace orpsp
