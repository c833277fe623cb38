// Where the half spectrum X[0] to X[N / 2] of N real elements stands, N even.
#pragma once

namespace orpsp {

enum class SpectrumLayout {
  kPack,  // Re X[0], then pairs of Re, Im from X[1] on, last Re X[N / 2]
  kPerm,  // Re X[0], Re X[N / 2], then the same pairs
  kCcs,   // N / 2 + 1 pairs from X[0] on
};

}  // namespace orpsp
