#include "audio_file.h"

#include <sndfile.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "failure.h"

namespace wavtool {
namespace fs = std::filesystem;

namespace {

uint32_t littleEndian(const char* bytes) {
  uint32_t value = 0;
  for (int i = 3; i >= 0; --i) value = value << 8 | static_cast<unsigned char>(bytes[i]);
  return value;
}

// libsndfile reads what there is of a file that was cut short, as if it were the whole recording. So look first: a WAV
// file is "RIFF", a size, "WAVE", and chunks of a name, a size and that many bytes; "data" holds the samples.
void expectWholeWav(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::array<char, 12> head;
  if (!file) throw Failure("cannot open " + path + ": " + std::strerror(errno));
  if (fs::is_directory(path)) throw Failure("cannot open " + path + ": it is a folder");
  const auto tagAt = [&head](size_t offset) { return std::string_view(head.data() + offset, 4); };
  if (!file.read(head.data(), 12) || tagAt(0) != "RIFF" || tagAt(8) != "WAVE")
    throw Failure(path + " is not a WAV file");
  const uint64_t size = fs::file_size(path);
  for (uint64_t at = 12; file.seekg(static_cast<std::streamoff>(at)) && file.read(head.data(), 8);) {
    const uint64_t length = littleEndian(head.data() + 4), end = at + 8 + length;
    if (tagAt(0) == "data") {
      if (end <= size) return;
      throw Failure(path + " is cut short: its header promises " + std::to_string(length) + " bytes of samples, " +
                    std::to_string(size - at - 8) + " are there");
    }
    at = end + length % 2;
  }
  throw Failure(path + " is cut short: it ends before its samples begin");
}

std::string nameOfFormat(int format) {
  SF_FORMAT_INFO info{};
  info.format = format & SF_FORMAT_SUBMASK;
  const bool known = sf_command(nullptr, SFC_GET_FORMAT_INFO, &info, sizeof(info)) == 0 && info.name;
  return known ? info.name : "of an unknown kind";
}

}  // namespace

void CloseAudio::operator()(SNDFILE* file) const { sf_close(file); }

AudioReader::AudioReader(const std::string& path) : path_(path) {
  expectWholeWav(path);
  SF_INFO info{};
  file_.reset(sf_open(path.c_str(), SFM_READ, &info));
  if (!file_) throw Failure("cannot read " + path + ": " + sf_strerror(nullptr));
  if ((info.format & SF_FORMAT_SUBMASK) != SF_FORMAT_PCM_16)
    throw Failure(path + " does not hold 16-bit PCM samples: its samples are " + nameOfFormat(info.format));
  if (info.frames < 1) throw Failure(path + " holds no samples");
  format_ = {info.samplerate, info.channels};
  frames_ = info.frames;
}

std::span<int16_t> AudioReader::read(std::span<int16_t> samples) {
  const auto channels = static_cast<size_t>(format_.channels);
  const sf_count_t count =
      sf_readf_short(file_.get(), samples.data(), static_cast<sf_count_t>(samples.size() / channels));
  done_ += count;
  const auto filled = samples.first(static_cast<size_t>(count) * channels);
  if (filled.size() < samples.size() && done_ < frames_) throw Failure("cannot read all of " + path_);
  return filled;
}

AudioWriter::AudioWriter(const std::string& path, AudioFormat format)
    : path_(path), unfinished_(path + "." + std::to_string(getpid()) + ".part") {
  std::error_code ignored;
  if (const auto status = fs::status(path, ignored); fs::exists(status) && !fs::is_regular_file(status))
    throw Failure("cannot write " + path + ": it is there and not a file");
  SF_INFO info{};
  info.samplerate = format.rate;
  info.channels = format.channels;
  info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
  file_.reset(sf_open(unfinished_.c_str(), SFM_WRITE, &info));
  if (!file_) {
    std::error_code error;
    fs::remove(unfinished_, error);
    throw Failure("cannot write " + path + ": " + sf_strerror(nullptr));
  }
}

AudioWriter::~AudioWriter() {
  if (unfinished_.empty()) return;
  file_.reset();
  std::error_code ignored;
  fs::remove(unfinished_, ignored);
}

void AudioWriter::write(std::span<const int16_t> samples) {
  const auto count = static_cast<sf_count_t>(samples.size());
  if (sf_write_short(file_.get(), samples.data(), count) != count)
    throw Failure("cannot write " + path_ + ": " + sf_strerror(file_.get()));
}

void AudioWriter::finish() {
  std::error_code error;
  if (sf_close(file_.release()) != 0) throw Failure("cannot write " + path_);
  fs::rename(unfinished_, path_, error);
  if (error) throw Failure("cannot write " + path_ + ": " + error.message());
  unfinished_.clear();
}

}  // namespace wavtool
