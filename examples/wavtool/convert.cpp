// wavtool convert: a recording in samples of another type.
#include <CLI/App.hpp>
#include <memory>

#include "audio_file.h"
#include "commands.h"
#include "converter.h"
#include "library.h"
#include "transfer.h"

namespace wavtool {
namespace {

int parseRounding(const std::string& word) {
  if (word == "zero") return OrpRoundZero;
  if (word == "nearest") return OrpRoundNear;
  if (word == "away") return OrpRoundAway;
  throw Failure("'" + word +
                "' is not a rounding: give --round zero, nearest (halves to even) or away (halves away from zero)");
}

struct Arguments {
  std::string input, output, bits, rounding = "nearest";
};

void convert(const Options& options, const Arguments& arguments) {
  Stopwatch whole;
  whole.start();
  const SampleType type = parseSampleType(arguments.bits);
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
