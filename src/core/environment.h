// Numbers from the environment; anything malformed counts as absent.
#pragma once

#include <cstdint>
#include <optional>

namespace orpcore {

std::optional<uint64_t> hexFromEnvironment(const char* name);  // with or without 0x
std::optional<int> countFromEnvironment(const char* name);     // decimal, 0 to INT_MAX

}  // namespace orpcore
