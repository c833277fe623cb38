// Windows for spectra, from the words of a command line.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "library.h"

namespace wavtool {

struct WindowCalls;

// Widths are those of a long window's spectrum, in distances of independent levels.
struct Window {
  const char *word, *name;
  double width;  // between the points 6 dB below the peak
  double reach;  // a side lobe less than 60 dB below the peak has a stronger level within this distance
  void (*apply)(const WindowCalls& calls, double* samples, int len);
};

const Window& parseWindow(const std::string& word);

// The window without its first and last weight, which are often zeros: so no sample of a frame is lost.
std::vector<double> weightsOf(const Window& window, const Library& library, size_t frameLength);

}  // namespace wavtool
