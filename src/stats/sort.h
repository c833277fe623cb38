// Sorts of values, for code without widths: by the kernels of the width that runs.
#pragma once

#include <cstddef>

namespace orpsp {

inline constexpr bool kAscends = false, kDescends = true;

// Sorts the elements as orpsSortAscend or orpsSortDescend does. T is any element type of the radix sorts.
template <class T>
void sortValues(T* data, size_t len, bool descends);

}  // namespace orpsp
