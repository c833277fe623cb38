// wavtool noise: white noise, Gaussian or uniform.
#include <CLI/App.hpp>
#include <cstdint>
#include <memory>
#include <numbers>
#include <vector>

#include "commands.h"
#include "generate.h"
#include "library.h"
#include "words.h"

namespace wavtool {
namespace {

// A generator of the library's, freed at the end.
class Noise {
 public:
  // `rms` of the samples.
  Noise(const Library& library, bool uniform, double rms, uint32_t seed) : calls_{library} {
    if (uniform) {
      const auto most = static_cast<float>(rms * std::numbers::sqrt3);
      calls_.orpsRandUniformInitAlloc_32f(&uniform_, -most, most, seed);
    } else {
      calls_.orpsRandGaussInitAlloc_32f(&gauss_, 0, static_cast<float>(rms), seed);
    }
    if (!uniform_ && !gauss_) throw Failure("no memory for the generator");
  }

  ~Noise() {
    if (uniform_) calls_.orpsRandUniformFree_32f(uniform_);
    if (gauss_) calls_.orpsRandGaussFree_32f(gauss_);
  }
  Noise(const Noise&) = delete;
  Noise& operator=(const Noise&) = delete;

  void fill(std::span<double> samples) {
    const int len = static_cast<int>(samples.size());
    singles_.resize(samples.size());
    if (uniform_)
      calls_.orpsRandUniform_32f(singles_.data(), len, uniform_);
    else
      calls_.orpsRandGauss_32f(singles_.data(), len, gauss_);
    calls_.orpsConvert_32f64f(singles_.data(), samples.data(), len);
  }

 private:
  struct Calls {
    const Library& library;
    WAVTOOL_FUNCTION(orpsRandUniformInitAlloc_32f);
    WAVTOOL_FUNCTION(orpsRandUniform_32f);
    WAVTOOL_FUNCTION(orpsRandUniformFree_32f);
    WAVTOOL_FUNCTION(orpsRandGaussInitAlloc_32f);
    WAVTOOL_FUNCTION(orpsRandGauss_32f);
    WAVTOOL_FUNCTION(orpsRandGaussFree_32f);
    WAVTOOL_FUNCTION(orpsConvert_32f64f);
  } calls_;
  OrpRandUniformState_32f* uniform_ = nullptr;
  OrpRandGaussState_32f* gauss_ = nullptr;
  std::vector<float> singles_;
};

struct Arguments {
  SoundWords sound;
  std::string level = "-20", seed = "1";
  bool uniform = false;
};

void noise(const Options& options, const Arguments& arguments) {
  Stopwatch whole;
  whole.start();
  const SoundShape shape = parseShape(arguments.sound);
  const double rms = parseLevel(arguments.level);
  const auto seed = static_cast<uint32_t>(
      parseWhole(arguments.seed, "", 0, UINT32_MAX, "a seed: give a whole number from 0 to 4294967295"));
  const Library library(options.library);
  Noise source(library, arguments.uniform, rms, seed);
  generate(
      library, arguments.sound.output, shape,
      (arguments.uniform ? "uniform noise of seed " : "Gaussian noise of seed ") + std::to_string(seed),
      [&](std::span<double> samples) { source.fill(samples); }, whole);
}

}  // namespace

void addNoise(CLI::App& tool, const Options& options) {
  const auto arguments = std::make_shared<Arguments>();
  CLI::App* command = tool.add_subcommand("noise", "Write a recording of white noise");
  addSoundOptions(*command, arguments->sound);
  command->add_option("--level", arguments->level, "its RMS level in dBFS; -20 if not given");
  command->add_option("--seed", arguments->seed, "the same seed gives the same noise; 1 if not given");
  command->add_flag("--uniform", arguments->uniform, "all samples of a range alike instead of Gaussian");
  command->callback([&options, arguments] { noise(options, *arguments); });
}

}  // namespace wavtool
