// Lengths to call with, each with the intent behind it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <vector>

namespace orptest {

struct Length {
  int value;
  const char* intent;
  friend std::ostream& operator<<(std::ostream& out, const Length& length) {
    return out << length.value << " elements (" << length.intent << ")";
  }
};

// Around every vector width, for a kernel whose vectors hold elements of that size (of a call with several element
// types, the smallest). Each length serves all widths: the body of one is the tail of the next.
inline std::vector<Length> lengthsAroundWidths(size_t elementBytes) {
  std::vector<Length> lengths = {{1, "one element"}, {2, "two elements"}, {3, "three elements"}};
  for (const int bytes : {16, 32, 64}) {
    const int lanes = std::max(1, bytes / static_cast<int>(elementBytes));
    for (const Length& length : {Length{lanes - 1, "tail only"}, Length{lanes, "body only"},
                                 Length{lanes + 1, "body and tail of one"}, Length{2 * lanes - 1, "body, longest tail"},
                                 Length{4 * lanes, "four vectors"}, Length{8 * lanes + 3, "eight vectors and tail"}})
      if (length.value > 0) lengths.push_back(length);
  }
  const auto less = [](const Length& a, const Length& b) { return a.value < b.value; };
  const auto same = [](const Length& a, const Length& b) { return a.value == b.value; };
  std::stable_sort(lengths.begin(), lengths.end(), less);
  lengths.erase(std::unique(lengths.begin(), lengths.end(), same), lengths.end());
  return lengths;
}

template <class T>
std::vector<Length> lengthsAroundWidths() {
  return lengthsAroundWidths(sizeof(T));
}

// Around the length from which a call is shared by threads (or takes another path).
inline std::vector<Length> lengthsAroundThreshold(int threshold) {
  return {{threshold - 1, "threshold - 1"},
          {threshold, "at the threshold"},
          {threshold + 1, "threshold + 1"},
          {2 * threshold + 37, "two odd parts"}};
}

// More than the first-level cache holds, and odd: several blocks of a kernel that works block by block.
inline Length lengthOfSeveralBlocks(size_t elementBytes) {
  return {static_cast<int>(100'000 / elementBytes) | 1, "several blocks"};
}

template <class T>
Length lengthOfSeveralBlocks() {
  return lengthOfSeveralBlocks(sizeof(T));
}

}  // namespace orptest
