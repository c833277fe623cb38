// The sizes in a WAV file's header, looked at before libsndfile reads the file: it takes what there is of a recording
// that was cut short for the whole of it, and a size that was never filled in for the size.
#pragma once

#include <cstdint>
#include <fstream>
#include <string>

struct SF_INFO;
struct sf_private_tag;

namespace wavtool {

struct WavHeader {
  bool isWav = false;
  // Where the number of bytes of samples stands and what it should have been, if libsndfile has to be told.
  uint64_t sizeAt = 0;
  uint32_t size = 0;
};

// Of any file that can be read. A WAV file must hold all samples that its header promises, or promise nothing: a
// recorder that was stopped, or that wrote into a pipe, leaves there a zero or the largest size that it knows.
WavHeader readWavHeader(const std::string& path);

// A file whose header holds the right size when libsndfile reads it.
class MendedFile {
 public:
  MendedFile(const std::string& path, const WavHeader& header) : stream_(path, std::ios::binary), header_(header) {}

  sf_private_tag* open(SF_INFO* info);  // reads from this object, as sf_open() does from a file

 private:
  int64_t read(char* to, int64_t count);

  std::ifstream stream_;
  WavHeader header_;
};

}  // namespace wavtool
