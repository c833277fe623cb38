// Products and quotients of 64-bit integers, exact in 128 bits. No vector instructions serve these.
#include <bit>
#include <cmath>
#include <limits>

#include "frame/check.h"
#include "frame/entry.h"
#include "orpsp/vector/arithmetic.h"
#include "orpsp/vector/division.h"
#include "simd/element.h"

namespace orpsp {
namespace {

__extension__ using Exact = __int128;
__extension__ using Magnitude = unsigned __int128;

constexpr Orp64s kLeast = std::numeric_limits<Orp64s>::min(), kMost = std::numeric_limits<Orp64s>::max();

// exact * 2^-scale, rounded to nearest even and saturated; |exact| < 2^126.
Orp64s scaled(Exact exact, int64_t scale) {
  if (scale > 0) {
    if (scale > 126) return 0;
    const Exact quotient = exact >> scale, half = Exact{1} << (scale - 1);
    const Exact aboveHalf = exact - (quotient << scale) - half;
    exact = quotient + (aboveHalf > -(quotient & 1) ? 1 : 0);
    scale = 0;
  }
  const int64_t up = -scale;
  if (exact > (up > 63 ? 0 : kMost >> up)) return kMost;
  if (exact < (up > 63 ? 0 : kLeast >> up)) return kLeast;
  return static_cast<Orp64s>(up > 63 ? 0 : exact << up);
}

// numerator / divisor * 2^-scale; the divisor is not zero.
Orp64s quotient(Orp64s numerator, Orp64s divisor, int scale) {
  const bool negative = (numerator < 0) != (divisor < 0);
  const auto magnitude = [](Orp64s v) { return v < 0 ? 0 - static_cast<uint64_t>(v) : static_cast<uint64_t>(v); };
  Magnitude above = magnitude(numerator), below = magnitude(divisor);
  if (above == 0 || scale >= 64) return 0;  // |quotient| <= 2^63 * 2^-64, at most the tie that rounds to 0
  if (scale >= 0) {
    below <<= scale;
  } else {
    // Width of the quotient: 2^bits and more saturate, and less keeps the numerator within 128 bits.
    const auto width = [magnitude](Orp64s v) { return static_cast<int64_t>(std::bit_width(magnitude(v))); };
    const int64_t bits = width(numerator) - 1 - scale - width(divisor);
    if (bits >= 63) return negative ? kLeast : kMost;
    above <<= -scale;
  }
  const Magnitude whole = above / below, rest = above - whole * below;
  const Magnitude nearest = whole + (rest > below - rest || (rest == below - rest && (whole & 1) != 0) ? 1 : 0);
  if (negative) return nearest >= Magnitude{1} << 63 ? kLeast : -static_cast<Orp64s>(nearest);
  return nearest > static_cast<Magnitude>(kMost) ? kMost : static_cast<Orp64s>(nearest);
}

// Replaces every element x by op(x).
OrpStatus transform(Orp64s* data, int len, auto op) {
  for (Orp64s* p = data; p != data + len; ++p) put(p, op(get(p)));
  return StsOk;
}

OrpStatus multiply(Orp64s val, Orp64s* pSrcDst, int len, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrcDst);
  return transform(pSrcDst, len, [=](Orp64s x) { return scaled(Exact{x} * val, scaleFactor); });
}

OrpStatus multiplyByDouble(Orp64f val, Orp64s* pSrcDst, int len, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrcDst);
  if (std::isnan(val)) val = 0;
  const bool infinite = std::isinf(val);
  int exponent = 0;
  const auto significand =
      infinite ? Orp64s{std::signbit(val) ? -1 : 1} : static_cast<Orp64s>(std::ldexp(std::frexp(val, &exponent), 53));
  const int64_t scale = infinite ? std::numeric_limits<int>::min() : int64_t{scaleFactor} - (exponent - 53);
  return transform(pSrcDst, len, [=](Orp64s x) { return scaled(Exact{x} * significand, scale); });
}

OrpStatus divide(Orp64s val, Orp64s* pSrcDst, int len, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrcDst);
  ORPS_RETURN_IF(val == 0, StsDivByZeroErr);
  return transform(pSrcDst, len, [=](Orp64s x) { return quotient(x, val, scaleFactor); });
}

}  // namespace

#include "frame/entry_plain.h"

#include "exports/integer64.inc"

}  // namespace orpsp
