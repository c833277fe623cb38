// wavtool convert: what stands in the files it writes.
#include <gtest/gtest.h>
#include <sndfile.h>
#include <sys/stat.h>

#include <cmath>
#include <filesystem>
#include <fstream>

#include "wavtool/tool.h"

namespace {

struct Format {
  const char* bits;  // as on the command line
  int format;
  size_t bytes;
};
constexpr Format k8{"8", SF_FORMAT_WAV | SF_FORMAT_PCM_U8, 1}, k16{"16", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 2},
    k24{"24", SF_FORMAT_WAV | SF_FORMAT_PCM_24, 3}, kFloat{"float", SF_FORMAT_WAV | SF_FORMAT_FLOAT, 4};

Outcome convert(const Folder& folder, const std::string& from, const std::string& to, const Words& more,
                const std::string& before = "") {
  Words words = {"convert", folder / from, folder / to};
  words.insert(words.end(), more.begin(), more.end());
  Outcome outcome = wavtool(words, before);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  return outcome;
}

// Through the other format and back, with every rounding: a widened sample needs none.
void expectSameAfter(const Folder& folder, const std::string& name, const Format& own, const Format& other) {
  const Sound original = loadSound(folder / name);
  const size_t samples = original.bytes.size() / own.bytes;
  for (const std::string rounding : {"zero", "nearest", "away"}) {
    SCOPED_TRACE(name + ": " + own.bits + " bits, " + other.bits + " and back, rounded to " + rounding);
    const Outcome outcome = convert(folder, name, "there.wav", {"--bits", other.bits, "--round", rounding});
    expectLine(outcome, "clipped: 0 of " + std::to_string(samples) + " samples\n");
    const Sound there = loadSound(folder / "there.wav");
    EXPECT_EQ(there.format, other.format);
    EXPECT_EQ(there.rate, original.rate);
    EXPECT_EQ(there.channels, original.channels);
    EXPECT_EQ(there.bytes.size(), samples * other.bytes);
    convert(folder, "there.wav", "back.wav", {"--bits", own.bits, "--round", rounding});
    EXPECT_TRUE(loadSound(folder / "back.wav") == original);
  }
}

TEST(Convert, WideningLosesNothing) {
  const Folder folder;
  // Odd numbers of bytes, and lengths that end inside a block and at its end.
  saveSound(folder / "8.wav", {k8.format, 8000, 1, randomBytes(9001, 1)});
  saveSound(folder / "16.wav", {k16.format, 44100, 2, randomBytes(2 * 2 * 8192, 2)});
  saveSound(folder / "24.wav", {k24.format, 96000, 3, randomBytes(3 * 3 * 4097, 3)});
  for (const Format& wider : {k8, k16, k24, kFloat}) expectSameAfter(folder, "8.wav", k8, wider);
  for (const Format& wider : {k24, kFloat}) expectSameAfter(folder, "16.wav", k16, wider);
  expectSameAfter(folder, "24.wav", k24, kFloat);
}

TEST(Convert, KeepsRealRecordings) {
  if (voices().empty()) GTEST_SKIP() << "no recordings are installed (alsa-utils)";
  const Folder folder;
  for (const std::string& voice : voices()) {
    std::filesystem::copy_file(voice, folder / "voice.wav", std::filesystem::copy_options::overwrite_existing);
    expectSameAfter(folder, "voice.wav", k16, k24);
    expectSameAfter(folder, "voice.wav", k16, kFloat);
    // Rounded to 8 bits: no sample moves by more than half a step, or a whole one if it is cut off.
    const auto exact = loadSamples(folder / "voice.wav");
    for (const auto& [rounding, most] : {std::pair("nearest", 0.5), std::pair("zero", 255 / 256.0)}) {
      SCOPED_TRACE(rounding);
      convert(folder, "voice.wav", "8.wav", {"--bits", "8", "--round", rounding});
      const auto rounded = loadSamples(folder / "8.wav");
      ASSERT_EQ(rounded.size(), exact.size());
      double greatest = 0;
      for (size_t i = 0; i < exact.size(); ++i)
        greatest = std::max(greatest, std::abs((rounded[i] - exact[i]) / 0x1p24));
      EXPECT_EQ(greatest, most);
    }
  }
}

TEST(Convert, WritesTheBytesOfEachFormat) {
  const Folder folder;
  const auto dataOf = [&](const Words& options) {
    convert(folder, "in.wav", "out.wav", options);
    const std::string file = contents(folder / "out.wav");
    const size_t at = file.find("data");
    EXPECT_EQ(file.size() % 2, 0u);
    EXPECT_EQ(file.find("PEAK"), std::string::npos) << "a chunk with the time of day";
    return file.substr(std::min(at + 4, file.size()));
  };
  using std::string_literals::operator""s;
  saveSound(folder / "in.wav", {k16.format, 48000, 1, bytesOf<int16_t>({0x1234, -2, -32768})});
  EXPECT_EQ(dataOf({"--bits", "8"}), "\x03\0\0\0\x92\x80\x00\0"s);  // and a byte that makes the number even
  EXPECT_EQ(dataOf({"--bits", "16"}), "\x06\0\0\0\x34\x12\xfe\xff\x00\x80"s);
  EXPECT_EQ(dataOf({"--bits", "24"}), "\x09\0\0\0\x00\x34\x12\x00\xfe\xff\x00\x00\x80\0"s);
  EXPECT_EQ(dataOf({"--bits", "float"}), "\x0c\0\0\0"s + bytesOf<float>({0x1234 / 32768.0F, -1 / 16384.0F, -1}));
}

// Samples in steps of the integer format, and what becomes of them in each rounding.
struct Case {
  double sample, zero, nearest, away;
};

std::vector<Case> casesOf(double full) {
  const double most = full - 1, least = -full;
  return {{2.5, 2, 2, 3},
          {-2.5, -2, -2, -3},
          {3.5, 3, 4, 4},
          {0.75, 0, 1, 1},
          {-0.75, 0, -1, -1},
          {0.25, 0, 0, 0},
          {most, most, most, most},
          {least, least, least, least},
          {least - 0.5, least, least, least},  // clipped only if it is rounded away
          {most + 0.5, most, most, most},      // clipped unless it is cut off
          {full, most, most, most},            // these always
          {1.5 * full, most, most, most},
          {-3 * full, least, least, least},
          {INFINITY, 0, 0, 0},
          {-INFINITY, 0, 0, 0},
          {NAN, 0, 0, 0}};
}

template <class T>
void expectRounding(const Format& source, const Format& target) {
  const Folder folder;
  const int bits = 8 * static_cast<int>(target.bytes);
  const double full = std::ldexp(1, bits - 1);
  const std::vector<Case> cases = casesOf(full);
  std::vector<T> samples;
  for (const Case& each : cases) samples.push_back(static_cast<T>(each.sample / full));
  saveSound(folder / "in.wav", {source.format, 48000, 1, bytesOf(samples)});
  const struct {
    Words option;
    double Case::*expected;
    int clipped;
  } roundings[] = {{{"--round", "zero"}, &Case::zero, 3},
                   {{"--round", "nearest"}, &Case::nearest, 4},
                   {{}, &Case::nearest, 4},
                   {{"--round", "away"}, &Case::away, 5}};
  for (const auto& rounding : roundings) {
    Words options = {"--bits", target.bits};
    options.insert(options.end(), rounding.option.begin(), rounding.option.end());
    const Outcome outcome = convert(folder, "in.wav", "out.wav", options, kWidths[target.bytes % 3]);
    const std::vector<int32_t> written = loadSamples(folder / "out.wav");
    ASSERT_EQ(written.size(), cases.size());
    for (size_t i = 0; i < cases.size(); ++i)
      EXPECT_EQ(written[i] >> (32 - bits), cases[i].*rounding.expected)
          << cases[i].sample << ", " << target.bits << " bits, " << (options.size() > 2 ? options[3] : "default");
    expectLine(outcome, "clipped: " + std::to_string(rounding.clipped) + " of 16 samples\n");
    expectLine(outcome, "not finite: 3 samples, taken as zeros\n");
  }
}

TEST(Convert, RoundsAsItIsTold) {
  constexpr Format kDouble{"", SF_FORMAT_WAV | SF_FORMAT_DOUBLE, 8};
  expectRounding<float>(kFloat, k8);
  expectRounding<float>(kFloat, k16);
  expectRounding<double>(kDouble, k8);
  expectRounding<double>(kDouble, k16);
  expectRounding<double>(kDouble, k24);
}

TEST(Convert, RoundsOnce) {
  const Folder folder;
  // 2.5 steps of 8 bits and a little more: with 24 bits in between it would be 2.5, and then 2.
  saveSamples(folder / "in.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_32, 1, {0x02800001, 0x02800000, -0x02800001});
  convert(folder, "in.wav", "8.wav", {"--bits", "8"});
  EXPECT_EQ(loadSound(folder / "8.wav").bytes, "\x83\x82\x7d");
  convert(folder, "in.wav", "float.wav", {"--bits", "float"});
  EXPECT_EQ(loadSound(folder / "float.wav").bytes, bytesOf<float>({0x2.8p-7, 0x2.8p-7, -0x2.8p-7}));
  // Integers of 16 bits have the rounding of the call, too.
  saveSound(folder / "in.wav", {k16.format, 48000, 1, bytesOf<int16_t>({0x0180, 0x0280, -0x0280, 0x7fff})});
  const std::pair<const char*, const char*> expected[] = {
      {"zero", "\x81\x82\x7e\xff"}, {"nearest", "\x82\x82\x7e\xff"}, {"away", "\x82\x83\x7d\xff"}};
  for (const auto& [rounding, bytes] : expected) {
    expectLine(convert(folder, "in.wav", "8.wav", {"--bits", "8", "--round", rounding}),
               std::string("clipped: ") + (rounding == std::string("zero") ? "0" : "1") + " of 4 samples\n");
    EXPECT_EQ(loadSound(folder / "8.wav").bytes, bytes) << rounding;
  }
}

TEST(Convert, ReadsOtherKindsOfFiles) {
  const Folder folder;
  std::vector<int32_t> samples(2 * 5001);
  const std::string random = randomBytes(4 * samples.size(), 4);
  std::copy(random.begin(), random.end(), reinterpret_cast<char*>(samples.data()));
  for (const int format :
       {SF_FORMAT_AIFF | SF_FORMAT_PCM_S8, SF_FORMAT_AIFF | SF_FORMAT_PCM_16, SF_FORMAT_AIFF | SF_FORMAT_PCM_24,
        SF_FORMAT_AU | SF_FORMAT_PCM_32, SF_FORMAT_AU | SF_FORMAT_FLOAT, SF_FORMAT_AU | SF_FORMAT_DOUBLE,
        SF_FORMAT_CAF | SF_FORMAT_PCM_24 | SF_ENDIAN_LITTLE, SF_FORMAT_WAV | SF_FORMAT_PCM_24 | SF_ENDIAN_BIG,
        SF_FORMAT_WAVEX | SF_FORMAT_PCM_24, SF_FORMAT_W64 | SF_FORMAT_PCM_16, SF_FORMAT_RF64 | SF_FORMAT_FLOAT,
        SF_FORMAT_FLAC | SF_FORMAT_PCM_16, SF_FORMAT_FLAC | SF_FORMAT_PCM_24, SF_FORMAT_WAV | SF_FORMAT_ULAW,
        SF_FORMAT_WAV | SF_FORMAT_IMA_ADPCM, SF_FORMAT_OGG | SF_FORMAT_VORBIS}) {
    SCOPED_TRACE(format);
    saveSamples(folder / "in", format, 2, samples);
    const std::vector<int32_t> expected = loadSamples(folder / "in");
    convert(folder, "in", "out.wav", {"--bits", "24", "--round", "zero"});
    EXPECT_EQ(loadSound(folder / "out.wav").channels, 2);
    const std::vector<int32_t> written = loadSamples(folder / "out.wav");
    ASSERT_EQ(written.size(), expected.size());
    for (size_t i = 0; i < written.size(); ++i) ASSERT_EQ(written[i], expected[i] / 256 * 256) << i;
  }
}

// A recorder that is stopped, or writes into a pipe, leaves sizes that it never filled in.
TEST(Convert, ReadsUnfinishedHeaders) {
  const Folder folder;
  const Sound sound{k16.format, 8000, 2, randomBytes(4000, 6)};
  saveSound(folder / "whole.wav", sound);
  const auto header = [&, file = contents(folder / "whole.wav") + "xyz"](uint32_t riff, uint32_t data, int rate) {
    std::string changed = file;
    changed.replace(4, 4, bytesOf<uint32_t>({riff})).replace(40, 4, bytesOf<uint32_t>({data}));
    std::ofstream(folder / "in.wav") << changed.replace(24, 4, bytesOf<int>({rate}));
  };
  constexpr std::pair<uint32_t, uint32_t> kUnfinished[] = {{0xFFFFFFFF, 0xFFFFFFFF},
                                                           {0xFFFFFFF0, 0xFFFFFFC0},
                                                           {0x7FFFF024, 0x7FFFF000},
                                                           {0x80000024, 0x80000000},
                                                           {0, 0},
                                                           {36, 0},
                                                           {0xFFFFFFFF, 0}};
  for (const auto& [riff, data] : kUnfinished) {
    SCOPED_TRACE(data);
    header(riff, data, 8000);
    convert(folder, "in.wav", "out.wav", {"--bits", "16"});
    EXPECT_TRUE(loadSound(folder / "out.wav") == sound);
  }
  const auto refuses = [&](const std::string& reason) {
    expectRefusal(wavtool({"convert", folder / "in.wav", folder / "new.wav", "--bits", "16"}, "timeout 20"), reason);
  };
  header(4036, 0x40000000, 8000);
  refuses("cut short: its header promises 1073741824 bytes");
  header(4039, 0, 8000);  // no samples, and something behind them
  refuses("no samples");
  header(4039, 4000, 0);
  refuses("its sample rate is 0");
  std::filesystem::remove(folder / "in.wav");
  ASSERT_EQ(mkfifo((folder / "in.wav").c_str(), 0600), 0);
  refuses("it is a pipe or a device");
}

TEST(Convert, RefusesInOneLine) {
  const Folder folder;
  save(folder / "good.wav", {48000, 1, {1, 2, 3, 4}});
  save(folder / "empty.wav", {48000, 1, {}});
  saveSound(folder / "cut.wav", {k24.format, 48000, 1, std::string(3000, 7)});
  std::filesystem::resize_file(folder / "cut.wav", 1001);
  const Words before = folder.names();
  const auto refuses = [&](const std::string& input, const Words& options, const std::string& reason) {
    SCOPED_TRACE(reason);
    Words words = {"convert", folder / input, folder / "out.wav"};
    words.insert(words.end(), options.begin(), options.end());
    expectRefusal(wavtool(words), reason);
    EXPECT_EQ(folder.names(), before);
  };
  refuses("good.wav", {}, "--bits is required");
  refuses("good.wav", {"--bits", "12"}, "'12' is not a sample format: give --bits 8, 16, 24 or float");
  refuses("good.wav", {"--bits", "16", "--round", "up"}, "'up' is not a rounding");
  refuses("absent.wav", {"--bits", "16"}, "absent.wav: No such file");
  refuses(".", {"--bits", "16"}, "it is a folder");
  refuses("empty.wav", {"--bits", "16"}, "no samples");
  refuses("cut.wav", {"--bits", "16"}, "cut short: its header promises 3000 bytes");
  std::ofstream(folder / "text") << "no recording, but long enough for the header of one";
  expectRefusal(wavtool({"convert", folder / "text", folder / "out.wav", "--bits", "8"}), "text: ");
  expectRefusal(wavtool({"convert", folder / "good.wav", folder / ".", "--bits", "8"}), "cannot write");
}

}  // namespace
