// [Payne, Hanek 1983] M. H. Payne, R. N. Hanek: Radian reduction for trigonometric functions. ACM SIGNUM Newsletter
//   18(1). Of the product with 2/pi only the bits are computed that neither make whole turns nor lie below precision.
#include "simd/quarter_turns.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace orpsp {
namespace {

using Uint128 = unsigned __int128;
using Int128 = __int128;

// 2/pi in 1216 bits, the first one of weight 2^-1.
constexpr uint64_t kTwoOverPi[] = {0xa2f9836e4e441529u, 0xfc2757d1f534ddc0u, 0xdb6295993c439041u, 0xfe5163abdebbc561u,
                                   0xb7246e3a424dd2e0u, 0x06492eea09d1921cu, 0xfe1deb1cb129a73eu, 0xe88235f52ebb4484u,
                                   0xe99c7026b45f7e41u, 0x3991d639835339f4u, 0x9c845f8bbdf9283bu, 0x1ff897ffde05980fu,
                                   0xef2f118b5a0a6d1fu, 0x6d367ecf27cb09b7u, 0x4f463f669e5fea2du, 0x7527bac7ebe5f17bu,
                                   0x3d0739f78a5292eau, 0x6bfb5fb11f8d5d08u, 0x56033046fc7b6babu};

// 64 bits of 2/pi; the first one has the weight 2^-(1 + at). In front of them all are zeros.
uint64_t bitsAt(int at) {
  if (at <= -64) return 0;
  if (at < 0) return kTwoOverPi[0] >> -at;
  const int word = at / 64, shift = at % 64;
  const uint64_t first = kTwoOverPi[word] << shift;
  return shift == 0 ? first : first | kTwoOverPi[word + 1] >> (64 - shift);
}

}  // namespace

uint64_t quarterTurns(double x, double* r, double* rest) {
  *rest = 0;
  if (!(std::fabs(x) <= std::numeric_limits<double>::max())) {
    *r = std::numeric_limits<double>::quiet_NaN();
    return 0;
  }
  uint64_t bits;
  std::memcpy(&bits, &x, sizeof(bits));
  const int biased = static_cast<int>(bits >> 52 & 0x7FF);
  if (biased < 1023 - 2) {
    *r = x;
    return 0;
  }
  // |x| = mantissa * 2^exponent. Bits of weight 2^(2 - exponent) and more in 2/pi make multiples of four quarter turns.
  const uint64_t mantissa = (bits & ((uint64_t{1} << 52) - 1)) | uint64_t{1} << 52;
  const int exponent = biased - 1075;
  const int first = exponent - 2;
  // The product modulo 4, a fixed-point number with 2 bits in front of the point and 190 behind it.
  const uint64_t high = mantissa * bitsAt(first);
  const Uint128 middle = static_cast<Uint128>(mantissa) * bitsAt(first + 64);
  const Uint128 low = static_cast<Uint128>(mantissa) * bitsAt(first + 128);
  const Uint128 carried = middle + (low >> 64);
  const uint64_t top = high + static_cast<uint64_t>(carried >> 64);
  const Uint128 all = static_cast<Uint128>(top) << 64 | static_cast<uint64_t>(carried);
  // Rounded to the nearest quarter turn; what remains is in [-1/2, 1/2) of one.
  auto quadrant = static_cast<uint64_t>(all >> 126);
  const auto fraction = static_cast<Int128>(all << 2 | static_cast<uint64_t>(low) >> 62);
  if (fraction < 0) ++quadrant;
  const long double angle = static_cast<long double>(fraction) * 0x1p-128L * 1.57079632679489661923132169163975144L;
  const bool negative = (bits >> 63) != 0;
  const long double turned = negative ? -angle : angle;
  *r = static_cast<double>(turned);
  *rest = static_cast<double>(turned - static_cast<long double>(*r));
  return negative ? 0 - quadrant : quadrant;
}

}  // namespace orpsp
