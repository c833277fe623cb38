// wavtool limit: samples within the level, the others as they were.
#include <gtest/gtest.h>
#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "wavtool/tool.h"

namespace {

Outcome limit(const Folder& folder, const std::string& level, const std::string& before = "") {
  Outcome outcome = wavtool({"limit", folder / "in", folder / "out.wav", "--level", level}, before);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  return outcome;
}

// Integers as libsndfile reads them, in 32 bits.
void expectLimited(int format, int bits, const std::vector<int32_t>& samples, double decibels) {
  const Folder folder;
  saveSamples(folder / "in", format, 2, samples);
  const int64_t level =
      std::min<int64_t>(static_cast<int64_t>(std::floor(std::pow(10, decibels / 20) * std::ldexp(1, bits - 1))),
                        int64_t{1} << (bits - 1))
      << (32 - bits);
  std::vector<int32_t> expected = loadSamples(folder / "in");
  int64_t limited = 0;
  for (int32_t& sample : expected) {
    limited += std::abs(int64_t{sample}) > level;
    if (std::abs(int64_t{sample}) > level) sample = static_cast<int32_t>(sample < 0 ? -level : level);
  }
  const Outcome outcome = limit(folder, std::to_string(decibels), kWidths[bits / 8 % 3]);
  EXPECT_EQ(loadSamples(folder / "out.wav"), expected);
  expectLine(outcome,
             "limited: " + std::to_string(limited) + " of " + std::to_string(samples.size()) + " samples, to ");
}

TEST(Limit, IsExactInEveryIntegerFormat) {
  std::vector<int32_t> samples(2 * 5001);
  const std::string random = randomBytes(4 * samples.size(), 1);
  std::copy(random.begin(), random.end(), reinterpret_cast<char*>(samples.data()));
  samples[7] = INT32_MIN;
  samples[8] = INT32_MAX;
  for (const double level : {-6.0, -0.1, 0.0, -100.0}) {
    SCOPED_TRACE(level);
    expectLimited(SF_FORMAT_WAV | SF_FORMAT_PCM_U8, 8, samples, level);
    expectLimited(SF_FORMAT_WAV | SF_FORMAT_PCM_16, 16, samples, level);
    expectLimited(SF_FORMAT_WAV | SF_FORMAT_PCM_24, 24, samples, level);
    expectLimited(SF_FORMAT_WAV | SF_FORMAT_PCM_32, 32, samples, level);
    expectLimited(SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 16, samples, level);
  }
}

template <class T>
void expectLimitedFloats(int format) {
  const Folder folder;
  const T level = static_cast<T>(std::pow(10.0, -0.25));
  const T within = static_cast<double>(level) > std::pow(10.0, -0.25) ? std::nextafter(level, T{0}) : level;
  const T above = std::nextafter(within, T{1});
  saveSound(folder / "in", {format, 48000, 1,
                            bytesOf<T>({0, T{-0.25}, within, -within, above, -above, 1, -7, T(INFINITY), T(1e-30)})});
  const Outcome outcome = limit(folder, "-5dB");
  const Sound written = loadSound(folder / "out.wav");
  EXPECT_EQ(written.format, format);
  EXPECT_EQ(written.bytes, bytesOf<T>({0, T{-0.25}, within, -within, within, -within, within, -within, 0, T(1e-30)}));
  expectLine(outcome, "limited: 4 of 10 samples, to -5.0 dBFS\nnot finite: 1 samples, taken as zeros\n");
}

TEST(Limit, StaysWithinTheLevelInFloats) {
  expectLimitedFloats<float>(SF_FORMAT_WAV | SF_FORMAT_FLOAT);
  expectLimitedFloats<double>(SF_FORMAT_WAV | SF_FORMAT_DOUBLE);
}

TEST(Limit, KeepsTheSampleFormat) {
  const std::pair<int, int> formats[] = {
      {SF_FORMAT_WAV | SF_FORMAT_PCM_U8, SF_FORMAT_PCM_U8},  {SF_FORMAT_AIFF | SF_FORMAT_PCM_S8, SF_FORMAT_PCM_U8},
      {SF_FORMAT_WAV | SF_FORMAT_PCM_16, SF_FORMAT_PCM_16},  {SF_FORMAT_WAV | SF_FORMAT_ULAW, SF_FORMAT_PCM_16},
      {SF_FORMAT_AIFF | SF_FORMAT_PCM_24, SF_FORMAT_PCM_24}, {SF_FORMAT_AU | SF_FORMAT_PCM_32, SF_FORMAT_PCM_32},
      {SF_FORMAT_AU | SF_FORMAT_FLOAT, SF_FORMAT_FLOAT},     {SF_FORMAT_AU | SF_FORMAT_DOUBLE, SF_FORMAT_DOUBLE},
      {SF_FORMAT_FLAC | SF_FORMAT_PCM_24, SF_FORMAT_PCM_24}};
  const Folder folder;
  for (const auto& [format, expected] : formats) {
    saveSamples(folder / "in", format, 1, {1 << 24, 77 << 24, INT32_MIN, 0, -3 << 24});
    const std::vector<int32_t> samples = loadSamples(folder / "in");
    limit(folder, "0");
    EXPECT_EQ(loadSound(folder / "out.wav").format, SF_FORMAT_WAV | expected) << format;
    EXPECT_EQ(loadSamples(folder / "out.wav"), samples) << format;
  }
}

TEST(Limit, PrintsPeaks) {
  const Folder folder;
  save(folder / "in", {8000, 1, {-32768, 32767, 0, 100}});
  const Outcome outcome = limit(folder, "-12.5 dBFS");
  expectLine(outcome,
             (folder / "in") + ": 0.00 s, 1 channel(s), 8000 Hz, Signed 16 bit PCM, peak 0.0 dBFS, RMS -3.0 dBFS\n");
  expectLine(outcome, (folder / "out.wav") + ": Signed 16 bit PCM, peak -12.5 dBFS, RMS -15.5 dBFS\n");
  expectLine(outcome, "limited: 2 of 4 samples, to -12.5 dBFS\n");
}

TEST(Limit, HoldsARealRecording) {
  if (voices().empty()) GTEST_SKIP() << "no recordings are installed (alsa-utils)";
  const Folder folder;
  for (const std::string& voice : voices()) {
    std::filesystem::copy_file(voice, folder / "in", std::filesystem::copy_options::overwrite_existing);
    const Recording before = load(folder / "in");
    limit(folder, "-20");
    const Recording after = load(folder / "out.wav");
    EXPECT_EQ(after.rate, before.rate);
    EXPECT_EQ(*std::max_element(after.samples.begin(), after.samples.end()), 3276);
    EXPECT_EQ(*std::min_element(after.samples.begin(), after.samples.end()), -3276);
    ASSERT_EQ(after.samples.size(), before.samples.size());
    for (size_t i = 0; i < after.samples.size(); ++i)
      ASSERT_EQ(after.samples[i], std::clamp<int16_t>(before.samples[i], -3276, 3276)) << i;
  }
}

TEST(Limit, RefusesInOneLine) {
  const Folder folder;
  save(folder / "in", {48000, 1, {1, 2, 3, 4}});
  const std::pair<const char*, const char*> cases[] = {{"3", "'3' is above full scale: a level is at most 0 dBFS"},
                                                       {"+0.1dB", "is above full scale"},
                                                       {"loud", "'loud' is not a level"},
                                                       {"nan", "'nan' is not a level"},
                                                       {"-inf", "'-inf' is not a level"},
                                                       {"-6V", "'-6V' is not a level"},
                                                       {"", "'' is not a level"}};
  for (const auto& [level, reason] : cases) {
    SCOPED_TRACE(level);
    expectRefusal(wavtool({"limit", folder / "in", folder / "out.wav", "--level", level}), reason);
  }
  expectRefusal(wavtool({"limit", folder / "in", folder / "out.wav"}), "--level is required");
  expectRefusal(wavtool({"limit", folder / "absent", folder / "out.wav", "--level", "-6"}), "No such file");
  EXPECT_EQ(folder.names(), Words{"in"});
}

}  // namespace
