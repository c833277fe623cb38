#include "generate.h"

#include <CLI/App.hpp>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <vector>

#include "converter.h"
#include "levels.h"
#include "words.h"

namespace wavtool {

void addSoundOptions(CLI::App& command, SoundWords& words) {
  command.add_option("OUT.wav", words.output, "the recording, of one channel; an existing file is replaced")
      ->required();
  command.add_option("--seconds", words.seconds, "how long it is; 1 if not given");
  command.add_option("--rate", words.rate, "samples per second; 48000 if not given");
  command.add_option("--bits", words.bits, "the sample format: 8, 16 (the default), 24 or float (32 bits)");
}

SoundShape parseShape(const SoundWords& words) {
  constexpr double kMostBytes = 4e9;  // in a WAV file: its sizes have 32 bits
  const SampleType type = parseSampleType(words.bits);
  const auto rate =
      static_cast<int>(parseWhole(words.rate, "Hz", 1, 10'000'000, "a sample rate: give Hz such as 44100"));
  const double seconds = parseMeasure(words.seconds, "s", "a length: give seconds such as 2.5");
  const double frames = std::round(seconds * rate);
  if (frames < 1) throw Failure("'" + words.seconds + "' is too short: there would be no samples");
  if (frames * bytesOf(type) > kMostBytes) throw Failure("'" + words.seconds + "' is longer than a WAV file can be");
  return {rate, static_cast<int64_t>(frames), type};
}

void generate(const Library& library, const std::string& output, const SoundShape& shape, const std::string& what,
              const std::function<void(std::span<double>)>& fill, Stopwatch whole) {
  constexpr int64_t kBlock = 4096;
  const auto capacity = static_cast<size_t>(std::min(kBlock, shape.frames));
  Converter converter(library, capacity);
  AudioWriter writer(output, {shape.rate, 1}, shape.type);
  std::vector<double> block(capacity);
  std::vector<std::byte> written(capacity * static_cast<size_t>(bytesOf(shape.type)));
  Level level;
  int64_t cut = 0;
  Stopwatch working;
  for (int64_t done = 0; done < shape.frames; done += kBlock) {
    const auto samples = std::span(block).first(static_cast<size_t>(std::min(kBlock, shape.frames - done)));
    working.start();
    fill(samples);
    converter.encode(samples, shape.type, OrpRoundNear, written.data());
    working.stop();
    writer.write(written.data(), samples.size());
    cut += clipped(samples, shape.type, OrpRoundNear);
    converter.decode(shape.type, written.data(), samples);
    level.add(samples);
  }
  writer.finish();
  whole.stop();

  const double length = static_cast<double>(shape.frames) / shape.rate;
  std::printf("%s: %s, %.2f s, 1 channel(s), %d Hz, %s, %s\n", output.c_str(), what.c_str(), length, shape.rate,
              nameOf(shape.type).c_str(), level.text().c_str());
  std::printf("clipped: %lld of %lld samples\n", static_cast<long long>(cut), static_cast<long long>(shape.frames));
  printSpeed("generated", length, working, whole, "measuring and writing");
}

}  // namespace wavtool
