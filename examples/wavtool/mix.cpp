// wavtool mix: several recordings, each with its gain, into one.
//
// The sum is kept in 32 bits with 8 bits of fraction, where no clipping can happen on the way; each sample is rounded
// to 16 bits once, and saturates there if the mix is too loud.
#include <CLI/App.hpp>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "audio_file.h"
#include "commands.h"
#include "gain.h"
#include "levels.h"
#include "library.h"
#include "stopwatch.h"

namespace wavtool {
namespace {

constexpr int kFractionBits = 8;
constexpr double kMostGain = 255;  // of all inputs together: 255 * 2^15 * 2^8 stays below 2^31
constexpr size_t kBlockFrames = 4096;

struct Calls {
  const Library& library;
  WAVTOOL_FUNCTION(orpsSet_16s);
  WAVTOOL_FUNCTION(orpsZero_32s);
  WAVTOOL_FUNCTION(orpsMul_16s32s_Sfs);
  WAVTOOL_FUNCTION(orpsAdd_32s_ISfs);
  WAVTOOL_FUNCTION(orpsConvert_32s16s_Sfs);
};

struct Input {
  AudioReader audio;
  std::string gainWord;
  Gain gain;
  Level level;
};

// The library's part: blocks of up to `capacity` samples.
class Mixer {
 public:
  Mixer(const Library& library, size_t capacity)
      : calls_{library}, factors_(capacity), product_(capacity), sum_(capacity), mixed_(capacity) {}

  void begin() { calls_.orpsZero_32s(sum_.data(), static_cast<int>(sum_.size())); }

  void add(std::span<const int16_t> samples, Gain gain) {
    const int len = static_cast<int>(samples.size());
    calls_.orpsSet_16s(gain.factor, factors_.data(), len);
    calls_.orpsMul_16s32s_Sfs(samples.data(), factors_.data(), product_.data(), len, gain.scale - kFractionBits);
    calls_.orpsAdd_32s_ISfs(product_.data(), sum_.data(), len, 0);
  }

  // The first `count` samples of the sum in 16 bits.
  std::span<const int16_t> end(size_t count) {
    calls_.orpsConvert_32s16s_Sfs(sum_.data(), mixed_.data(), static_cast<int>(count), kFractionBits);
    return std::span(mixed_).first(count);
  }

  // How many of them are beyond what 16 bits hold, after rounding to nearest even.
  int64_t clipped(size_t count) const {
    constexpr int32_t kHalf = 1 << (kFractionBits - 1);
    constexpr int32_t kMost = (INT16_MAX << kFractionBits) + kHalf;       // 32767.5 rounds up
    constexpr int32_t kLeast = INT16_MIN * (1 << kFractionBits) - kHalf;  // -32768.5 rounds to -32768
    return std::count_if(sum_.begin(), sum_.begin() + static_cast<std::ptrdiff_t>(count),
                         [](int32_t sample) { return sample >= kMost || sample < kLeast; });
  }

 private:
  Calls calls_;
  std::vector<int16_t> factors_;
  std::vector<int32_t> product_, sum_;
  std::vector<int16_t> mixed_;
};

AudioReader open16BitWav(const std::string& path) {
  AudioReader audio(path);
  if (!audio.isWav()) throw Failure(path + " is not a WAV file");
  if (audio.readsAs() != SampleType::k16s)
    throw Failure(path + " does not hold 16-bit PCM samples: its samples are " + audio.nameOfSamples());
  return audio;
}

std::vector<Input> openInputs(const std::vector<std::string>& words) {
  if (words.size() % 2 != 0) throw Failure("every input needs a gain: mix OUT.wav IN1.wav GAIN1 IN2.wav GAIN2 ...");
  std::vector<Input> inputs;
  double loudest = 0;
  for (size_t i = 0; i < words.size(); i += 2) {
    const double gain = parseGain(words[i + 1]);
    loudest += std::abs(gain);
    if (!(loudest <= kMostGain))
      throw Failure("the gains are too large: together they may make a factor of 255 (48 dB)");
    inputs.push_back({open16BitWav(words[i]), words[i + 1], fixedPoint(gain), {}});
    const AudioReader &first = inputs.front().audio, &audio = inputs.back().audio;
    if (audio.format() != first.format())
      throw Failure(audio.path() + " has " + std::to_string(audio.format().channels) + " channel(s) at " +
                    std::to_string(audio.format().rate) + " Hz, but " + first.path() + " has " +
                    std::to_string(first.format().channels) + " at " + std::to_string(first.format().rate) + " Hz");
  }
  return inputs;
}

void mix(const Options& options, const std::string& output, const std::vector<std::string>& words) {
  Stopwatch whole, mixing;
  whole.start();
  const Library library(options.library);
  std::vector<Input> inputs = openInputs(words);
  const AudioFormat format = inputs.front().audio.format();
  AudioWriter writer(output, format, SampleType::k16s);

  const size_t capacity = kBlockFrames * static_cast<size_t>(format.channels);
  Mixer mixer(library, capacity);
  std::vector<std::vector<int16_t>> blocks(inputs.size(), std::vector<int16_t>(capacity));
  std::vector<std::span<const int16_t>> samples(inputs.size());
  Level level;
  int64_t total = 0, clipped = 0;
  for (;;) {
    size_t count = 0;
    for (size_t i = 0; i < inputs.size(); ++i) {
      const size_t frames = inputs[i].audio.read(blocks[i].data(), kBlockFrames);
      samples[i] = std::span(blocks[i]).first(frames * static_cast<size_t>(format.channels));
      inputs[i].level.add(samples[i]);
      count = std::max(count, samples[i].size());
    }
    if (count == 0) break;
    mixing.start();
    mixer.begin();
    for (size_t i = 0; i < inputs.size(); ++i)
      if (!samples[i].empty()) mixer.add(samples[i], inputs[i].gain);
    const auto mixed = mixer.end(count);
    mixing.stop();
    clipped += mixer.clipped(count);
    level.add(mixed);
    writer.write(mixed.data(), count);
    total += static_cast<int64_t>(count);
  }
  writer.finish();
  whole.stop();

  const double rate = format.rate, channels = format.channels;
  for (const Input& input : inputs)
    std::printf("%s, gain %s: %.2f s, %s\n", input.audio.path().c_str(), input.gainWord.c_str(),
                static_cast<double>(input.audio.frames()) / rate, input.level.text().c_str());
  const double length = static_cast<double>(total) / (rate * channels);
  std::printf("%s: %.2f s, %d channel(s), %d Hz, %s\n", output.c_str(), length, format.channels, format.rate,
              level.text().c_str());
  std::printf("clipped: %lld of %lld samples\n", static_cast<long long>(clipped), static_cast<long long>(total));
  printSpeed("mixed", length, mixing, whole);
}

}  // namespace

void addMix(CLI::App& tool, const Options& options) {
  struct Arguments {
    std::string output;
    std::vector<std::string> inputs;
  };
  const auto arguments = std::make_shared<Arguments>();
  CLI::App* command = tool.add_subcommand("mix", "Mix 16-bit WAV files of one sample rate and channel count");
  command->add_option("OUT.wav", arguments->output, "the mix; an existing file is replaced")->required();
  command
      ->add_option("IN.wav GAIN", arguments->inputs, "each recording and its gain: a factor (0.5) or decibels (-6dB)")
      ->required();
  command->callback([&options, arguments] { mix(options, arguments->output, arguments->inputs); });
}

}  // namespace wavtool
