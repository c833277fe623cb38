// Sines for twiddle factors.
#pragma once

#include <cstddef>
#include <cstdint>

namespace orpsp {

// entry[k] = sin(2 pi k / 2^order), k = 0 to 2^order / 4, correctly rounded or within a few thousandths of that.
template <class T>
struct QuarterSine {
  const T* entry;
  int order;
};

template <class T>
struct UnitRoot {
  T re, im;
};

// exp(-2 pi i k / 2^order) for any k; order may not exceed the table's.
template <class T>
__attribute__((always_inline)) inline UnitRoot<T> unitRoot(const QuarterSine<T>& table, uint64_t k, int order) {
  const uint64_t quarter = uint64_t{1} << (table.order - 2);
  const uint64_t at = k << (table.order - order), rest = at & (quarter - 1);
  const T sine = table.entry[rest], cosine = table.entry[quarter - rest];
  switch (at >> (table.order - 2) & 3) {
    case 0:
      return {cosine, -sine};
    case 1:
      return {-sine, -cosine};
    case 2:
      return {-cosine, sine};
    default:
      return {sine, cosine};
  }
}

// Orders up to this one read a table that is part of the library: SineTable1024.
constexpr int kStaticSineOrder = 10;

template <class T>
QuarterSine<T> staticSine();

// Fills table[0] to table[2^order / 4] for an order from kStaticSineOrder + 1 to 29.
template <class T>
QuarterSine<T> fillSine(int order, T* table);

}  // namespace orpsp
