#include "levels.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace wavtool {

void Level::add(std::span<const int16_t> samples) {
  int64_t squares = 0;
  for (const int sample : samples) {
    peak_ = std::max(peak_, std::abs(sample));
    squares += int64_t{sample} * sample;
  }
  squares_ += static_cast<double>(squares);
  count_ += static_cast<int64_t>(samples.size());
}

std::string Level::text() const {
  if (peak_ == 0) return "silent";
  const double rms = std::sqrt(squares_ / static_cast<double>(count_));
  char text[64];
  std::snprintf(text, sizeof(text), "peak %.1f dBFS, RMS %.1f dBFS", 20 * std::log10(peak_ / 32768.0),
                20 * std::log10(rms / 32768.0));
  return text;
}

}  // namespace wavtool
