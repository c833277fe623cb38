// wavtool limit: a recording whose samples stay within a level.
#include <CLI/App.hpp>
#include <algorithm>
#include <cmath>
#include <memory>

#include "audio_file.h"
#include "commands.h"
#include "library.h"
#include "transfer.h"
#include "words.h"

namespace wavtool {
namespace {

struct Calls {
  const Library& library;
  WAVTOOL_FUNCTION(orpsThreshold_GTAbs_64f_I);
};

// The greatest amplitude up to `level` that a sample of the type can have: nothing is rounded up beyond the level.
double amplitudeWithin(double level, SampleType type) {
  if (type == SampleType::k64f) return level;
  if (isInteger(type)) {
    const double scale = std::ldexp(1.0, 8 * bytesOf(type) - 1);
    return std::floor(level * scale) / scale;
  }
  const auto nearest = static_cast<float>(level);
  return nearest > level ? std::nextafter(nearest, 0.0F) : nearest;
}

struct Arguments {
  std::string input, output, level;
};

void limit(const Options& options, const Arguments& arguments) {
  Stopwatch whole;
  whole.start();
  const double level = parseLevel(arguments.level);
  const Library library(options.library);
  const Calls calls{library};
  AudioReader input(arguments.input);
  const double most = amplitudeWithin(level, input.type());
  char remark[64];
  std::snprintf(remark, sizeof(remark), ", to %.1f dBFS", 20 * std::log10(level));
  const auto beyond = [=](std::span<const double> samples) -> int64_t {
    return std::count_if(samples.begin(), samples.end(), [=](double sample) { return std::abs(sample) > most; });
  };
  const auto work = [&](std::span<double> samples) {
    calls.orpsThreshold_GTAbs_64f_I(samples.data(), static_cast<int>(samples.size()), most);
  };
  transfer(library, input, arguments.output, {input.type(), OrpRoundNear, beyond, work, "limited", remark, "limited"},
           whole);
}

}  // namespace

void addLimit(CLI::App& tool, const Options& options) {
  const auto arguments = std::make_shared<Arguments>();
  CLI::App* command =
      tool.add_subcommand("limit", "Hold a recording's samples within a level: what is louder is cut off there");
  command->add_option("IN", arguments->input, "any recording that libsndfile reads")->required();
  command
      ->add_option("OUT.wav", arguments->output, "the result, in the same sample format; an existing file is replaced")
      ->required();
  command->add_option("--level", arguments->level, "the level in dBFS, such as -6; 0 is full scale")->required();
  command->callback([&options, arguments] { limit(options, *arguments); });
}

}  // namespace wavtool
