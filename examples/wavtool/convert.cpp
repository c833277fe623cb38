// wavtool convert: a recording in samples of another type.
#include <CLI/App.hpp>
#include <algorithm>
#include <cmath>
#include <memory>

#include "audio_file.h"
#include "commands.h"
#include "library.h"
#include "transfer.h"

namespace wavtool {
namespace {

SampleType parseType(const std::string& word) {
  if (word == "8") return SampleType::k8u;
  if (word == "16") return SampleType::k16s;
  if (word == "24") return SampleType::k24s;
  if (word == "float") return SampleType::k32f;
  throw Failure("'" + word + "' is not a sample format: give --bits 8, 16, 24 or float");
}

int parseRounding(const std::string& word) {
  if (word == "zero") return OrpRoundZero;
  if (word == "nearest") return OrpRoundNear;
  if (word == "away") return OrpRoundAway;
  throw Failure("'" + word +
                "' is not a rounding: give --round zero, nearest (halves to even) or away (halves away from zero)");
}

double rounded(double value, int rounding) {
  if (rounding == OrpRoundZero) return std::trunc(value);
  return rounding == OrpRoundNear ? std::nearbyint(value) : std::round(value);
}

// How many samples are beyond what the type holds, after rounding. Of floats these are infinities.
int64_t clipped(std::span<const double> samples, SampleType type, int rounding) {
  const double scale = isInteger(type) ? std::ldexp(1.0, 8 * bytesOf(type) - 1) : 1;
  return std::count_if(samples.begin(), samples.end(), [=](double sample) {
    if (!isInteger(type)) return std::isfinite(sample) && std::isinf(static_cast<float>(sample));
    const double value = rounded(sample * scale, rounding);
    return value < -scale || value > scale - 1;
  });
}

struct Arguments {
  std::string input, output, bits, rounding = "nearest";
};

void convert(const Options& options, const Arguments& arguments) {
  Stopwatch whole;
  whole.start();
  const SampleType type = parseType(arguments.bits);
  const int rounding = parseRounding(arguments.rounding);
  const Library library(options.library);
  AudioReader input(arguments.input);
  const auto count = [=](std::span<const double> samples) { return clipped(samples, type, rounding); };
  transfer(library, input, arguments.output, {type, rounding, count, {}, "clipped", "", "converted"}, whole);
}

}  // namespace

void addConvert(CLI::App& tool, const Options& options) {
  const auto arguments = std::make_shared<Arguments>();
  CLI::App* command = tool.add_subcommand("convert", "Write a recording as a WAV file with samples of another format");
  command->add_option("IN", arguments->input, "any recording that libsndfile reads")->required();
  command->add_option("OUT.wav", arguments->output, "the same in the new format; an existing file is replaced")
      ->required();
  command->add_option("--bits", arguments->bits, "the new format: 8, 16, 24 or float (32 bits)")->required();
  command->add_option("--round", arguments->rounding,
                      "to integers: zero (cut off), nearest (halves to even; the default) or away (halves away from "
                      "zero)");
  command->callback([&options, arguments] { convert(options, *arguments); });
}

}  // namespace wavtool
