// One recording into another: what convert, limit, alaw and mulaw share.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "audio_file.h"
#include "library.h"
#include "stopwatch.h"

namespace wavtool {

struct Transfer {
  SampleType type;  // of the samples written
  int rounding;     // to integers
  // How many samples of a block, as they come from the file, are to be told of.
  std::function<int64_t(std::span<const double>)> count;
  // What the library does to a block in between, if anything.
  std::function<void(std::span<double>)> work;
  // In the text: "clipped: 2 of 5 samples" and a remark on it, "converted in ...".
  std::string counted, remark, done;
  // Prints further results, if there are any.
  std::function<void()> report = {};
};

// Reads `input`, works on its samples as doubles of full scale 1, writes `output`, and prints what has been done.
// `whole` has been running since the command began.
void transfer(const Library& library, AudioReader& input, const std::string& output, const Transfer& job,
              Stopwatch whole);

}  // namespace wavtool
