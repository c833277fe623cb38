// wavtool as its users see it: a command line, files, what it prints and its exit status.
#include <gtest/gtest.h>
#include <signal.h>
#include <sndfile.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <random>

#include "wavtool/tool.h"

namespace {

using ::testing::Test;

std::vector<int16_t> noise(size_t count, unsigned seed) {
  std::mt19937 random(seed);
  std::vector<int16_t> samples(count);
  for (auto& sample : samples) sample = static_cast<int16_t>(random());
  return samples;
}

struct Part {
  std::string gain;  // as on the command line
  double factor;
  std::vector<int16_t> samples;
};

// The mix in double precision, before rounding: exact, if the factors are multiples of 1/256.
std::vector<double> sumOf(const std::vector<Part>& parts) {
  std::vector<double> sum;
  for (const auto& part : parts) {
    sum.resize(std::max(sum.size(), part.samples.size()));
    for (size_t i = 0; i < part.samples.size(); ++i) sum[i] += part.factor * part.samples[i];
  }
  return sum;
}

Words mixCommand(const Folder& folder, const std::vector<Part>& parts, int channels) {
  Words words = {"mix", folder / "out.wav"};
  for (size_t i = 0; i < parts.size(); ++i) {
    words.push_back(folder / ("in" + std::to_string(i) + ".wav"));
    words.push_back(parts[i].gain);
    save(words[words.size() - 2], {44100, channels, parts[i].samples});
  }
  return words;
}

void expectExactMix(const std::vector<Part>& parts, int channels) {
  const Folder folder;
  const Words words = mixCommand(folder, parts, channels);
  const std::vector<double> sum = sumOf(parts);
  std::vector<int16_t> expected;
  int clipped = 0;
  for (const double value : sum) {
    const double rounded = std::nearbyint(value);  // ties to even
    clipped += rounded < -32768 || rounded > 32767;
    expected.push_back(static_cast<int16_t>(std::clamp(rounded, -32768.0, 32767.0)));
  }
  for (const char* width : kWidths) {
    SCOPED_TRACE(width);
    const Outcome outcome = wavtool(words, width);
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    const Recording mixed = load(folder / "out.wav");
    EXPECT_EQ(mixed.rate, 44100);
    EXPECT_EQ(mixed.channels, channels);
    EXPECT_EQ(mixed.samples, expected);
    const std::string count =
        "clipped: " + std::to_string(clipped) + " of " + std::to_string(sum.size()) + " samples\n";
    EXPECT_NE(outcome.out.find(count), std::string::npos) << "expected " << count << outcome.out;
  }
}

TEST(Mix, SumsExactlyAndCountsClipping) {
  // Lengths end inside a block, at its end, and just behind it.
  expectExactMix({{"0.5", 0.5, noise(2 * 10001, 1)},
                  {"-0.50390625", -129 / 256.0, noise(2 * 8192, 2)},
                  {"2", 2, noise(2 * 4097, 3)}},
                 2);
  expectExactMix({{"0", 0, noise(100, 4)}, {"1", 1, noise(1, 5)}}, 1);
  expectExactMix({{"100.5", 100.5, {300, 326, 327, -326, -327}}, {"-99.25", -99.25, {0, 0, 0, 1, 2}}}, 1);
}

TEST(Mix, RoundsAndClipsAtTheEnds) {
  // 32767, 32767.5 (clips), -32768, -32768.5 (rounds back to even), -32769 (clips); ties 0.5, 1.5, 2.5, -1.5
  expectExactMix(
      {{"1", 1, {32767, 32767, -32768, -32768, -32768, 0, 0, 0, 0}}, {"0.5", 0.5, {0, 1, 0, -1, -2, 1, 3, 5, -3}}}, 1);
}

TEST(Mix, DoesNotClipOnTheWay) {
  expectExactMix({{"1", 1, {30000, -30000}}, {"1", 1, {30000, -30000}}, {"-1", -1, {30000, -30000}}}, 1);
}

TEST(Mix, TakesDecibels) {
  const Folder folder;
  const std::vector<Part> parts = {{"-6dB", std::pow(10, -6 / 20.0), noise(5000, 6)},
                                   {"+3.5dB", std::pow(10, 3.5 / 20), std::vector<int16_t>(5000, 1234)},
                                   {"-80 dB", 1e-4, noise(4000, 7)}};
  const Outcome outcome = wavtool(mixCommand(folder, parts, 1));
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  const auto mixed = load(folder / "out.wav").samples;
  const auto sum = sumOf(parts);
  ASSERT_EQ(mixed.size(), sum.size());
  // Half a unit of rounding, and a factor of 15 bits: up to half a unit of full scale.
  for (size_t i = 0; i < sum.size(); ++i) ASSERT_NEAR(mixed[i], sum[i], 1.1) << i;
}

TEST(Mix, PrintsLevels) {
  const Folder folder;
  save(folder / "loud.wav", {8000, 1, {-32768, 0, 0, 0}});
  save(folder / "steady.wav", {8000, 1, std::vector<int16_t>(8000, 16384)});
  save(folder / "nothing.wav", {8000, 1, {0, 0}});
  const Outcome outcome = wavtool(
      {"mix", folder / "out.wav", folder / "loud.wav", "0.5", folder / "steady.wav", "0", folder / "nothing.wav", "1"});
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  const auto has = [&](const std::string& text) { return outcome.out.find(text) != std::string::npos; };
  EXPECT_TRUE(has("loud.wav, gain 0.5: 0.00 s, peak 0.0 dBFS, RMS -6.0 dBFS\n")) << outcome.out;
  EXPECT_TRUE(has("steady.wav, gain 0: 1.00 s, peak -6.0 dBFS, RMS -6.0 dBFS\n")) << outcome.out;
  EXPECT_TRUE(has("nothing.wav, gain 1: 0.00 s, silent\n")) << outcome.out;
  EXPECT_TRUE(has("out.wav: 1.00 s, 1 channel(s), 8000 Hz, peak -6.0 dBFS, RMS -45.1 dBFS\n")) << outcome.out;
}

TEST(Mix, MayReplaceItsInput) {
  const Folder folder;
  save(folder / "in.wav", {48000, 1, {100, -200, 300}});
  ASSERT_EQ(wavtool({"mix", folder / "in.wav", folder / "in.wav", "2"}).status, 0);
  EXPECT_EQ(load(folder / "in.wav").samples, (std::vector<int16_t>{200, -400, 600}));
  EXPECT_EQ(folder.names(), Words{"in.wav"});
}

TEST(Mix, RefusesBadInputInOneLine) {
  const Folder folder;
  save(folder / "good.wav", {48000, 1, {1, 2, 3, 4}});
  save(folder / "slow.wav", {44100, 1, {1, 2, 3, 4}});
  save(folder / "stereo.wav", {48000, 2, {1, 2, 3, 4}});
  save(folder / "empty.wav", {48000, 1, {}});
  save(folder / "cut.wav", {48000, 1, std::vector<int16_t>(1000, 7)});
  std::filesystem::resize_file(folder / "cut.wav", 1001);
  save(folder / "header.wav", {48000, 1, std::vector<int16_t>(1000, 7)});
  std::filesystem::resize_file(folder / "header.wav", 30);
  saveAs(folder / "24.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_24);
  saveAs(folder / "float.wav", SF_FORMAT_WAV | SF_FORMAT_FLOAT);
  saveAs(folder / "aiff.wav", SF_FORMAT_AIFF | SF_FORMAT_PCM_16);
  const Words before = folder.names();

  const struct {
    const char *input, *gain, *reason;
  } cases[] = {
      {"absent.wav", "1", "absent.wav: No such file"},
      {"slow.wav", "1", "44100 Hz"},
      {"stereo.wav", "1", "2 channel(s)"},
      {"empty.wav", "1", "no samples"},
      {"cut.wav", "1", "cut short: its header promises 2000 bytes of samples, 957 are there"},
      {"header.wav", "1", "cut short"},
      {"24.wav", "1", "24 bit"},
      {"float.wav", "1", "32 bit float"},
      {"aiff.wav", "1", "not a WAV file"},
      {".", "1", "it is a folder"},
      {"good.wav", "loud", "'loud' is not a gain"},
      {"good.wav", "", "'' is not a gain"},
      {"good.wav", "nan", "'nan' is not a gain"},
      {"good.wav", "6dBm", "'6dBm' is not a gain"},
      {"good.wav", "254.5", "too large"},
      {"good.wav", "1e308dB", "too large"},
  };
  for (const auto& bad : cases) {
    SCOPED_TRACE(std::string(bad.input) + " " + bad.gain);
    expectRefusal(wavtool({"mix", folder / "out.wav", folder / "good.wav", "1", folder / bad.input, bad.gain}),
                  bad.reason);
    EXPECT_EQ(folder.names(), before);
  }
  expectRefusal(wavtool({"mix", folder / "out.wav", folder / "good.wav"}), "every input needs a gain");
  expectRefusal(wavtool({"mix", folder / "out.wav"}), "IN.wav GAIN");
  expectRefusal(wavtool({"mix", folder / "absent/out.wav", folder / "good.wav", "1"}), "cannot write");
  expectRefusal(wavtool({"mix", folder / ".", folder / "good.wav", "1"}), "cannot write");
  expectRefusal(wavtool({"mend"}), "no command mend");
  EXPECT_EQ(folder.names(), before);
}

TEST(Mix, KeepsAnExistingFileWhenItFails) {
  const Folder folder;
  save(folder / "out.wav", {48000, 1, {42}});
  save(folder / "good.wav", {48000, 1, std::vector<int16_t>(100000, 1)});
  // No file may grow beyond 8 blocks (of 512 or 1024 bytes): the disk is full while the mix is being written.
  const Outcome outcome = wavtool({"mix", folder / "out.wav", folder / "good.wav", "1"}, "ulimit -f 8; ");
  expectRefusal(outcome, "cannot write");
  EXPECT_EQ(load(folder / "out.wav").samples, std::vector<int16_t>{42});
  EXPECT_EQ(folder.names(), (Words{"good.wav", "out.wav"}));
}

TEST(Generate, LeavesNothingBehindWhenASignalEndsIt) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    const Folder folder;
    const std::string output = folder / "out.wav";
    const pid_t child = fork();
    if (child == 0) {
      ::signal(signal, SIG_DFL);  // it may be ignored here
      execl(WAVTOOL, WAVTOOL, "tone", output.c_str(), "--frequency", "440", "--seconds", "40000", nullptr);
      _exit(127);
    }
    int status = 0;
    while (folder.names().empty() && waitpid(child, &status, WNOHANG) == 0) usleep(100);
    kill(child, signal);
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << status;
    EXPECT_EQ(folder.names(), Words{});
  }
}

TEST(Info, FollowsTheLimitsOfTheCoreLibrary) {
  const Outcome outcome = wavtool({"info"}, "ORPCORE_CPU_FEATURES=0x10 ORPCORE_NUM_THREADS=3");
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  for (const char* text :
       {"name          orpSP SSSE3 (u8)\n", "variant       u8\n", "width  " NARROWEST_WIDTH " bits\n", "SSSE3 (0x10)\n",
        "threads       3\n", "7.1.0 (r36264)"})
    EXPECT_NE(outcome.out.find(text), std::string::npos) << "expected " << text << "\n" << outcome.out;
  EXPECT_EQ(wavtool({"--version"}, "ORPSP_LIBRARY=absent").out, "wavtool 7.1.0\n");
}

TEST(Library, IsLookedForWhereTheUserSays) {
  const Folder folder;
  expectRefusal(wavtool({"info", "--library", folder / "absent.so"}), "absent.so: no such file");
  expectRefusal(wavtool({"info"}, "ORPSP_LIBRARY=" + (folder / "absent.so")), "absent.so: no such file");
  expectRefusal(wavtool({"info", "--library", folder / "."}), "liborpsp.so.7: no such file");
  save(folder / "in.wav", {48000, 1, {1}});
  expectRefusal(wavtool({"info", "--library", folder / "in.wav"}), folder / "in.wav: file too short");
  expectRefusal(wavtool({"info", "--library", CORE_LIBRARY}), "liborpcore.so.7.1.0: it is not orpSP");

  // A copy of the program in a folder of its own, with nothing beside it.
  std::filesystem::create_directory(folder / "bin");
  std::filesystem::copy_file(WAVTOOL, folder / "bin/wavtool");
  const Outcome alone = run(folder / "bin/wavtool", {"info"});
  if (alone.status != 0) {  // no orpSP installed in the system
    expectRefusal(alone, "no library");
  }
  std::filesystem::create_symlink(std::filesystem::path(CORE_LIBRARY).parent_path(), folder / "lib");
  EXPECT_EQ(run(folder / "bin/wavtool", {"info"}).status, 0) << "found in ../lib";

  std::filesystem::remove(folder / "lib");
  std::filesystem::create_symlink(CORE_LIBRARY, folder / "bin/liborpcore.so.7");
  std::filesystem::create_symlink(POOR_LIBRARY, folder / "bin/liborpsp.so.7");
  EXPECT_NE(run(folder / "bin/wavtool", {"info"}).out.find("name          poor\n"), std::string::npos);
  expectRefusal(run(folder / "bin/wavtool", {"mix", folder / "out.wav", folder / "in.wav", "1"}),
                "has no function orps");
  EXPECT_EQ(folder.names(), (Words{"bin", "in.wav"}));
}

}  // namespace
