// Results that are made of exact integer totals: scaled by 2^-scale, rounded once to nearest with ties to even, and
// saturated to the range given.
#pragma once

#include <cstdint>

namespace orpsp {

__extension__ using Int128 = __int128;
__extension__ using Uint128 = unsigned __int128;

struct Range64 {
  int64_t least, most;
};

// |total| < 2^96
int64_t scaledTotal(Int128 total, int scale, Range64 range);

// total / count, |total| <= 2^62
int64_t scaledQuotient(int64_t total, int count, int scale, Range64 range);

// sqrt(above / below), above < 2^95, 0 < below < 2^62, at most 2^32
int64_t scaledRoot(Uint128 above, uint64_t below, int scale, Range64 range);

// sqrt(square) in single precision
float floatRoot(uint64_t square);

}  // namespace orpsp
