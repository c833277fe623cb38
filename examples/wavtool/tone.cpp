// wavtool tone: a sine or a triangle.
#include <CLI/App.hpp>
#include <cmath>
#include <cstdio>
#include <memory>
#include <numbers>

#include "commands.h"
#include "generate.h"
#include "library.h"
#include "words.h"

namespace wavtool {
namespace {

constexpr int kAccurate = 0;  // a hint to the library

struct Calls {
  const Library& library;
  WAVTOOL_FUNCTION(orpsTone_Direct_64f);
  WAVTOOL_FUNCTION(orpsTriangle_Direct_64f);
};

struct Arguments {
  SoundWords sound;
  std::string frequency, level = "-6", asymmetry = "0";
  bool triangle = false;
};

void tone(const Options& options, const Arguments& arguments) {
  Stopwatch whole;
  whole.start();
  const SoundShape shape = parseShape(arguments.sound);
  const double frequency = parseMeasure(arguments.frequency, "Hz", "a frequency: give Hz such as 440");
  const double magnitude = parseLevel(arguments.level);
  if (frequency <= 0 || frequency >= shape.rate / 2.0)
    throw Failure("'" + arguments.frequency + "' is not a frequency above 0 and below half the sample rate, " +
                  std::to_string(shape.rate) + " Hz");
  const double relative = frequency / shape.rate;
  const double asymmetry =
      std::numbers::pi * parseMeasure(arguments.asymmetry, "", "an asymmetry: give a number such as 0.5");
  if (asymmetry < -std::numbers::pi || asymmetry >= std::numbers::pi)
    throw Failure("'" + arguments.asymmetry + "' is not an asymmetry: it is at least -1 and below 1");
  const Library library(options.library);
  const Calls calls{library};

  // Halfway up: the recording begins without a click.
  double phase = std::fmod((3 * std::numbers::pi + asymmetry) / 2, 2 * std::numbers::pi);
  const auto fill = [&](std::span<double> samples) {
    const int len = static_cast<int>(samples.size());
    if (arguments.triangle)
      calls.orpsTriangle_Direct_64f(samples.data(), len, magnitude, relative, asymmetry, &phase);
    else
      calls.orpsTone_Direct_64f(samples.data(), len, magnitude, relative, &phase, kAccurate);
  };
  char what[64];
  std::snprintf(what, sizeof(what), "%s of %.6g Hz", arguments.triangle ? "triangle" : "sine", frequency);
  generate(library, arguments.sound.output, shape, what, fill, whole);
}

}  // namespace

void addTone(CLI::App& tool, const Options& options) {
  const auto arguments = std::make_shared<Arguments>();
  CLI::App* command = tool.add_subcommand("tone", "Write a recording of a sine or a triangle");
  addSoundOptions(*command, arguments->sound);
  command->add_option("--frequency", arguments->frequency, "in Hz, below half the sample rate")->required();
  command->add_option("--level", arguments->level, "its peaks in dBFS; -6 if not given, 0 is full scale");
  CLI::Option* triangle = command->add_flag("--triangle", arguments->triangle, "a triangle instead of a sine");
  command
      ->add_option("--asymmetry", arguments->asymmetry,
                   "of the triangle: 0 if it rises for as long as it falls; -1 if it only rises, towards 1 if it "
                   "almost only falls")
      ->needs(triangle);
  command->callback([&options, arguments] { tone(options, *arguments); });
}

}  // namespace wavtool
