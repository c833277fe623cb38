// wavtool tone and noise: the samples they write.
#include <gtest/gtest.h>
#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "wavtool/tool.h"

namespace {

Outcome generate(const Folder& folder, const std::string& command, const Words& options,
                 const std::string& before = "") {
  Words words = {command, folder / "out.wav"};
  words.insert(words.end(), options.begin(), options.end());
  Outcome outcome = wavtool(words, before);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  return outcome;
}

std::vector<double> written(const Folder& folder) {
  std::vector<double> samples;
  for (const int32_t sample : loadSamples(folder / "out.wav")) samples.push_back(sample * 0x1p-31);
  return samples;
}

double sine(double cycles, double) { return std::sin(2 * std::numbers::pi * cycles); }

// From halfway up; it rises for this part of its period.
double triangle(double cycles, double rise) {
  const double place = cycles + rise / 2 - std::floor(cycles + rise / 2);
  return place < rise ? 2 * place / rise - 1 : 1 - 2 * (place - rise) / (1 - rise);
}

TEST(Tone, HasTheRightSamplesOverAllBlocks) {
  const Folder folder;
  const struct {
    int rate;
    double frequency, seconds, level, rise;
    Words shape;
    double (*wave)(double cycles, double rise);
  } cases[] = {{48000, 440, 1, -6, 0, {}, sine},
               {8000, 3999.5, 2.6, -0.1, 0, {}, sine},
               {44100, 0.25, 0.51, -40, 0, {}, sine},
               {1, 0.3, 3, -6, 0, {}, sine},
               {48000, 440.1, 1, -6, 0.5, {"--triangle"}, triangle},
               {48000, 1234.5, 1, -1, 0.2, {"--triangle", "--asymmetry", "0.6"}, triangle},
               {48000, 440.1, 1, -6, 1, {"--triangle", "--asymmetry", "-1"}, triangle}};
  for (const auto& [rate, frequency, seconds, level, rise, shape, wave] : cases) {
    Words options = {"--frequency", std::to_string(frequency), "--seconds", std::to_string(seconds),
                     "--rate",      std::to_string(rate),      "--level",   std::to_string(level) + " dBFS"};
    options.insert(options.end(), shape.begin(), shape.end());
    for (const char* width : kWidths) {
      SCOPED_TRACE(std::to_string(frequency) + " Hz, " + width);
      expectLine(generate(folder, "tone", options, width), "clipped: 0 of ");
      const Sound sound = loadSound(folder / "out.wav");
      EXPECT_EQ(sound.format, SF_FORMAT_WAV | SF_FORMAT_PCM_16);
      EXPECT_EQ(sound.rate, rate);
      const std::vector<double> samples = written(folder);
      ASSERT_EQ(samples.size(), static_cast<size_t>(std::lround(seconds * rate)));
      for (size_t n = 0; n < samples.size(); ++n)
        ASSERT_NEAR(samples[n], std::pow(10, level / 20) * wave(frequency * static_cast<double>(n) / rate, rise),
                    0.501 / 32768)
            << n;
    }
  }
}

TEST(Tone, WritesTheFormatsOfConvertAndSaysWhatItDid) {
  const Folder folder;
  const struct {
    const char *bits, *name;
    int format;
    double step;
  } formats[] = {{"8", "Unsigned 8 bit PCM", SF_FORMAT_PCM_U8, 1 / 128.0},
                 {"24", "Signed 24 bit PCM", SF_FORMAT_PCM_24, 0x1p-23},
                 {"float", "32 bit float", SF_FORMAT_FLOAT, 0x1p-24}};
  for (const auto& [bits, name, format, step] : formats) {
    SCOPED_TRACE(bits);
    const Outcome outcome =
        generate(folder, "tone", {"--frequency", "1000 Hz", "--seconds", "0.5 s", "--level", "-3", "--bits", bits});
    expectLine(outcome, (folder / "out.wav") + ": sine of 1000 Hz, 0.50 s, 1 channel(s), 48000 Hz, " + name +
                            ", peak -3.0 dBFS, RMS -6.0 dBFS\n");
    EXPECT_EQ(loadSound(folder / "out.wav").format, SF_FORMAT_WAV | format);
    const std::vector<double> samples = written(folder);
    for (size_t n = 0; n < samples.size(); ++n)
      ASSERT_NEAR(samples[n], std::pow(10, -0.15) * sine(static_cast<double>(n) / 48, 0), 0.501 * step) << n;
  }
  // 0, 1, 0, -1: full scale is one step more than the largest sample.
  const Outcome outcome = generate(folder, "tone", {"--frequency", "12000", "--seconds", "0.5", "--level", "0"});
  expectLine(outcome, "clipped: 6000 of 24000 samples\n");
}

TEST(Noise, HasItsLevelAndDistribution) {
  const Folder folder;
  const struct {
    Words kind;
    const char* name;
    double kurtosis, peak;  // peak: times the RMS
  } kinds[] = {{{}, "Gaussian noise of seed 7", 3, 5}, {{"--uniform"}, "uniform noise of seed 7", 1.8, 1.7321}};
  for (const auto& [kind, name, kurtosis, peak] : kinds) {
    SCOPED_TRACE(name);
    Words options = {"--seconds", "5", "--level", "-23", "--seed", "7", "--bits", "24"};
    options.insert(options.end(), kind.begin(), kind.end());
    const Outcome outcome = generate(folder, "noise", options);
    expectLine(outcome, (folder / "out.wav") + ": " + name + ", 5.00 s, 1 channel(s), 48000 Hz, Signed 24 bit PCM, ");
    expectLine(outcome, "clipped: 0 of 240000 samples\n");
    const Sound first = loadSound(folder / "out.wav");
    double sum = 0, squares = 0, fourth = 0, neighbours = 0, most = 0, last = 0;
    const std::vector<double> samples = written(folder);
    ASSERT_EQ(samples.size(), 240'000u);
    for (const double sample : samples) {
      const double x = sample / std::pow(10, -23 / 20.0);
      sum += x, squares += x * x, fourth += std::pow(x, 4), neighbours += x * last;
      most = std::max(most, std::abs(x));
      last = x;
    }
    // Five standard deviations or more of each mean.
    EXPECT_NEAR(sum / 240'000, 0, 0.011);
    EXPECT_NEAR(squares / 240'000, 1, 0.015);
    EXPECT_NEAR(neighbours / 240'000, 0, 0.011);
    EXPECT_NEAR(fourth / 240'000, kurtosis, 0.11);
    EXPECT_NEAR(most, peak, kind.empty() ? 1 : 0.001);

    for (const char* width : kWidths) {
      generate(folder, "noise", options, width);
      EXPECT_TRUE(loadSound(folder / "out.wav") == first) << width;
    }
    options[5] = "8";
    generate(folder, "noise", options);
    EXPECT_FALSE(loadSound(folder / "out.wav") == first);
  }
}

TEST(Generate, RefusesInOneLineAndLeavesNothingBehind) {
  const Folder folder;
  const struct {
    Words words;
    const char* reason;
  } cases[] = {{{"tone", "out.wav"}, "--frequency is required"},
               {{"tone", "out.wav", "--frequency", "24000"}, "below half the sample rate, 48000 Hz"},
               {{"tone", "out.wav", "--frequency", "0"}, "'0' is not a frequency above 0"},
               {{"tone", "out.wav", "--frequency", "1kHz"}, "'1kHz' is not a frequency"},
               {{"tone", "out.wav", "--frequency", "440", "--level", "1"}, "above full scale"},
               {{"tone", "out.wav", "--frequency", "440", "--asymmetry", "0.5"}, "--triangle"},
               {{"tone", "out.wav", "--frequency", "440", "--triangle", "--asymmetry", "1"}, "at least -1 and below 1"},
               {{"tone", "absent/out.wav", "--frequency", "440"}, "cannot write"},
               {{"noise", "out.wav", "--bits", "12"}, "'12' is not a sample format"},
               {{"noise", "out.wav", "--rate", "0"}, "'0' is not a sample rate"},
               {{"noise", "out.wav", "--rate", "44100.5"}, "'44100.5' is not a sample rate"},
               {{"noise", "out.wav", "--seconds", "0.00001"}, "'0.00001' is too short"},
               {{"noise", "out.wav", "--seconds", "nan"}, "'nan' is not a length"},
               {{"noise", "out.wav", "--seconds", "1e300"}, "longer than a WAV file can be"},
               {{"noise", "out.wav", "--seed", "4294967296"}, "is not a seed"},
               {{"noise", "out.FLAC"}, "out.FLAC: this command writes WAV, not flac"},
               {{"noise", "."}, "it is there and not a file"}};
  for (auto [words, reason] : cases) {
    words[1] = folder / words[1];
    expectRefusal(wavtool(words), reason);
  }
  expectRefusal(wavtool({"noise", folder / "out.wav"}, "ulimit -f 8; "), "cannot write");
  EXPECT_EQ(folder.names(), Words{});
}

}  // namespace
