#include "core/environment.h"

#include <charconv>
#include <cstdlib>
#include <string_view>

namespace orpcore {
namespace {

template <class T>
std::optional<T> parse(std::string_view text, int base) {
  T value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return value;
}

}  // namespace

std::optional<uint64_t> hexFromEnvironment(const char* name) {
  const char* text = std::getenv(name);
  if (!text) return std::nullopt;
  std::string_view digits = text;
  if (digits.starts_with("0x") || digits.starts_with("0X")) digits.remove_prefix(2);
  return parse<uint64_t>(digits, 16);
}

std::optional<int> countFromEnvironment(const char* name) {
  const char* text = std::getenv(name);
  if (!text) return std::nullopt;
  const auto count = parse<int>(text, 10);
  return count && *count >= 0 ? count : std::nullopt;
}

}  // namespace orpcore
