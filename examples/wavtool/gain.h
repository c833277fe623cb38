// Gains: from the words of a command line to the fixed-point factors of the library's scaled calls.
#pragma once

#include <cstdint>
#include <string>

namespace wavtool {

// factor * 2^-scale, with 15 significant bits.
struct Gain {
  int16_t factor = 0;
  int scale = 0;
};

// The factor that `word` means: "0.5", "-1" (inverts), "-6dB", "+3.5 dB".
double parseGain(const std::string& word);

// |gain| up to 32767.
Gain fixedPoint(double gain);

}  // namespace wavtool
