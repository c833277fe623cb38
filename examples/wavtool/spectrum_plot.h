// A picture of how loud a recording is over frequency, and over time and frequency.
#pragma once

#include <string>
#include <vector>

namespace wavtool {

// Levels in dB of frequencies equally spaced from 0 to half the sample rate.
using Levels = std::vector<double>;

// The spectrogram has room for this many moments; fewer are drawn wider.
constexpr size_t kMostMoments = 420;

struct SpectrumPlot {
  std::string title, subtitle, spectrumTitle, spectrogramTitle;
  double rate, seconds;
  std::vector<Levels> channels;  // of the whole recording
  std::vector<Levels> moments;   // of equal parts of it
};

std::string svgOf(const SpectrumPlot& plot);

}  // namespace wavtool
