#include "levels.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace wavtool {

void Level::addOne(double sample) {
  peak_ = std::max(peak_, std::abs(sample));
  squares_ += sample * sample;
  ++count_;
}

void Level::add(std::span<const int16_t> samples) {
  for (const int16_t sample : samples) addOne(sample / 32768.0);
}

void Level::add(std::span<const double> samples) {
  for (const double sample : samples) addOne(sample);
}

std::string Level::text() const {
  if (peak_ == 0) return "silent";
  const double rms = std::sqrt(squares_ / static_cast<double>(count_));
  char text[64];
  std::snprintf(text, sizeof(text), "peak %.1f dBFS, RMS %.1f dBFS", 20 * std::log10(peak_), 20 * std::log10(rms));
  return text;
}

}  // namespace wavtool
