// wavtool alaw and mulaw: samples through the codes of G.711 and back, and the ratio that is printed.
#include <gtest/gtest.h>
#include <sndfile.h>

#include <cmath>

#include "wavtool/tool.h"

namespace {

Outcome compand(const std::string& law, const std::string& input, const std::string& output,
                const std::string& before = "") {
  Outcome outcome = wavtool({law, input, output}, before);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  return outcome;
}

double ratio(const auto& before, const std::vector<int16_t>& after, size_t channel, size_t channels) {
  double signal = 0, noise = 0;
  for (size_t i = channel; i < before.size(); i += channels) {
    signal += std::pow(before[i], 2);
    noise += std::pow(before[i] - after[i], 2);
  }
  return 10 * std::log10(signal / noise);
}

std::string ratioLine(size_t channel, double ratio) {
  char text[80];
  std::snprintf(text, sizeof(text), "channel %zu: signal-to-noise ratio %.2f dB\n", channel + 1, ratio);
  return text;
}

TEST(Companding, DecodesWhatItCodes) {
  const Folder folder;
  save(folder / "in.wav", {8000, 1, {0, 101, -101, 1000, 32767, -32768}});
  const std::pair<const char*, std::vector<int16_t>> laws[] = {{"alaw", {8, 104, -104, 1008, 32256, -32256}},
                                                               {"mulaw", {0, 104, -104, 988, 32124, -32124}}};
  for (const auto& [law, expected] : laws) {
    for (const char* width : kWidths) {
      const Outcome outcome = compand(law, folder / "in.wav", folder / "out.wav", width);
      EXPECT_EQ(load(folder / "out.wav").samples, expected) << law << " " << width;
      expectLine(outcome, ratioLine(0, ratio(load(folder / "in.wav").samples, expected, 0, 1)));
    }
    // What has been decoded has a code of its own. The input may be the output.
    expectLine(compand(law, folder / "out.wav", folder / "out.wav"), "channel 1: nothing is lost\n");
    EXPECT_EQ(load(folder / "out.wav").samples, expected) << law;
  }
}

TEST(Companding, MeasuresEveryChannel) {
  // A loud tone, one 30 dB below it, and silence, over several blocks.
  Recording recording{8000, 3, {}};
  for (int n = 0; n < 10'000; ++n)
    for (const double amplitude : {20'000.0, 632.0, 0.0})
      recording.samples.push_back(static_cast<int16_t>(std::lround(amplitude * std::sin(0.7123 * n))));
  const Folder folder;
  save(folder / "in.wav", recording);
  for (const std::string law : {"alaw", "mulaw"}) {
    SCOPED_TRACE(law);
    const Outcome outcome = compand(law, folder / "in.wav", folder / "out.wav");
    const Recording decoded = load(folder / "out.wav");
    EXPECT_EQ(decoded.rate, 8000);
    EXPECT_EQ(decoded.channels, 3);
    ASSERT_EQ(decoded.samples.size(), recording.samples.size());
    for (const size_t channel : {0u, 1u}) {
      const double expected = ratio(recording.samples, decoded.samples, channel, 3);
      EXPECT_GT(expected, 35);
      EXPECT_LT(expected, 40);
      expectLine(outcome, ratioLine(channel, expected));
    }
    expectLine(outcome, "channel 3: silent\n");
  }
}

TEST(Companding, TakesRealRecordings) {
  if (voices().empty()) GTEST_SKIP() << "no recordings are installed (alsa-utils)";
  const Folder folder;
  for (const std::string& voice : voices())
    for (const std::string law : {"alaw", "mulaw"}) {
      const Outcome outcome = compand(law, voice, folder / "out.wav");
      const double expected = ratio(load(voice).samples, load(folder / "out.wav").samples, 0, 1);
      EXPECT_GT(expected, 35);
      EXPECT_LT(expected, 40);
      expectLine(outcome, ratioLine(0, expected));
    }
}

TEST(Companding, RoundsOtherSamplesTo16Bits) {
  const Folder folder;
  saveSound(folder / "float.wav",
            {SF_FORMAT_WAV | SF_FORMAT_FLOAT, 8000, 1, bytesOf<float>({999.5F / 32768, 1000.4F / 32768, 2, NAN})});
  const Outcome rounded = compand("mulaw", folder / "float.wav", folder / "out.wav");
  expectLine(rounded, "clipped: 1 of 4 samples\n");
  expectLine(rounded, "not finite: 1 samples, taken as zeros\n");
  const auto samples = load(folder / "out.wav").samples;
  EXPECT_EQ(samples, (std::vector<int16_t>{988, 988, 32124, 0}));
  // Rounding and clipping are noise, too.
  expectLine(rounded, ratioLine(0, ratio(std::vector{999.5, 1000.4, 65536.0, 0.0}, samples, 0, 1)));
}

TEST(Companding, RefusesInOneLineAndLeavesNothingBehind) {
  const Folder folder;
  save(folder / "good.wav", {8000, 1, std::vector<int16_t>(100'000, 1)});
  save(folder / "empty.wav", {8000, 1, {}});
  const Words names = folder.names();
  for (const std::string law : {"alaw", "mulaw"}) {
    expectRefusal(wavtool({law, folder / "absent.wav", folder / "out.wav"}), "No such file");
    expectRefusal(wavtool({law, folder / "empty.wav", folder / "out.wav"}), "holds no samples");
    expectRefusal(wavtool({law, folder / "good.wav"}), "OUT.wav is required");
    expectRefusal(wavtool({law, folder / "good.wav", folder / "out.wav"}, "ulimit -f 8; "), "cannot write");
  }
  EXPECT_EQ(folder.names(), names);
}

}  // namespace
