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

struct Recording {
  int rate = 48000, channels = 1;
  std::vector<int16_t> samples;
};

void save(const std::string& path, const Recording& recording);
void saveAs(const std::string& path, int format);  // a short one in another of libsndfile's formats
Recording load(const std::string& path);

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
