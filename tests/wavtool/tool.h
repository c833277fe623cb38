// Runs wavtool and makes recordings for it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

using Words = std::vector<std::string>;

struct Outcome {
  int status;
  std::string out, err;
};

// `before`: what stands before the program in the shell's command line, such as "NAME=value".
Outcome run(const std::string& program, const Words& words, const std::string& before = "");
Outcome wavtool(const Words& words, const std::string& before = "");

// One line that begins with the program's name and holds the reason, and nothing else.
void expectRefusal(const Outcome& outcome, const std::string& reason);

// A line of what it printed begins like this.
void expectLine(const Outcome& outcome, const std::string& begin);

// Masks of processor features that select each vector width.
inline constexpr const char* kWidths[] = {"ORPCORE_CPU_FEATURES=0x10", "ORPCORE_CPU_FEATURES=0x130",
                                          "ORPCORE_CPU_FEATURES=0x330"};

struct Recording {
  int rate = 48000, channels = 1;
  std::vector<int16_t> samples;
};

void save(const std::string& path, const Recording& recording);
void saveAs(const std::string& path, int format);  // a short one in another of libsndfile's formats
Recording load(const std::string& path);

// A file of any of libsndfile's formats, its samples as the bytes that stand in it.
struct Sound {
  int format = 0, rate = 48000, channels = 1;
  std::string bytes;
  bool operator==(const Sound&) const = default;
};

template <class T>
std::string bytesOf(const std::vector<T>& samples) {
  return std::string(reinterpret_cast<const char*>(samples.data()), sizeof(T) * samples.size());
}

std::string contents(const std::string& path);
void saveSound(const std::string& path, const Sound& sound);
Sound loadSound(const std::string& path);

// The same samples in a file of another kind, or of one that does not hold them as plain bytes: from 32 bits each.
void saveSamples(const std::string& path, int format, int channels, const std::vector<int32_t>& samples);
std::vector<int32_t> loadSamples(const std::string& path);

std::string randomBytes(size_t count, unsigned seed);

// Recordings of a voice that ./run.sh uses; none where they are not installed.
std::vector<std::string> voices();

// A folder of its own for each test, removed afterwards.
class Folder {
 public:
  Folder();
  ~Folder();
  std::string operator/(const std::string& name) const { return (path_ / name).string(); }
  std::vector<std::string> names() const;  // sorted

 private:
  std::filesystem::path path_;
};
