#include "words.h"

#include <charconv>
#include <cmath>
#include <string_view>

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

}  // namespace wavtool
