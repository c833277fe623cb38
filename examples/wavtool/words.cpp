#include "words.h"

#include <charconv>
#include <cmath>
#include <string_view>

#include "failure.h"

namespace wavtool {

std::optional<Number> parseNumber(const std::string& word) {
  std::string_view text = word;
  if (text.starts_with('+')) text.remove_prefix(1);
  double value = 0;
  const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || !std::isfinite(value)) return std::nullopt;
  std::string_view unit(rest, static_cast<size_t>(text.data() + text.size() - rest));
  while (unit.starts_with(' ')) unit.remove_prefix(1);
  return Number{value, std::string(unit)};
}

bool isDecibels(const std::string& unit) { return unit == "dB" || unit == "db" || unit == "DB"; }

double parseLevel(const std::string& word) {
  const auto number = parseNumber(word);
  if (!number || (!number->unit.empty() && !isDecibels(number->unit) && number->unit != "dBFS"))
    throw Failure("'" + word + "' is not a level: give decibels below full scale such as -6");
  if (number->value > 0) throw Failure("'" + word + "' is above full scale: a level is at most 0 dBFS");
  return std::pow(10.0, number->value / 20);
}

double parseMeasure(const std::string& word, const std::string& unit, const std::string& what) {
  const auto number = parseNumber(word);
  if (!number || (!number->unit.empty() && number->unit != unit)) throw Failure("'" + word + "' is not " + what);
  return number->value;
}

int64_t parseWhole(const std::string& word, const std::string& unit, int64_t least, int64_t most,
                   const std::string& what) {
  const double value = parseMeasure(word, unit, what);
  if (value != std::floor(value) || value < static_cast<double>(least) || value > static_cast<double>(most))
    throw Failure("'" + word + "' is not " + what);
  return static_cast<int64_t>(value);
}

}  // namespace wavtool
