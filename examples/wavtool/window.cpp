#include "window.h"

namespace wavtool {

struct WindowCalls {
  const Library& library;
  WAVTOOL_FUNCTION(orpsWinHann_64f_I);
  WAVTOOL_FUNCTION(orpsWinHamming_64f_I);
  WAVTOOL_FUNCTION(orpsWinBlackmanStd_64f_I);
  WAVTOOL_FUNCTION(orpsWinBartlett_64f_I);
  WAVTOOL_FUNCTION(orpsWinKaiser_64f_I);
};

namespace {

// Of the Kaiser window: its strongest side lobe is 59 dB below the peak.
constexpr float kBeta = 8;

constexpr Window kWindows[] = {
    {"hann", "Hann", 2, 2, [](const WindowCalls& calls, double* w, int len) { calls.orpsWinHann_64f_I(w, len); }},
    {"hamming", "Hamming", 1.81, 3.5,
     [](const WindowCalls& calls, double* w, int len) { calls.orpsWinHamming_64f_I(w, len); }},
    {"blackman", "Blackman", 2.3, 3,
     [](const WindowCalls& calls, double* w, int len) { calls.orpsWinBlackmanStd_64f_I(w, len); }},
    {"bartlett", "Bartlett", 1.77, 2.5,
     [](const WindowCalls& calls, double* w, int len) { calls.orpsWinBartlett_64f_I(w, len); }},
    {"kaiser", "Kaiser", 2.22, 3, [](const WindowCalls& calls, double* w, int len) {
       calls.orpsWinKaiser_64f_I(w, len, 2 * kBeta / static_cast<float>(len - 1));
     }}};

}  // namespace

const Window& parseWindow(const std::string& word) {
  for (const Window& window : kWindows)
    if (window.word == word) return window;
  throw Failure("'" + word + "' is not a window: give --window hann, hamming, blackman, bartlett or kaiser");
}

std::vector<double> weightsOf(const Window& window, const Library& library, size_t frameLength) {
  std::vector<double> weights(frameLength + 2, 1);
  window.apply(WindowCalls{library}, weights.data(), static_cast<int>(weights.size()));
  return {weights.begin() + 1, weights.end() - 1};
}

}  // namespace wavtool
