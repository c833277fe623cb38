#include "wavtool/tool.h"

#include <gtest/gtest.h>
#include <sndfile.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>

namespace fs = std::filesystem;

namespace {

std::string quoted(const std::string& word) { return "'" + word + "'"; }

SNDFILE* openToWrite(const std::string& path, int format, int rate, int channels) {
  SF_INFO info{};
  info.samplerate = rate;
  info.channels = channels;
  info.format = format;
  SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
  EXPECT_NE(file, nullptr) << path << ": " << sf_strerror(nullptr);
  return file;
}

}  // namespace

std::string contents(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

Outcome run(const std::string& program, const Words& words, const std::string& before) {
  const Folder folder;
  std::string line = before + " " + quoted(program);
  for (const auto& word : words) (line += ' ') += quoted(word);
  line += " >" + quoted(folder / "out") + " 2>" + quoted(folder / "err") + " </dev/null";
  const int status = std::system(line.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contents(folder / "out"), contents(folder / "err")};
}

Outcome wavtool(const Words& words, const std::string& before) { return run(WAVTOOL, words, before); }

void expectRefusal(const Outcome& outcome, const std::string& reason) {
  EXPECT_GT(outcome.status, 0);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err.find("wavtool: "), 0u) << outcome.err;
  EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
  EXPECT_NE(outcome.err.find(reason), std::string::npos) << "expected: " << reason << "\n" << outcome.err;
}

void expectLine(const Outcome& outcome, const std::string& begin) {
  EXPECT_NE(("\n" + outcome.out).find("\n" + begin), std::string::npos) << "expected: " << begin << "\n"
                                                                        << outcome.out << outcome.err;
}

void save(const std::string& path, const Recording& recording) {
  SNDFILE* file = openToWrite(path, SF_FORMAT_WAV | SF_FORMAT_PCM_16, recording.rate, recording.channels);
  const auto count = static_cast<sf_count_t>(recording.samples.size());
  EXPECT_EQ(sf_write_short(file, recording.samples.data(), count), count);
  sf_close(file);
}

void saveAs(const std::string& path, int format) {
  SNDFILE* file = openToWrite(path, format, 48000, 1);
  const short samples[4] = {1, 2, 3, 4};
  EXPECT_EQ(sf_write_short(file, samples, 4), 4) << path;
  sf_close(file);
}

Recording load(const std::string& path) {
  SF_INFO info{};
  SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
  if (!file) return {0, 0, {}};
  EXPECT_EQ(info.format, SF_FORMAT_WAV | SF_FORMAT_PCM_16);
  Recording recording{info.samplerate, info.channels,
                      std::vector<int16_t>(static_cast<size_t>(info.frames * info.channels))};
  EXPECT_EQ(sf_readf_short(file, recording.samples.data(), info.frames), info.frames);
  sf_close(file);
  return recording;
}

void saveSound(const std::string& path, const Sound& sound) {
  SNDFILE* file = openToWrite(path, sound.format, sound.rate, sound.channels);
  const auto size = static_cast<sf_count_t>(sound.bytes.size());
  EXPECT_EQ(sf_write_raw(file, sound.bytes.data(), size), size);
  sf_close(file);
}

Sound loadSound(const std::string& path) {
  SF_INFO info{};
  SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
  if (!file) return {};
  constexpr int kBytes[] = {0, 1, 2, 3, 4, 1, 4, 8};  // of libsndfile's plain formats, from SF_FORMAT_PCM_S8 on
  const int format = info.format & SF_FORMAT_SUBMASK;
  const sf_count_t size = format < 8 ? info.frames * info.channels * kBytes[format] : 0;
  Sound sound{info.format, info.samplerate, info.channels, std::string(static_cast<size_t>(size), 0)};
  EXPECT_EQ(sf_read_raw(file, sound.bytes.data(), size), size) << path;
  sf_close(file);
  return sound;
}

void saveSamples(const std::string& path, int format, int channels, const std::vector<int32_t>& samples) {
  SNDFILE* file = openToWrite(path, format, 48000, channels);
  sf_command(file, SFC_SET_SCALE_INT_FLOAT_WRITE, nullptr, SF_TRUE);
  const auto count = static_cast<sf_count_t>(samples.size());
  EXPECT_EQ(sf_write_int(file, samples.data(), count), count) << path;
  sf_close(file);
}

std::vector<int32_t> loadSamples(const std::string& path) {
  SF_INFO info{};
  SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
  if (!file) return {};
  std::vector<double> read(static_cast<size_t>(info.frames * info.channels));
  EXPECT_EQ(sf_readf_double(file, read.data(), info.frames), info.frames);
  sf_close(file);
  std::vector<int32_t> samples;
  for (const double sample : read)
    samples.push_back(static_cast<int32_t>(std::clamp<double>(sample * 0x1p31, INT32_MIN, INT32_MAX)));
  return samples;
}

std::string randomBytes(size_t count, unsigned seed) {
  std::mt19937 random(seed);
  std::string bytes(count, 0);
  for (char& byte : bytes) byte = static_cast<char>(random() >> 24);
  return bytes;
}

std::vector<std::string> voices() {
  std::vector<std::string> paths;
  for (const std::string name : {"Front_Left", "Rear_Right"})
    if (const std::string path = "/usr/share/sounds/alsa/" + name + ".wav"; fs::exists(path)) paths.push_back(path);
  return paths;
}

Folder::Folder() {
  std::string name = (fs::temp_directory_path() / "wavtool_test.XXXXXX").string();
  if (!mkdtemp(name.data())) std::abort();
  path_ = name;
}

Folder::~Folder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

std::vector<std::string> Folder::names() const {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(path_)) names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}
