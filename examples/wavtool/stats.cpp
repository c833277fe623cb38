// wavtool stats: what a recording's samples are like, channel by channel.
#include <CLI/App.hpp>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "audio_file.h"
#include "commands.h"
#include "converter.h"
#include "library.h"
#include "not_finite.h"
#include "stopwatch.h"

namespace wavtool {
namespace {

struct Calls {
  const Library& library;
  WAVTOOL_FUNCTION(orpsMinMaxIndx_64f);
  WAVTOOL_FUNCTION(orpsSum_64f);
  WAVTOOL_FUNCTION(orpsDotProd_64f);
  WAVTOOL_FUNCTION(orpsMaxIndx_64f);
  WAVTOOL_FUNCTION(orpsConvert_64f32f);
  WAVTOOL_FUNCTION(orpsZeroCrossing_32f);
  WAVTOOL_FUNCTION(orpsConvert_64f32s_Sfs);
  WAVTOOL_FUNCTION(orpsThreshold_GTAbs_32s_I);
  WAVTOOL_FUNCTION(orpsCountInRange_32s);
};

constexpr int kSignChange = 0;  // the kind of zero crossing

// The loudest second is looked for in steps of a hundredth or a little less that divide it, if there are any.
int stepsOfSecond(int rate) {
  for (int steps = 100; steps <= std::min(rate, 1000); ++steps)
    if (rate % steps == 0) return steps;
  return std::min(rate, 100);
}

// Levels of the histogram: above full scale, then steps of 6 dB (exactly: halves) down to -96, each with its upper
// bound. What is below them all is not split by sign: in 16-bit samples that is nothing but zeros.
constexpr int kLevels = 17;

class Channel {
 public:
  explicit Channel(int rate) : rate_(rate), steps_(stepsOfSecond(rate)) {}

  int framesOfStep() const { return rate_ / steps_; }

  // Whole steps, except at the end of the recording. Changes the samples that are not finite.
  void add(const Calls& calls, std::vector<double>& samples);

  void print(const Calls& calls) const;

 private:
  int64_t below() const;
  void printLoudestSecond(const Calls& calls) const;
  void printHistogram() const;

  const int rate_, steps_;
  int64_t count_ = 0, notFinite_ = 0, crossings_ = 0, peakAt_ = 0;
  double peak_ = 0, sum_ = 0, energy_ = 0;
  std::vector<double> energies_;  // of the steps
  std::array<int64_t, kLevels> negative_{}, positive_{};
  std::vector<float> signs_;
  std::vector<Orp32s> fixed_;
};

void Channel::add(const Calls& calls, std::vector<double>& samples) {
  notFinite_ += zeroNotFinite(samples);
  for (double& sample : samples)
    if (static_cast<float>(sample) == 0) sample = 0;  // -0 as well, which is no change of sign
  const int len = static_cast<int>(samples.size());

  double least, most, value;
  int leastAt, mostAt;
  calls.orpsMinMaxIndx_64f(samples.data(), len, &least, &leastAt, &most, &mostAt);
  const bool isLeast = -least > most || (-least == most && leastAt < mostAt);
  if (const double peak = isLeast ? -least : most; peak > peak_) {
    peak_ = peak;
    peakAt_ = count_ + (isLeast ? leastAt : mostAt);
  }

  calls.orpsSum_64f(samples.data(), len, &value);
  sum_ += value;
  for (int begin = 0; begin < len; begin += framesOfStep()) {
    const int size = std::min(framesOfStep(), len - begin);
    calls.orpsDotProd_64f(&samples[static_cast<size_t>(begin)], &samples[static_cast<size_t>(begin)], size, &value);
    energy_ += value;
    if (size == framesOfStep()) energies_.push_back(value);
  }

  // The last sample of the block before comes first.
  const float last = signs_.empty() ? static_cast<float>(samples[0]) : signs_.back();
  float crossings;
  signs_.resize(samples.size() + 1);
  signs_[0] = last;
  calls.orpsConvert_64f32f(samples.data(), &signs_[1], len);
  calls.orpsZeroCrossing_32f(signs_.data(), len + 1, &crossings, kSignChange);
  crossings_ += std::lround(crossings);

  constexpr int kFractionBits = 29;
  fixed_.resize(samples.size());
  calls.orpsConvert_64f32s_Sfs(samples.data(), fixed_.data(), len, OrpRoundNear, -kFractionBits);
  calls.orpsThreshold_GTAbs_32s_I(fixed_.data(), len, 2 << kFractionBits);
  for (int level = 0; level < kLevels; ++level) {
    const Orp32s upper = 1 << (kFractionBits + 1 - level), lower = upper / 2;
    int inside;
    calls.orpsCountInRange_32s(fixed_.data(), len, &inside, lower, upper + 1);
    positive_[static_cast<size_t>(level)] += inside;
    calls.orpsCountInRange_32s(fixed_.data(), len, &inside, -upper - 1, -lower);
    negative_[static_cast<size_t>(level)] += inside;
  }
  count_ += len;
}

double decibels(double amplitude) { return 20 * std::log10(amplitude); }

void Channel::print(const Calls& calls) const {
  const auto count = static_cast<double>(count_);
  if (notFinite_ > 0)
    std::printf("  not finite      %8lld samples, taken as zeros\n", static_cast<long long>(notFinite_));
  if (peak_ == 0) {
    std::printf("  silent\n");
    return;
  }
  const double rms = std::sqrt(energy_ / count);
  const double offset = std::round(1e6 * sum_ / count) / 1e4 + 0.0;  // without a sign if it is zero
  std::printf("  peak            %8.2f dBFS at %.6f s (sample %lld)\n", decibels(peak_),
              static_cast<double>(peakAt_) / rate_, static_cast<long long>(peakAt_));
  std::printf("  RMS             %8.2f dBFS\n", decibels(rms));
  std::printf("  DC offset       %8.4f %% of full scale\n", offset);
  std::printf("  crest factor    %8.2f dB\n", decibels(peak_ / rms));
  std::printf("  zero crossings  %8lld, %.1f per second\n", static_cast<long long>(crossings_),
              static_cast<double>(crossings_) * rate_ / count);
  printLoudestSecond(calls);
  printHistogram();
}

void Channel::printLoudestSecond(const Calls& calls) const {
  const auto steps = static_cast<size_t>(steps_);
  if (energies_.size() < steps) {
    std::printf("  loudest second         - (the recording is shorter)\n");
    return;
  }
  std::vector<double> seconds(energies_.size() - steps + 1);
  for (size_t begin = 0; begin < seconds.size(); ++begin) calls.orpsSum_64f(&energies_[begin], steps_, &seconds[begin]);
  double most;
  int at;
  calls.orpsMaxIndx_64f(seconds.data(), static_cast<int>(seconds.size()), &most, &at);
  const int frames = framesOfStep() * steps_;
  if (most > 0)
    std::printf("  loudest second  %8.2f dBFS RMS from %.3f s on\n", decibels(std::sqrt(most / frames)),
                static_cast<double>(at) * framesOfStep() / rate_);
}

int64_t Channel::below() const {
  int64_t below = count_;
  for (const auto& counts : {negative_, positive_})
    for (const int64_t count : counts) below -= count;
  return below;
}

constexpr int kBar = 23;

std::string bar(int64_t count, int64_t most) {
  const auto marks = static_cast<size_t>((kBar * count + most / 2) / most);
  return marks == 0 && count > 0 ? "." : std::string(marks, '#');
}

std::string percentage(int64_t count, int64_t all) {
  if (count == 0) return "";
  char text[16];
  const double percent = 100 * static_cast<double>(count) / static_cast<double>(all);
  std::snprintf(text, sizeof(text), percent < 0.05 ? "<0.1 %%" : "%.1f %%", percent);
  return text;
}

void Channel::printHistogram() const {
  const auto row = [this](int level) {
    return negative_[static_cast<size_t>(level)] + positive_[static_cast<size_t>(level)];
  };
  const int64_t most = std::max({*std::max_element(negative_.begin(), negative_.end()),
                                 *std::max_element(positive_.begin(), positive_.end()), int64_t{1}});
  int first = 0, last = kLevels - 1;
  while (first < last && row(first) == 0) ++first;
  while (first < last && row(last) == 0) --last;
  std::printf("  samples by level in dBFS, negative on the left, positive on the right\n");
  for (int level = first; level <= last; ++level) {
    const int64_t left = negative_[static_cast<size_t>(level)], right = positive_[static_cast<size_t>(level)];
    char label[32];
    std::snprintf(label, sizeof(label), level == 0 ? "above 0" : "%d to %d", -6 * level, -6 * level + 6);
    std::printf("  %-10s %8s %*s|%-*s%8s\n", label, percentage(left, count_).c_str(), kBar, bar(left, most).c_str(),
                kBar, bar(right, most).c_str(), percentage(right, count_).c_str());
  }
  if (below() > 0) std::printf("  %-10s %8s\n", "below -96", percentage(below(), count_).c_str());
}

void stats(const Options& options, const std::string& path) {
  Stopwatch whole, working;
  whole.start();
  const Library library(options.library);
  const Calls calls{library};
  AudioReader input(path);
  const AudioFormat format = input.format();
  const auto channels = static_cast<size_t>(format.channels);
  std::vector<Channel> results(channels, Channel(format.rate));

  constexpr size_t kBlockFrames = 4096;
  const auto step = static_cast<size_t>(results[0].framesOfStep());
  const size_t frames = std::min((kBlockFrames + step - 1) / step * step, static_cast<size_t>(input.frames()));
  Converter converter(library, frames * channels);
  std::vector<std::byte> read(frames * channels * static_cast<size_t>(bytesOf(input.readsAs())));
  std::vector<double> block(frames * channels), samples;
  while (const size_t count = input.read(read.data(), frames)) {
    working.start();
    converter.decode(input.readsAs(), read.data(), std::span(block).first(count * channels));
    for (size_t channel = 0; channel < channels; ++channel) {
      samples.resize(count);
      for (size_t n = 0; n < count; ++n) samples[n] = block[n * channels + channel];
      results[channel].add(calls, samples);
    }
    working.stop();
  }
  whole.stop();

  const double length = static_cast<double>(input.frames()) / format.rate;
  std::printf("%s\n%.6g s, %lld samples at %d Hz, %d channel(s), %s\n", path.c_str(), length,
              static_cast<long long>(input.frames()), format.rate, format.channels, input.nameOfSamples().c_str());
  for (size_t channel = 0; channel < channels; ++channel) {
    std::printf("\nchannel %zu\n", channel + 1);
    results[channel].print(calls);
  }
  std::printf("\nspeed: measured in %.3f ms, %.0f times real time; %.3f ms with reading\n", 1e3 * working.seconds(),
              length / working.seconds(), 1e3 * whole.seconds());
}

}  // namespace

void addStats(CLI::App& tool, const Options& options) {
  const auto path = std::make_shared<std::string>();
  CLI::App* command = tool.add_subcommand(
      "stats",
      "Measure a recording: peak, RMS, DC offset, zero crossings, loudest second and a histogram of its samples");
  command->add_option("IN", *path, "any recording that libsndfile reads")->required();
  command->callback([&options, path] { stats(options, *path); });
}

}  // namespace wavtool
