// wavtool spectrum: recordings of known tones, the list it prints and the picture it draws.
#include <gtest/gtest.h>
#include <sndfile.h>

#include <cmath>
#include <numbers>
#include <regex>
#include <sstream>

#include "wavtool/tool.h"

namespace {

struct Tone {
  double frequency, level;  // Hz, dB below full scale
};

using Samples = std::vector<double>;

Samples tones(int rate, size_t frames, const std::vector<Tone>& tones) {
  Samples samples(frames);
  for (const Tone& tone : tones)
    for (size_t n = 0; n < frames; ++n)
      samples[n] += std::pow(10, tone.level / 20) *
                    std::sin(2 * std::numbers::pi * tone.frequency * static_cast<double>(n) / rate + tone.frequency);
  return samples;
}

Samples noise(size_t frames, double peak) {
  const std::string random = randomBytes(frames, 5);
  Samples samples;
  for (const char byte : random) samples.push_back(byte / 128.0 * peak);
  return samples;
}

Samples sum(Samples a, const Samples& b) {
  for (size_t n = 0; n < a.size(); ++n) a[n] += b[n];
  return a;
}

void saveChannels(const std::string& path, int rate, const std::vector<Samples>& channels) {
  Samples frames;
  for (size_t n = 0; n < channels[0].size(); ++n)
    for (const Samples& channel : channels) frames.push_back(channel[n]);
  saveSound(path, {SF_FORMAT_WAV | SF_FORMAT_DOUBLE, rate, static_cast<int>(channels.size()), bytesOf(frames)});
}

Outcome spectrum(const std::string& input, const std::string& output, const std::string& before = "",
                 const std::string& window = "hann") {
  const Outcome outcome = wavtool({"spectrum", input, output, "--window", window}, before);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  const std::string printed = outcome.out.substr(outcome.out.find(": ")), svg = contents(output);
  for (const char* bad : {"nan", "inf"}) {
    EXPECT_EQ(printed.find(bad), std::string::npos) << printed;
    EXPECT_EQ(svg.find(bad), std::string::npos) << bad;
  }
  EXPECT_TRUE(svg.starts_with("<svg ") && svg.ends_with("</svg>\n"));
  EXPECT_LT(svg.size(), 1'000'000u);
  return outcome;
}

// The tones listed for each channel.
std::vector<std::vector<Tone>> listed(const Outcome& outcome) {
  std::vector<std::vector<Tone>> channels;
  std::istringstream lines(outcome.out);
  Tone tone;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("channel ")) channels.emplace_back();
    if (std::sscanf(line.c_str(), "  %lf Hz %lf dBFS", &tone.frequency, &tone.level) == 2)
      channels.back().push_back(tone);
  }
  return channels;
}

void expectTones(const Outcome& outcome, const std::vector<std::vector<Tone>>& expected) {
  const auto channels = listed(outcome);
  ASSERT_EQ(channels.size(), expected.size()) << outcome.out;
  for (size_t i = 0; i < expected.size(); ++i) {
    ASSERT_EQ(channels[i].size(), expected[i].size()) << outcome.out;
    for (size_t k = 0; k < expected[i].size(); ++k) {
      EXPECT_NEAR(channels[i][k].frequency, expected[i][k].frequency, 0.1) << outcome.out;
      EXPECT_NEAR(channels[i][k].level, expected[i][k].level, 0.1) << outcome.out;
    }
  }
}

TEST(Spectrum, ListsTheTonesOfEveryChannel) {
  const Folder folder;
  const std::string input = folder / "in.wav", output = folder / "out.svg";
  // The strongest first; on an offset and in noise; down to 50 Hz and near half the rate.
  const std::vector<Tone> chord = {{1000.3, -6}, {1061.7, -20.5}, {5003.1, -40}},
                          ends = {{20001.5, -10.2}, {50.1, -30.7}};
  const Samples hiss = sum(noise(88'200, 0.002), Samples(88'200, 0.02));
  saveChannels(input, 44100, {tones(44100, 88'200, chord), sum(tones(44100, 88'200, ends), hiss)});
  for (const char* width : kWidths) expectTones(spectrum(input, output, width), {chord, ends});

  // Frames of other lengths, and one that is no power of two.
  for (const int rate : {8000, 22050, 96000}) {
    saveChannels(input, rate, {tones(rate, 100'000, {{440.4, -3}})});
    expectTones(spectrum(input, output), {{{440.4, -3}}});
  }
  saveChannels(input, 48000, {tones(48000, 3001, {{2345.6, -12}})});
  const Outcome outcome = spectrum(input, output);
  expectTones(outcome, {{{2345.6, -12}}});
  expectLine(outcome, "analysed: 1 frame(s) of 3001 samples (0.0625 s), Hann window\nresolution: 32 Hz, ");
}

TEST(Spectrum, ListsOnlyWhatStandsOut) {
  const Folder folder;
  const std::string input = folder / "in.wav", output = folder / "out.svg";
  // Ten partials; noise, averaged and in a single frame; a full-scale constant.
  std::vector<Tone> partials;
  for (int k = 1; k <= 10; ++k) partials.push_back({220.3 * k, -10.0 - 3 * k});
  saveChannels(input, 48000, {tones(48000, 48000, partials), noise(48000, 0.5), Samples(48000, 1)});
  partials.resize(8);
  expectTones(spectrum(input, output), {partials, {}, {}});
  saveChannels(input, 48000, {noise(8192, 1)});
  expectTones(spectrum(input, output), {{}});
}

TEST(Spectrum, UsesTheWindowOfTheCall) {
  // From -1 at the beginning of a frame to 1 at its end.
  const struct {
    const char *word, *name;
    double (*weight)(double t);
  } windows[] = {{"hann", "Hann", [](double t) { return 0.5 + 0.5 * std::cos(std::numbers::pi * t); }},
                 {"hamming", "Hamming", [](double t) { return 0.54 + 0.46 * std::cos(std::numbers::pi * t); }},
                 {"blackman", "Blackman",
                  [](double t) {
                    return 0.42 + 0.5 * std::cos(std::numbers::pi * t) + 0.08 * std::cos(2 * std::numbers::pi * t);
                  }},
                 {"bartlett", "Bartlett", [](double t) { return 1 - std::abs(t); }},
                 {"kaiser", "Kaiser",
                  [](double t) { return std::cyl_bessel_i(0, 8 * std::sqrt(1 - t * t)) / std::cyl_bessel_i(0, 8.0); }}};
  // A pure tone has no side lobes in the list. One that ends after a third of the only frame has the weights there.
  constexpr size_t kFrames = 4096, kThird = 1365;
  const Folder folder;
  Samples third = tones(48000, kFrames, {{9000, -6}});
  std::fill(third.begin() + kThird, third.end(), 0);
  saveChannels(folder / "in.wav", 48000, {tones(48000, kFrames, {{6001.3, -6}}), third});
  for (const auto& [word, name, weight] : windows) {
    const Outcome outcome = spectrum(folder / "in.wav", folder / "out.svg", "", word);
    expectLine(outcome, std::string("analysed: 1 frame(s) of 4096 samples (0.0853 s), ") + name + " window\n");
    double inside = 0, all = 0;
    for (size_t n = 0; n < kFrames; ++n) {
      const double own = weight((2 * static_cast<double>(n) + 1) / kFrames - 1);
      all += own;
      if (n < kThird) inside += own;
    }
    const auto channels = listed(outcome);
    ASSERT_EQ(channels.size(), 2u);
    ASSERT_EQ(channels[0].size(), 1u) << outcome.out;
    EXPECT_NEAR(channels[0][0].frequency, 6001.3, 0.1) << word;
    EXPECT_NEAR(channels[0][0].level, -6, 0.1) << word;
    ASSERT_FALSE(channels[1].empty());
    EXPECT_NEAR(channels[1][0].level, -6 + 20 * std::log10(inside / all), 0.1) << word;
  }
  expectRefusal(wavtool({"spectrum", folder / "in.wav", folder / "new.svg", "--window", "Hann"}),
                "'Hann' is not a window: give --window hann, ");
}

TEST(Spectrum, AveragesPowerOverTheWholeRecording) {
  // A tone in a quarter of it, at either end, is 6 dB weaker.
  const Folder folder;
  Samples begins = tones(48000, 200'000, {{3000, -6}}), ends = begins;
  std::fill(begins.begin() + 50'000, begins.end(), 0);
  std::fill(ends.begin(), ends.end() - 50'000, 0);
  saveChannels(folder / "in.wav", 48000, {begins, ends});
  for (const auto& channel : listed(spectrum(folder / "in.wav", folder / "out.svg"))) {
    ASSERT_EQ(channel.size(), 1u);
    EXPECT_NEAR(channel[0].frequency, 3000, 0.1);
    EXPECT_NEAR(channel[0].level, -12, 0.2);
  }
}

// What stands in an attribute or between the tags of each match of `pattern`.
std::vector<std::smatch> matches(const std::string& svg, const std::string& pattern) {
  const std::regex regex(pattern);
  return {std::sregex_iterator(svg.begin(), svg.end(), regex), std::sregex_iterator()};
}

double numberAt(const std::string& svg, const std::string& pattern) {
  const auto found = matches(svg, pattern);
  EXPECT_FALSE(found.empty()) << pattern;
  return found.empty() ? 0 : std::stod(found[0][1]);
}

TEST(Spectrum, DrawsCurvesToTheScaleOfTheAxes) {
  const Folder folder;
  const std::string input = folder / "a&b <c>.wav", output = folder / "out.svg";
  saveChannels(input, 48000, {tones(48000, 96000, {{1000, -20}}), tones(48000, 96000, {{5000, -40}})});
  spectrum(input, output);
  const std::string svg = contents(output);
  for (const char* text : {">a&amp;b &lt;c&gt;.wav<", ">2 s, 48000 Hz, 2 channel(s), ", ">channel<"})
    EXPECT_NE(svg.find(text), std::string::npos) << text;

  const std::string begin = " points=\"";
  size_t curve = 0;
  for (size_t i = 0; i < 2; ++i) {
    curve = svg.find(begin, curve + 1);
    ASSERT_NE(curve, std::string::npos);
    std::istringstream points(svg.substr(curve + begin.size()));
    double x, y, peakX = 0, peakY = INFINITY;
    for (char comma; points >> x >> comma >> y;)
      if (y < peakY) peakX = x, peakY = y;
    // The first of the labels belongs to the upper picture. Letters stand 4 below the line of their level.
    EXPECT_NEAR(peakX, numberAt(svg, std::string("<text x=\"([0-9.]+)\"[^>]*>") + (i == 0 ? "1k" : "5k") + "<"), 2);
    EXPECT_NEAR(peakY + 4, numberAt(svg, std::string("y=\"([0-9.]+)\"[^>]*>") + (i == 0 ? "-20" : "-40") + "<"), 1);
  }
}

TEST(Spectrum, DrawsTheSpectrogramWhereThingsHappen) {
  // Silence, then a tone of 1 kHz in two channels; the brightest cells are those of the tone.
  const Folder folder;
  Samples samples = tones(48000, 96'000, {{1000, -1}});
  std::fill(samples.begin(), samples.begin() + 48'000, 0);
  saveChannels(folder / "in.wav", 48000, {samples, samples});
  spectrum(folder / "in.wav", folder / "out.svg");
  const std::string svg = contents(folder / "out.svg");
  const auto cells = matches(svg, "<g transform=\"translate\\(([0-9.]+) ([0-9.]+)\\) scale\\(([0-9.]+) ([0-9.]+)\\)");
  ASSERT_EQ(cells.size(), 1u);
  const std::string below = svg.substr(svg.find("</g>"));
  EXPECT_EQ(below.find(">10<"), std::string::npos) << "the scale ends at 0 dBFS";
  const std::string brightest = svg.substr(svg.rfind("<path ", svg.find("</g>")));
  double column, row, length;
  ASSERT_EQ(std::sscanf(brightest.c_str(), "<path stroke=\"%*[^\"]\" d=\"M%lf %lfh%lf", &column, &row, &length), 3);
  const auto number = [&](size_t i) { return std::stod(cells[0][i]); };
  const double left = number(1) + number(3) * column, width = number(3) * length;
  EXPECT_NEAR(number(2) + number(4) * row + 4, numberAt(svg, "y=\"([0-9.]+)\" text-anchor=\"end\">1k<"), number(4));
  EXPECT_NEAR(left, numberAt(below, "<text x=\"([0-9.]+)\"[^>]*>1</text>"), 10);
  EXPECT_NEAR(left + width, numberAt(below, "<text x=\"([0-9.]+)\"[^>]*>2</text>"), 5);
}

TEST(Spectrum, TakesAnyRecording) {
  const Folder folder;
  const std::string input = folder / "in.wav", output = folder / "out.svg";
  for (const size_t frames : {1U, 2U, 3U, 10U, 255U, 257U}) {
    saveChannels(input, 48000, {noise(frames, 1)});
    spectrum(input, output);
  }
  saveChannels(input, 1, {tones(1, 5000, {{0.1003, -6}})});
  expectLine(spectrum(input, output), "channel 1: its strongest tones\n      0.1003 Hz     -6.0 dBFS\n");
  saveChannels(input, 44100, std::vector<Samples>(40, noise(20'000, 1)));
  EXPECT_EQ(listed(spectrum(input, output)).size(), 40u);
  EXPECT_NE(contents(output).find(">32 more<"), std::string::npos);
  EXPECT_GT(numberAt(contents(output), "x=\"([0-9.]+)\"[^>]*>channel<"), 920) << "beside the curves";
  saveChannels(input, 44100, {Samples(9000), {tones(44100, 9000, {{1000, -6}})}});
  expectLine(spectrum(input, output), "channel 1: silent\nchannel 2: its strongest tones\n");
  saveChannels(input, 48000, {Samples(9000), Samples(9000)});
  spectrum(input, output);
  const std::string cells = contents(output).substr(contents(output).find("<g "));
  EXPECT_EQ(matches(cells.substr(0, cells.find("</g>")), "<path ").size(), 1u) << "nothing but the darkest shade";
  Samples broken = tones(48000, 48'000, {{1000, -100}});
  broken[100] = NAN, broken[101] = INFINITY, broken[40'000] = -1e300;
  saveChannels(input, 48000, {broken});
  expectLine(spectrum(input, output), "not finite: 3 samples, taken as zeros\n");
  for (const std::string& voice : voices()) EXPECT_FALSE(listed(spectrum(voice, output))[0].empty());
}

TEST(Spectrum, RefusesInOneLineAndKeepsWhatIsThere) {
  const Folder folder;
  save(folder / "good.wav", {48000, 1, std::vector<int16_t>(48'000, 1000)});
  save(folder / "empty.wav", {48000, 1, {}});
  saveSound(folder / "out.svg", {SF_FORMAT_WAV | SF_FORMAT_PCM_16, 48000, 1, "42"});  // any file
  const std::string before = contents(folder / "out.svg");
  const Words names = folder.names();
  const struct {
    const char *input, *output, *reason;
  } cases[] = {{"absent.wav", "out.svg", "absent.wav: No such file"},
               {"empty.wav", "out.svg", "holds no samples"},
               {".", "out.svg", "it is a folder"},
               {"good.wav", "absent/out.svg", "cannot write"},
               {"good.wav", ".", "it is there and not a file"},
               {"good.wav", "other.wav", "other.wav: this command writes SVG, not wav"},
               {"good.wav", "good.wav", "it is the recording itself"}};
  for (const auto& bad : cases) {
    SCOPED_TRACE(std::string(bad.input) + " " + bad.output);
    expectRefusal(wavtool({"spectrum", folder / bad.input, folder / bad.output}), bad.reason);
  }
  expectRefusal(wavtool({"spectrum", folder / "good.wav"}), "OUT.svg is required");
  // The disk is full while the picture is being written.
  expectRefusal(wavtool({"spectrum", folder / "good.wav", folder / "out.svg"}, "ulimit -f 8; "), "cannot write");
  EXPECT_EQ(contents(folder / "out.svg"), before);
  EXPECT_EQ(folder.names(), names);
}

}  // namespace
