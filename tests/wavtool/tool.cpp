#include "wavtool/tool.h"

#include <gtest/gtest.h>
#include <sndfile.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

namespace {

std::string quoted(const std::string& word) { return "'" + word + "'"; }

std::string contents(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

}  // namespace

Outcome run(const std::string& program, const Words& words, const std::string& before) {
  const Folder folder;
  std::string line = before + " " + quoted(program);
  for (const auto& word : words) line += " " + quoted(word);
  line += " >" + quoted(folder / "out") + " 2>" + quoted(folder / "err") + " </dev/null";
  const int status = std::system(line.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contents(folder / "out"), contents(folder / "err")};
}

void save(const std::string& path, const Recording& recording) {
  SF_INFO info{};
  info.samplerate = recording.rate;
  info.channels = recording.channels;
  info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
  SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
  const auto count = static_cast<sf_count_t>(recording.samples.size());
  EXPECT_EQ(sf_write_short(file, recording.samples.data(), count), count);
  sf_close(file);
}

void saveAs(const std::string& path, int format) {
  SF_INFO info{};
  info.samplerate = 48000;
  info.channels = 1;
  info.format = format;
  SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
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
