// wavtool alaw, wavtool mulaw: a recording through the 8-bit codes of the telephone and back [G.711], and how much of
// it is lost.
//
// [G.711] ITU-T Recommendation G.711 (1988): Pulse code modulation (PCM) of voice frequencies.
#include <CLI/App.hpp>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <vector>

#include "audio_file.h"
#include "commands.h"
#include "converter.h"
#include "library.h"
#include "transfer.h"

namespace wavtool {
namespace {

enum class Law { kA, kMu };

class Compander {
 public:
  Compander(const Library& library, Law law, int channels)
      : calls_{library}, law_(law), energies_(static_cast<size_t>(channels)) {}

  // Whole frames.
  void work(std::span<double> samples);
  void report() const;

 private:
  struct Calls {
    const Library& library;
    WAVTOOL_FUNCTION(orpsConvert_64f16s_Sfs);
    WAVTOOL_FUNCTION(orpsConvert_16s64f_Sfs);
    WAVTOOL_FUNCTION(orpsLinToALaw_16s8u);
    WAVTOOL_FUNCTION(orpsALawToLin_8u16s);
    WAVTOOL_FUNCTION(orpsLinToMuLaw_16s8u);
    WAVTOOL_FUNCTION(orpsMuLawToLin_8u16s);
    WAVTOOL_FUNCTION(orpsNorm_L2_64f);
    WAVTOOL_FUNCTION(orpsNormDiff_L2_64f);
  } calls_;
  struct Energies {
    double signal = 0, noise = 0;
  };
  const Law law_;
  std::vector<Energies> energies_;  // of each channel
  std::vector<Orp16s> linear_, decoded_;
  std::vector<double> result_, before_, after_;
  std::vector<Orp8u> codes_;
};

void Compander::work(std::span<double> samples) {
  const int len = static_cast<int>(samples.size());
  linear_.resize(samples.size());
  codes_.resize(samples.size());
  decoded_.resize(samples.size());
  result_.resize(samples.size());
  calls_.orpsConvert_64f16s_Sfs(samples.data(), linear_.data(), len, OrpRoundNear, -15);
  if (law_ == Law::kA) {
    calls_.orpsLinToALaw_16s8u(linear_.data(), codes_.data(), len);
    calls_.orpsALawToLin_8u16s(codes_.data(), decoded_.data(), len);
  } else {
    calls_.orpsLinToMuLaw_16s8u(linear_.data(), codes_.data(), len);
    calls_.orpsMuLawToLin_8u16s(codes_.data(), decoded_.data(), len);
  }
  calls_.orpsConvert_16s64f_Sfs(decoded_.data(), result_.data(), len, 15);

  const size_t channels = energies_.size(), frames = samples.size() / channels;
  before_.resize(frames);
  after_.resize(frames);
  for (size_t channel = 0; channel < channels; ++channel) {
    for (size_t n = 0; n < frames; ++n) {
      before_[n] = samples[n * channels + channel];
      after_[n] = result_[n * channels + channel];
    }
    double signal, noise;
    calls_.orpsNorm_L2_64f(before_.data(), static_cast<int>(frames), &signal);
    calls_.orpsNormDiff_L2_64f(before_.data(), after_.data(), static_cast<int>(frames), &noise);
    energies_[channel].signal += signal * signal;
    energies_[channel].noise += noise * noise;
  }
  std::copy(result_.begin(), result_.end(), samples.begin());
}

void Compander::report() const {
  for (size_t channel = 0; channel < energies_.size(); ++channel) {
    const auto [signal, noise] = energies_[channel];
    std::printf("channel %zu: ", channel + 1);
    if (signal == 0)
      std::printf("silent\n");
    else if (noise == 0)
      std::printf("nothing is lost\n");
    else
      std::printf("signal-to-noise ratio %.2f dB\n", 10 * std::log10(signal / noise));
  }
}

struct Arguments {
  std::string input, output;
};

void compand(const Options& options, const Arguments& arguments, Law law) {
  Stopwatch whole;
  whole.start();
  const Library library(options.library);
  AudioReader input(arguments.input);
  Compander compander(library, law, input.format().channels);
  const auto count = [](std::span<const double> samples) { return clipped(samples, SampleType::k16s, OrpRoundNear); };
  const auto work = [&](std::span<double> samples) { compander.work(samples); };
  transfer(library, input, arguments.output,
           {SampleType::k16s, OrpRoundNear, count, work, "clipped", "", "companded", [&] { compander.report(); }},
           whole);
}

void addLaw(CLI::App& tool, const Options& options, Law law, const std::string& word, const std::string& name) {
  const auto arguments = std::make_shared<Arguments>();
  CLI::App* command = tool.add_subcommand(
      word, "Code a recording in 8-bit " + name + " as G.711 has it, decode it, and tell its signal-to-noise ratio");
  command->add_option("IN", arguments->input, "any recording that libsndfile reads; its samples are rounded to 16 bits")
      ->required();
  command->add_option("OUT.wav", arguments->output, "what is decoded, in 16-bit samples; an existing file is replaced")
      ->required();
  command->callback([&options, arguments, law] { compand(options, *arguments, law); });
}

}  // namespace

void addCompanding(CLI::App& tool, const Options& options) {
  addLaw(tool, options, Law::kA, "alaw", "A-law");
  addLaw(tool, options, Law::kMu, "mulaw", "mu-law");
}

}  // namespace wavtool
