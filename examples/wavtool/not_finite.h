// Samples that are NaN, infinite or beyond single precision: every command that reads floating point takes them as
// zeros and says how many there were.
#pragma once

#include <cstdint>
#include <span>

namespace wavtool {

// Makes them zeros; returns how many.
int64_t zeroNotFinite(std::span<double> samples);

// A line, if there were any.
void printNotFinite(int64_t count);

}  // namespace wavtool
