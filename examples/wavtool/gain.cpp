#include "gain.h"

#include <cmath>

#include "failure.h"
#include "words.h"

namespace wavtool {

double parseGain(const std::string& word) {
  const auto number = parseNumber(word);
  if (!number || (!number->unit.empty() && !isDecibels(number->unit)))
    throw Failure("'" + word + "' is not a gain: give a factor such as 0.5, or decibels such as -6dB");
  return number->unit.empty() ? number->value : std::pow(10.0, number->value / 20);
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
