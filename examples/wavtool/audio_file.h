// Recordings: files of any kind that libsndfile reads, and WAV files to write.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "new_file.h"
#include "wav_header.h"

struct sf_private_tag;

namespace wavtool {

struct AudioFormat {
  int rate = 0;      // samples per second and channel
  int channels = 0;  // samples of one moment stand side by side: a frame
  bool operator==(const AudioFormat&) const = default;
};

// Types of samples, named like the library's element types and laid out as in a WAV file: least significant byte first,
// no padding. 8-bit samples are unsigned, 128 is their zero.
enum class SampleType { k8u, k16s, k24s, k32s, k32f, k64f };

constexpr bool isInteger(SampleType type) { return type <= SampleType::k32s; }
int bytesOf(SampleType type);
std::string nameOf(SampleType type);                  // "Signed 16 bit PCM"
SampleType parseSampleType(const std::string& word);  // what --bits says: "8", "16", "24", "float"

struct CloseAudio {
  void operator()(sf_private_tag* file) const;
};
using AudioHandle = std::unique_ptr<sf_private_tag, CloseAudio>;

class AudioReader {
 public:
  explicit AudioReader(const std::string& path);

  const std::string& path() const { return path_; }
  AudioFormat format() const { return format_; }
  int64_t frames() const { return frames_; }  // of the whole file
  bool isWav() const { return header_.isWav; }
  const std::string& nameOfSamples() const { return nameOfSamples_; }

  // Of the samples in the file; of compressed ones, the type that holds what they decode to.
  SampleType type() const { return type_; }

  // What read() gives: samples of type(), just as they are in the file, wherever that is possible. Otherwise libsndfile
  // decodes integers to 32 bits, the sample in the upper ones, and everything else to floating point.
  SampleType readsAs() const { return readsAs_; }

  // Reads up to `frames` frames from where the last read ended; returns how many, fewer only at the end of the file.
  size_t read(void* samples, size_t frames);

 private:
  std::string path_, nameOfSamples_;
  WavHeader header_;
  std::unique_ptr<MendedFile> mended_;  // read by file_, if there is one
  AudioHandle file_;
  AudioFormat format_;
  SampleType type_, readsAs_;
  bool asInFile_;
  int64_t frames_ = 0, done_ = 0;
};

// Writes a WAV file beside `path`, which takes its place in one step when it is complete: if anything fails before, a
// file that was there stays as it was and no other is left behind.
class AudioWriter {
 public:
  AudioWriter(const std::string& path, AudioFormat format, SampleType type);

  void write(const void* samples, size_t count);  // whole frames
  void finish();

 private:
  NewFile file_;
  AudioHandle audio_;  // closed before an unfinished file is removed
  SampleType type_;
};

}  // namespace wavtool
