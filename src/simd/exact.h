// Integer results that are rounded from the exact value, whatever it takes: for the elements whose value lies so close
// to a tie that double precision does not tell on which side.
//
// Each is the integer next to the value named times 2^-scale, ties to even, given `below`, the integer at or below it
// (where there is one); values are not negative.
#pragma once

#include <cstdint>

namespace orpsp {

// The integer at or below sqrt(n), n < 2^126.
__extension__ uint64_t floorRoot(unsigned __int128 n);

// sqrt(n), at most INT64_MAX.
int64_t roundedRoot(uint64_t n, int scale);

// sqrt((sqrt(a^2 + b^2) + a) / 2), for 16-bit a and b and results below 2^15.
int64_t roundedHalfAngleRoot(int a, int b, int scale, int64_t below);

// Cube root, for results below 2^15.
int64_t roundedCubeRoot(uint32_t n, int scale, int64_t below);

// e^n
int64_t roundedExp(int n, int scale, int64_t below);

// ln(n) and 10 log10(n), n >= 1
int64_t roundedLn(uint32_t n, int scale, int64_t below);
int64_t roundedDecibels(uint32_t n, int scale, int64_t below);

// |atan2(im, re)| for 16-bit parts.
int64_t roundedAngle(int re, int im, int scale, int64_t below);

// |atan2(im, re)| in units of pi * 2^-15, for products of two numbers with 16-bit parts.
int64_t roundedHalfTurns(int64_t re, int64_t im, int64_t below);

}  // namespace orpsp
