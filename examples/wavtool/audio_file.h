// 16-bit PCM recordings in WAV files.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

struct sf_private_tag;

namespace wavtool {

struct AudioFormat {
  int rate = 0;      // samples per second and channel
  int channels = 0;  // samples of one moment stand side by side: a frame
  bool operator==(const AudioFormat&) const = default;
};

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

  // Fills `samples` (whole frames) from where the last read ended; fewer only at the end of the file.
  std::span<int16_t> read(std::span<int16_t> samples);

 private:
  std::string path_;
  AudioHandle file_;
  AudioFormat format_;
  int64_t frames_ = 0, done_ = 0;
};

// Writes beside `path` and takes its place in one step when it is complete: if anything fails before, a file that was
// there stays as it was and no other is left behind.
class AudioWriter {
 public:
  AudioWriter(const std::string& path, AudioFormat format);
  ~AudioWriter();
  AudioWriter(const AudioWriter&) = delete;
  AudioWriter& operator=(const AudioWriter&) = delete;

  void write(std::span<const int16_t> samples);
  void finish();

 private:
  std::string path_, unfinished_;
  AudioHandle file_;
};

}  // namespace wavtool
