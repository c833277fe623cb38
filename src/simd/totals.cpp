#include "simd/totals.h"

#include <algorithm>
#include <cmath>

#include "simd/exact.h"

namespace orpsp {
namespace {

int64_t clamped(Int128 value, Range64 range) {
  return static_cast<int64_t>(std::clamp<Int128>(value, range.least, range.most));
}

// quotient + a fraction, of which `half` says whether it is at least 1/2 and `more` whether there is something beyond.
Int128 rounded(Int128 quotient, bool half, bool more) { return quotient + (half && (more || quotient % 2 != 0)); }

}  // namespace

int64_t scaledTotal(Int128 total, int scale, Range64 range) {
  constexpr int kMost = 100;
  if (scale > kMost) return 0;
  if (scale <= 0) {
    const Int128 limited = std::clamp<Int128>(total, -(Int128{1} << 63), Int128{1} << 63);  // saturates in any case
    return clamped(limited * (Int128{1} << std::min<unsigned>(0u - static_cast<unsigned>(scale), 63)), range);
  }
  const Int128 below = total & ((Int128{1} << (scale - 1)) - 1);
  return clamped(rounded(total >> scale, total >> (scale - 1) & 1, below != 0), range);
}

int64_t scaledQuotient(int64_t total, int count, int scale, Range64 range) {
  const int shift = std::clamp(scale, -64, 64);  // beyond that all but 0 saturates or vanishes
  const Int128 above = static_cast<Int128>(total) * (Int128{1} << (shift < 0 ? -shift : 0));
  const Int128 below = static_cast<Int128>(count) << (shift > 0 ? shift : 0);
  Int128 quotient = above / below, rest = above % below;
  if (rest < 0) {
    --quotient;
    rest += below;
  }
  return clamped(rounded(quotient, 2 * rest >= below, 2 * rest > below), range);
}

int64_t scaledRoot(Uint128 above, uint64_t below, int scale, Range64 range) {
  if (above == 0 || scale > 40) return 0;
  // Four times the square of the result, and whether it is more than that.
  Uint128 square = 4 * above / below;
  bool more = 4 * above % below != 0;
  if (scale > 0) {
    more |= (square & ((Uint128{1} << (2 * scale)) - 1)) != 0;
    square >>= 2 * scale;
  } else if (scale < 0) {
    if (scale < -63 || (4 * above) >> (128 + 2 * scale) != 0) return range.most;
    const Uint128 scaled = 4 * above << (-2 * scale);
    square = scaled / below;
    more = scaled % below != 0;
  }
  if (square >> 66 != 0) return range.most;
  const uint64_t root = floorRoot(square / 4);
  const Uint128 tie = (2 * static_cast<Uint128>(root) + 1) * (2 * static_cast<Uint128>(root) + 1);
  return clamped(rounded(root, square >= tie, square > tie || more), range);
}

float floatRoot(uint64_t square) {
  // The roots of smaller integers are too far from ties of single precision for the double rounding to reach one.
  if (square < uint64_t{1} << 50) return static_cast<float>(std::sqrt(static_cast<double>(square)));
  // With 24 digits and many more in an integer that keeps the last one for what is lost, there is one rounding.
  const int shift = __builtin_clzll(square) / 2 + 30;
  const Uint128 scaled = static_cast<Uint128>(square) << (2 * shift);
  const uint64_t root = floorRoot(scaled);
  const bool more = static_cast<Uint128>(root) * root != scaled;
  const auto jammed = static_cast<float>(static_cast<int64_t>(root | (more ? 1 : 0)));
  return __builtin_ldexpf(jammed, -shift);
}

}  // namespace orpsp
