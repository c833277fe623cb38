#include "wav_header.h"

#include <sndfile.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
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

// Whether a size is the largest one that a program knew: 2^31 or 2^32 bytes less headers, in whole frames or blocks.
bool isLargest(uint64_t size) {
  constexpr uint64_t kLess = 1 << 16;
  return (size >= INT32_MAX - kLess && size <= uint64_t{INT32_MAX} + 1) || size >= UINT32_MAX - kLess;
}

std::ifstream openFile(const std::string& path) {
  std::error_code error;
  const auto status = fs::status(path, error);
  if (fs::is_directory(status)) throw Failure("cannot open " + path + ": it is a folder");
  // The header is read twice, and by some commands all of it.
  if (fs::exists(status) && !fs::is_regular_file(status))
    throw Failure("cannot open " + path + ": it is a pipe or a device; save the recording to a file first");
  std::ifstream file(path, std::ios::binary);
  if (!file) throw Failure("cannot open " + path + ": " + std::strerror(errno));
  return file;
}

}  // namespace

// A WAV file is "RIFF", a size, "WAVE", and chunks of a name, a size and that many bytes; "data" holds the samples.
WavHeader readWavHeader(const std::string& path) {
  std::ifstream file = openFile(path);
  std::array<char, 12> head;
  const auto tagAt = [&head](size_t offset) { return std::string_view(head.data() + offset, 4); };
  if (!file.read(head.data(), 12) || tagAt(0) != "RIFF" || tagAt(8) != "WAVE") return {};
  const uint64_t size = fs::file_size(path), riff = littleEndian(head.data() + 4);
  for (uint64_t at = 12; file.seekg(static_cast<std::streamoff>(at)) && file.read(head.data(), 8);) {
    const uint64_t length = littleEndian(head.data() + 4), begin = at + 8;
    if (tagAt(0) == "data") {
      const uint64_t there = size - begin;
      if (length == 0 && (riff + 8 <= begin || isLargest(riff)))
        return {true, at + 4, static_cast<uint32_t>(std::min<uint64_t>(there, UINT32_MAX))};
      if (length <= there || isLargest(length)) return {true};
      throw Failure(path + " is cut short: its header promises " + std::to_string(length) + " bytes of samples, " +
                    std::to_string(there) + " are there");
    }
    at = begin + length + length % 2;
  }
  throw Failure(path + " is cut short: it ends before its samples begin");
}

sf_private_tag* MendedFile::open(SF_INFO* info) {
  SF_VIRTUAL_IO calls{};
  calls.get_filelen = [](void* file) {
    std::ifstream& stream = static_cast<MendedFile*>(file)->stream_;
    const auto here = stream.tellg();
    const sf_count_t length = stream.seekg(0, std::ios::end).tellg();
    stream.seekg(here);
    return length;
  };
  calls.seek = [](sf_count_t offset, int from, void* file) -> sf_count_t {
    std::ifstream& stream = static_cast<MendedFile*>(file)->stream_;
    const auto origin = from == SEEK_SET ? std::ios::beg : from == SEEK_CUR ? std::ios::cur : std::ios::end;
    return stream.seekg(offset, origin).tellg();
  };
  calls.tell = [](void* file) -> sf_count_t { return static_cast<MendedFile*>(file)->stream_.tellg(); };
  calls.read = [](void* to, sf_count_t count, void* file) -> sf_count_t {
    return static_cast<MendedFile*>(file)->read(static_cast<char*>(to), count);
  };
  return sf_open_virtual(&calls, SFM_READ, info, this);
}

sf_count_t MendedFile::read(char* to, sf_count_t count) {
  const sf_count_t begin = stream_.tellg();
  count = stream_.read(to, count).gcount();
  stream_.clear();  // of the end of the file
  for (int byte = 0; byte < 4; ++byte) {
    const sf_count_t at = static_cast<sf_count_t>(header_.sizeAt) + byte - begin;
    if (at >= 0 && at < count) to[at] = static_cast<char>(header_.size >> 8 * byte);
  }
  return count;
}

}  // namespace wavtool
