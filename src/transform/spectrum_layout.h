// Where the half spectrum X[0] to X[n / 2] of n real elements stands, of any n: the real bin 0 at element 0, the pairs
// of real and imaginary parts of bin 1 and the following from element pairs(n) on, and for even n the real bin n / 2 at
// element middle(n).
#pragma once

#include <cstddef>

namespace orpsp {

struct PackLayout {
  static constexpr bool kAllArePairs = false;
  static constexpr size_t pairs(size_t) { return 1; }
  static constexpr size_t middle(size_t n) { return n - 1; }
};
struct PermLayout {
  static constexpr bool kAllArePairs = false;
  static constexpr size_t pairs(size_t n) { return n % 2 == 0 ? 2 : 1; }
  static constexpr size_t middle(size_t) { return 1; }
};
struct CcsLayout {
  static constexpr bool kAllArePairs = true;  // bin 0 and bin n / 2 too, whose imaginary parts are 0
  static constexpr size_t pairs(size_t) { return 2; }
  static constexpr size_t middle(size_t n) { return n; }
};

// Elements that a spectrum of n reals takes.
template <class Layout>
constexpr size_t spectrumLength(size_t n) {
  return Layout::kAllArePairs ? n / 2 * 2 + 2 : n;
}

}  // namespace orpsp
