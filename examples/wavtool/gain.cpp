#include "gain.h"

#include <charconv>
#include <cmath>
#include <string_view>

#include "failure.h"

namespace wavtool {

double parseGain(const std::string& word) {
  std::string_view text = word;
  if (text.starts_with('+')) text.remove_prefix(1);
  double value = 0;
  const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  std::string_view unit(rest, static_cast<size_t>(text.data() + text.size() - rest));
  while (unit.starts_with(' ')) unit.remove_prefix(1);
  const bool decibels = unit == "dB" || unit == "db" || unit == "DB";
  if (error != std::errc{} || !std::isfinite(value) || (!decibels && !unit.empty()))
    throw Failure("'" + word + "' is not a gain: give a factor such as 0.5, or decibels such as -6dB");
  return decibels ? std::pow(10.0, value / 20) : value;
}

Gain fixedPoint(double gain) {
  if (gain == 0) return {};
  int exponent;
  double factor = std::nearbyint(std::ldexp(std::frexp(gain, &exponent), 15));
  if (std::abs(factor) == 32768) {
    factor /= 2;
    ++exponent;
  }
  return {static_cast<int16_t>(factor), 15 - exponent};
}

}  // namespace wavtool
