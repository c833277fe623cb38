// Numbers with a unit, from the words of a command line.
#pragma once

#include <optional>
#include <string>

namespace wavtool {

struct Number {
  double value;
  std::string unit;  // what stands behind the number, without spaces before it
};

// "0.5", "-6dB", "+3.5 dB"; nothing if the word does not begin with a finite number.
std::optional<Number> parseNumber(const std::string& word);

bool isDecibels(const std::string& unit);

}  // namespace wavtool
