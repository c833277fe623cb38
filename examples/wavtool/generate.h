// Recordings of one channel that the library makes up: what tone and noise share.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "audio_file.h"
#include "library.h"
#include "stopwatch.h"

namespace CLI {
class App;
}

namespace wavtool {

// As on the command line.
struct SoundWords {
  std::string output, seconds = "1", rate = "48000", bits = "16";
};
void addSoundOptions(CLI::App& command, SoundWords& words);

struct SoundShape {
  int rate;
  int64_t frames;
  SampleType type;
};
SoundShape parseShape(const SoundWords& words);

// Writes what `fill` puts into one block after another, as doubles of full scale 1, and prints what has been done.
// `what`: "sine of 440 Hz". `whole` has been running since the command began.
void generate(const Library& library, const std::string& output, const SoundShape& shape, const std::string& what,
              const std::function<void(std::span<double>)>& fill, Stopwatch whole);

}  // namespace wavtool
