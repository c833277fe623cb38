// Which vector width runs, for code without widths.
#pragma once

#include <type_traits>

#include "frame/entry.h"

namespace orpsp {

// The row of the slots: 0, 1, 2 for vectors of 128, 256, 512 bits.
inline int widthRow() { return ownEntryIndex / 2; }
inline int vectorBits() { return 128 << widthRow(); }

template <auto... functions>
auto functionOfWidth() {
  static constexpr std::common_type_t<decltype(functions)...> kRows[] = {functions...};
  return kRows[widthRow()];
}

}  // namespace orpsp

// An internal function of the width that runs. Code without widths must not go through exports instead: those are
// checked and dispatched again, and an application may have defined their names. Used in the last pass (HWY_ONCE) of
// the file that has the function, outside of its namespaces.
#define ORPS_OF_WIDTH(...)                                                                        \
  (::orpsp::functionOfWidth<&ORPSP_NAMESPACE_128::__VA_ARGS__, &ORPSP_NAMESPACE_256::__VA_ARGS__, \
                            &ORPSP_NAMESPACE_512::__VA_ARGS__>())
