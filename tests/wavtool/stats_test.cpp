// wavtool stats: the numbers it prints, against plain loops over the samples.
#include <gtest/gtest.h>
#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <sstream>

#include "wavtool/tool.h"

namespace {

Outcome stats(const std::string& path, const std::string& before = "") {
  Outcome outcome = wavtool({"stats", path}, before);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out.find("nan"), std::string::npos) << outcome.out;
  EXPECT_EQ(outcome.out.find("inf"), std::string::npos) << outcome.out;
  std::istringstream lines(outcome.out.substr(outcome.out.find('\n') + 1));  // the path may be longer
  for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 80u) << line;
  return outcome;
}

std::string text(const char* format, auto... values) {
  char text[128];
  std::snprintf(text, sizeof(text), format, values...);
  return text;
}

double decibels(double amplitude) { return 20 * std::log10(amplitude); }

// What stands below "channel <n>", for samples of full scale 1.
std::string channelOf(const Outcome& outcome, size_t channel) {
  const size_t begin = outcome.out.find(text("\nchannel %zu\n", channel + 1));
  EXPECT_NE(begin, std::string::npos) << outcome.out;
  return outcome.out.substr(begin, outcome.out.find("\n\n", begin + 1) - begin);
}

void expectIn(const std::string& channel, const std::string& line) {
  EXPECT_NE(channel.find(line), std::string::npos) << "expected: " << line << "\n" << channel;
}

void expectNumbers(const std::string& channel, const std::vector<double>& x, int rate) {
  size_t peakAt = 0, loudestAt = 0, crossings = 0;
  double sum = 0, energy = 0, loudest = 0;
  const size_t second = static_cast<size_t>(rate);
  for (size_t n = 0; n < x.size(); ++n) {
    if (std::abs(x[n]) > std::abs(x[peakAt])) peakAt = n;
    if (n > 0) crossings += (x[n] < 0) != (x[n - 1] < 0);
    sum += x[n];
    energy += x[n] * x[n];
  }
  for (size_t begin = 0; begin + second <= x.size(); begin += second / 100) {
    double inside = 0;
    for (size_t n = begin; n < begin + second; ++n) inside += x[n] * x[n];
    if (inside > loudest) loudestAt = begin, loudest = inside;
  }
  const auto count = static_cast<double>(x.size());
  const double peak = std::abs(x[peakAt]), rms = std::sqrt(energy / count);
  expectIn(channel, text("  peak            %8.2f dBFS at %.6f s (sample %zu)\n", decibels(peak),
                         static_cast<double>(peakAt) / rate, peakAt));
  expectIn(channel, text("  RMS             %8.2f dBFS\n", decibels(rms)));
  expectIn(channel, text("  DC offset       %8.4f %% of full scale\n", 100 * sum / count));
  expectIn(channel, text("  crest factor    %8.2f dB\n", decibels(peak / rms)));
  expectIn(channel,
           text("  zero crossings  %8zu, %.1f per second\n", crossings, static_cast<double>(crossings) * rate / count));
  if (x.size() < second) {
    expectIn(channel, "  loudest second         - (the recording is shorter)\n");
  } else {
    expectIn(channel, text("  loudest second  %8.2f dBFS RMS from %.3f s on\n", decibels(std::sqrt(loudest / rate)),
                           static_cast<double>(loudestAt) / rate));
  }
  // The shares of each level, in its row.
  for (int level = 0; level < 17; ++level) {
    const double upper = level == 0 ? INFINITY : std::ldexp(1, 1 - level), lower = std::ldexp(1, -level);
    for (const int sign : {-1, 1}) {
      const auto inside =
          std::count_if(x.begin(), x.end(), [&](double v) { return sign * v > lower && sign * v <= upper; });
      const double percent = 100 * static_cast<double>(inside) / count;
      const std::string label = level == 0 ? "\n  above 0 " : text("\n  %d to %d ", -6 * level, 6 - 6 * level);
      const size_t begin = channel.find(label), bar = channel.find('|', begin);
      if (inside == 0) continue;
      ASSERT_NE(begin, std::string::npos) << label << channel;
      const std::string half =
          sign < 0 ? channel.substr(begin, bar - begin) : channel.substr(bar, channel.find('\n', bar) - bar);
      expectIn(half, percent < 0.05 ? "<0.1 %" : text(" %.1f %%", percent));
      expectIn(half, sign < 0 ? (half.back() == '#' ? "#" : ".") : (half[1] == '#' ? "#" : "."));
    }
  }
}

// Bursts of noise on an offset, louder towards the end of each channel's own second.
std::vector<int16_t> bursts(size_t frames, size_t channels) {
  const std::string random = randomBytes(2 * frames * channels, 3);
  std::vector<int16_t> samples(frames * channels);
  std::copy(random.begin(), random.end(), reinterpret_cast<char*>(samples.data()));
  for (size_t n = 0; n < samples.size(); ++n) {
    const size_t frame = n / channels, burst = 9000 * (1 + n % channels);
    samples[n] = static_cast<int16_t>(samples[n] / (frame > burst && frame < burst + 8000 ? 2 : 20) + 40);
  }
  return samples;
}

TEST(Stats, MeasuresEveryChannel) {
  const struct {
    int rate;
    size_t channels, frames;
  } cases[] = {{8000, 1, 50'007}, {44100, 2, 50'007}, {48000, 3, 60'000}, {11025, 1, 11'024}, {44100, 2, 10}};
  const Folder folder;
  for (const auto& [rate, channels, frames] : cases) {
    SCOPED_TRACE(text("%d Hz, %zu channels, %zu frames", rate, channels, frames));
    const auto samples = bursts(frames, channels);
    save(folder / "in.wav", {rate, static_cast<int>(channels), samples});
    for (const char* width : kWidths) {
      const Outcome outcome = stats(folder / "in.wav", width);
      for (size_t channel = 0; channel < channels; ++channel) {
        std::vector<double> x;
        for (size_t n = channel; n < samples.size(); n += channels) x.push_back(samples[n] / 32768.0);
        expectNumbers(channelOf(outcome, channel), x, rate);
      }
    }
  }
}

TEST(Stats, MeasuresRealRecordings) {
  if (voices().empty()) GTEST_SKIP() << "no recordings are installed (alsa-utils)";
  for (const std::string& voice : voices()) {
    std::vector<double> x;
    for (const int16_t sample : load(voice).samples) x.push_back(sample / 32768.0);
    expectNumbers(channelOf(stats(voice), 0), x, 48000);
  }
}

// What every format can hold gives the same numbers in each.
TEST(Stats, ReadsEveryFormat) {
  const Folder folder;
  std::vector<int32_t> samples;
  for (const char byte : randomBytes(60'000, 5)) samples.push_back(byte * (1 << 24));
  std::vector<double> x;
  for (const int32_t sample : samples) x.push_back(sample * 0x1p-31);
  for (const int format :
       {SF_FORMAT_WAV | SF_FORMAT_PCM_U8, SF_FORMAT_WAV | SF_FORMAT_PCM_16, SF_FORMAT_WAV | SF_FORMAT_PCM_24,
        SF_FORMAT_WAV | SF_FORMAT_PCM_32, SF_FORMAT_WAV | SF_FORMAT_FLOAT, SF_FORMAT_WAV | SF_FORMAT_DOUBLE,
        SF_FORMAT_FLAC | SF_FORMAT_PCM_24}) {
    SCOPED_TRACE(format);
    saveSamples(folder / "in", format, 1, samples);
    expectNumbers(channelOf(stats(folder / "in"), 0), x, 48000);
  }
}

TEST(Stats, SaysWhatIsSilentOrNoNumber) {
  const Folder folder;
  save(folder / "in.wav", {48000, 2, {0, 5, 0, 6, 0, -7}});
  const Outcome outcome = stats(folder / "in.wav");
  EXPECT_EQ(channelOf(outcome, 0), "\nchannel 1\n  silent");
  expectIn(channelOf(outcome, 1), "zero crossings         1, 16000.0 per second\n");

  constexpr int kFloat = SF_FORMAT_WAV | SF_FORMAT_FLOAT, kDouble = SF_FORMAT_WAV | SF_FORMAT_DOUBLE;
  saveSound(folder / "in.wav", {kFloat, 8000, 1, bytesOf<float>({NAN, 4, INFINITY, -0.0F, 0, -0.0F, 1e-45F})});
  const std::string some = channelOf(stats(folder / "in.wav"), 0);
  expectIn(some, "  not finite             2 samples, taken as zeros\n");
  expectIn(some, "  peak               12.04 dBFS at 0.000125 s (sample 1)\n");
  expectIn(some, "  zero crossings         0, ");  // -0 is no change of sign
  expectIn(some, "\n  above 0 ");
  saveSound(folder / "in.wav", {kDouble, 8000, 1, bytesOf<double>({1e300, -1e-300, 0, -NAN})});
  expectIn(channelOf(stats(folder / "in.wav"), 0), "  not finite             2 samples, taken as zeros\n  silent");
}

TEST(Stats, RefusesInOneLine) {
  const Folder folder;
  save(folder / "empty.wav", {48000, 1, {}});
  expectRefusal(wavtool({"stats", folder / "empty.wav"}), "holds no samples");
  expectRefusal(wavtool({"stats", folder / "absent.wav"}), "No such file");
  expectRefusal(wavtool({"stats"}), "IN is required");
}

}  // namespace
