#include "not_finite.h"

#include <cmath>
#include <cstdio>

namespace wavtool {

int64_t zeroNotFinite(std::span<double> samples) {
  int64_t count = 0;
  for (double& sample : samples) {
    if (std::isfinite(static_cast<float>(sample))) continue;
    sample = 0;
    ++count;
  }
  return count;
}

void printNotFinite(int64_t count) {
  if (count > 0) std::printf("not finite: %lld samples, taken as zeros\n", static_cast<long long>(count));
}

}  // namespace wavtool
