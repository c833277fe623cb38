// Argument checks, in the order that every call promises: pointers, lengths, then ranges.
#pragma once

#include "orpsp/types.h"

#define ORPS_RETURN_IF(condition, status)                    \
  do {                                                       \
    if (__builtin_expect(!!(condition), 0)) return (status); \
  } while (0)

namespace orpsp {

template <class... P>
constexpr bool anyNull(const P*... pointers) {
  return ((pointers == nullptr) || ...);
}

}  // namespace orpsp

#define ORPS_CHECK_VECTOR(len, ...) ORPS_CHECK_LONGER_VECTOR(1, len, __VA_ARGS__)

#define ORPS_CHECK_LONGER_VECTOR(least, len, ...)            \
  ORPS_RETURN_IF(::orpsp::anyNull(__VA_ARGS__), StsNullPtr); \
  ORPS_RETURN_IF((len) < (least), StsBadSize)
