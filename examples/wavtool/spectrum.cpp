// wavtool spectrum: what frequencies a recording holds, as a picture and as a list of its strongest tones.
//
// [Welch 1967] P. D. Welch, The use of fast Fourier transform for the estimation of power spectra, IEEE Transactions on
// Audio and Electroacoustics 15(2): 70-73.
// [Harris 1978] F. J. Harris, On the use of windows for harmonic analysis with the discrete Fourier transform,
// Proceedings of the IEEE 66(1): 51-83.
#include <CLI/App.hpp>
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "audio_file.h"
#include "commands.h"
#include "library.h"
#include "new_file.h"
#include "not_finite.h"
#include "power_spectrum.h"
#include "spectrum_plot.h"
#include "stopwatch.h"
#include "window.h"

namespace wavtool {
namespace {

namespace fs = std::filesystem;

// Samples of a frame of at least this many seconds, or of the whole recording if it is shorter.
size_t frameLength(const AudioReader& input, double seconds) {
  const auto wanted = static_cast<size_t>(std::max(256.0, seconds * input.format().rate));
  return std::min(std::bit_ceil(wanted), static_cast<size_t>(input.frames()));
}

// The averaged spectrum is to tell the partials of a voice from one another, the spectrogram its syllables.
constexpr double kSpectrumSeconds = 0.1, kSpectrogramSeconds = 0.035;

struct Averages {
  std::vector<Levels> channels;
  size_t frameLength, frames;
  double bin;          // distance of two levels in Hz
  double independent;  // distance of two independent levels in Hz
  int64_t notFinite;
};

// The mean of overlapping frames' power spectra [Welch 1967].
Averages averagesOf(const Library& library, const Window& window, const std::string& path, Stopwatch& working) {
  AudioReader input(path);
  const double rate = input.format().rate;
  PowerSpectrum spectrum(library, window, frameLength(input, kSpectrumSeconds));
  const size_t length = spectrum.frameLength(), frames = framesIn(input, length);
  std::vector<Levels> channels(static_cast<size_t>(input.format().channels), Levels(spectrum.bins()));
  const int64_t notFinite = forEachFrame(library, input, length, frames, [&](size_t, size_t channel, auto samples) {
    working.start();
    spectrum.add(samples, channels[channel]);
    working.stop();
  });
  for (Levels& levels : channels) spectrum.toDecibels(levels, frames);
  return {std::move(channels),
          length,
          frames,
          rate / static_cast<double>(spectrum.transformLength()),
          rate / static_cast<double>(length),
          notFinite};
}

// The same of equal parts of the recording, all channels together.
std::vector<Levels> momentsOf(const Library& library, const Window& window, const std::string& path,
                              Stopwatch& working) {
  AudioReader input(path);
  PowerSpectrum spectrum(library, window, frameLength(input, kSpectrogramSeconds));
  const size_t frames = framesIn(input, spectrum.frameLength(), kMostMoments);
  std::vector<Levels> moments(std::min(frames, kMostMoments), Levels(spectrum.bins()));
  std::vector<size_t> added(moments.size());
  forEachFrame(library, input, spectrum.frameLength(), frames, [&](size_t frame, size_t, auto samples) {
    const size_t moment = frame * moments.size() / frames;
    working.start();
    spectrum.add(samples, moments[moment]);
    working.stop();
    ++added[moment];
  });
  for (size_t moment = 0; moment < moments.size(); ++moment) spectrum.toDecibels(moments[moment], added[moment]);
  return moments;
}

struct Tone {
  double frequency, level;
};

constexpr size_t kMostTones = 8;
constexpr double kAboveMedian = 12;     // in dB; noise hardly ever gets there, even if it is all in one frame
constexpr double kBelowStrongest = 60;  // in dB
constexpr double kSurroundings = 32;    // in independent levels, on either side

double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

// Maxima well above their surroundings, the strongest first. A maximum with a stronger level within the reach of the
// window is none: it belongs to what that one leaks.
std::vector<Tone> tonesOf(const Averages& averages, const Window& window, const Levels& levels) {
  const double bin = averages.bin, independent = averages.independent;
  const auto around = [&](size_t k, double distance) {
    const auto reach = static_cast<size_t>(std::lround(distance * independent / bin));
    return std::pair{levels.begin() + static_cast<std::ptrdiff_t>(k - std::min(k, reach)),
                     levels.begin() + static_cast<std::ptrdiff_t>(std::min(k + reach + 1, levels.size()))};
  };
  const double least = *std::max_element(levels.begin(), levels.end()) - kBelowStrongest;
  std::vector<Tone> tones;
  for (size_t k = 1; k + 1 < levels.size(); ++k) {
    const double left = levels[k - 1], here = levels[k], right = levels[k + 1];
    if (here < least || here <= left || here < right) continue;
    const auto [first, last] = around(k, window.reach);
    if (*std::max_element(first, last) > here) continue;
    const auto [begin, end] = around(k, kSurroundings);
    if (here < median({begin, end}) + kAboveMedian) continue;
    // The top of the parabola through the three levels.
    const double offset = (right - left) / (2 * (2 * here - left - right));
    tones.push_back({(static_cast<double>(k) + offset) * bin, here + (right - left) * offset / 4});
  }
  std::sort(tones.begin(), tones.end(), [](const Tone& a, const Tone& b) { return a.level > b.level; });
  tones.resize(std::min(tones.size(), kMostTones));
  return tones;
}

void printTones(const Averages& averages, const Window& window) {
  // At least tenths, and finer than a tenth of what tells independent levels apart.
  const int digits = std::max(1, static_cast<int>(std::ceil(-std::log10(averages.independent / 10))));
  for (size_t channel = 0; channel < averages.channels.size(); ++channel) {
    const Levels& levels = averages.channels[channel];
    const bool silent = PowerSpectrum::isSilence(*std::max_element(levels.begin(), levels.end()));
    const auto tones = silent ? std::vector<Tone>{} : tonesOf(averages, window, levels);
    std::printf("channel %zu: %s\n", channel + 1,
                silent          ? "silent"
                : tones.empty() ? "no tones that stand out"
                                : "its strongest tones");
    for (const Tone& tone : tones) std::printf("  %10.*f Hz %8.1f dBFS\n", digits, tone.frequency, tone.level);
  }
}

std::string text(const char* format, auto... values) {
  char text[256];
  std::snprintf(text, sizeof(text), format, values...);
  return text;
}

struct Arguments {
  std::string input, output, window = "hann";
};

void spectrum(const Options& options, const Arguments& arguments) {
  Stopwatch whole, working;
  whole.start();
  const std::string &path = arguments.input, &output = arguments.output;
  const Window& window = parseWindow(arguments.window);
  std::error_code ignored;
  if (fs::equivalent(path, output, ignored)) throw Failure("cannot write " + output + ": it is the recording itself");
  NewFile file(output, "SVG");
  const Library library(options.library);
  const AudioReader input(path);
  const AudioFormat format = input.format();
  const double seconds = static_cast<double>(input.frames()) / format.rate;
  const Averages averages = averagesOf(library, window, path, working);
  const std::string duration = text("%.3g s", 1 / averages.independent);
  SpectrumPlot plot;
  plot.title = fs::path(path).filename().string();
  plot.subtitle =
      text("%.6g s, %d Hz, %d channel(s), %s", seconds, format.rate, format.channels, input.nameOfSamples().c_str());
  plot.spectrumTitle =
      text("Averaged spectrum (%zu frame(s) of %s, %s window)", averages.frames, duration.c_str(), window.name);
  plot.spectrogramTitle = format.channels > 1 ? "Spectrogram (all channels)" : "Spectrogram";
  plot.rate = format.rate;
  plot.seconds = seconds;
  plot.channels = averages.channels;
  plot.moments = momentsOf(library, window, path, working);
  file.write(svgOf(plot));
  file.finish();
  whole.stop();

  std::printf("%s: %.2f s, %d channel(s), %d Hz, %s\n", path.c_str(), seconds, format.channels, format.rate,
              input.nameOfSamples().c_str());
  std::printf("analysed: %zu frame(s) of %zu samples (%s), %s window%s\n", averages.frames, averages.frameLength,
              duration.c_str(), window.name, averages.frames > 1 ? ", overlapping by half" : "");
  // The width of a tone 6 dB below its peak [Harris 1978].
  std::printf("resolution: %.3g Hz, a level every %.3g Hz\n", window.width * averages.independent, averages.bin);
  printNotFinite(averages.notFinite);
  printTones(averages, window);
  std::printf("speed: analysed in %.3f ms, %.0f times real time; %.3f ms with reading and drawing\n",
              1e3 * working.seconds(), seconds / working.seconds(), 1e3 * whole.seconds());
}

}  // namespace

void addSpectrum(CLI::App& tool, const Options& options) {
  const auto arguments = std::make_shared<Arguments>();
  CLI::App* command = tool.add_subcommand(
      "spectrum", "Draw a recording's averaged spectrum and its spectrogram, and list its strongest tones");
  command->add_option("IN", arguments->input, "any recording that libsndfile reads")->required();
  command->add_option("OUT.svg", arguments->output, "the picture; an existing file is replaced")->required();
  command->add_option("--window", arguments->window,
                      "what frames are multiplied by: hann (the default), hamming, blackman, bartlett or kaiser");
  command->callback([&options, arguments] { spectrum(options, *arguments); });
}

}  // namespace wavtool
