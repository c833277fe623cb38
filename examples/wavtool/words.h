// Numbers with a unit, from the words of a command line.
#pragma once

#include <cstdint>
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

// The amplitude that a level up to full scale means: "-6", "-6dB", "-0.5 dBFS".
double parseLevel(const std::string& word);

// A number in `unit`, which may be left out. The Failure on any other word says that it is not `what`.
double parseMeasure(const std::string& word, const std::string& unit, const std::string& what);
int64_t parseWhole(const std::string& word, const std::string& unit, int64_t least, int64_t most,
                   const std::string& what);

}  // namespace wavtool
