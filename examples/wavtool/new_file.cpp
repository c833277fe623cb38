#include "new_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "failure.h"

namespace wavtool {
namespace fs = std::filesystem;

NewFile::NewFile(const std::string& path) : path_(path), unfinished_(path + "." + std::to_string(getpid()) + ".part") {
  std::error_code error;
  if (const auto status = fs::status(path, error); fs::exists(status) && !fs::is_regular_file(status))
    fail("it is there and not a file");
}

NewFile::~NewFile() {
  std::error_code ignored;
  if (!unfinished_.empty()) fs::remove(unfinished_, ignored);
}

void NewFile::finish() {
  std::error_code error;
  fs::rename(unfinished_, path_, error);
  if (error) fail(error.message());
  unfinished_.clear();
}

void NewFile::fail(const std::string& reason) const { throw Failure("cannot write " + path_ + ": " + reason); }

void writeTextFile(const std::string& path, const std::string& text) {
  NewFile file(path);
  errno = 0;
  std::ofstream stream(file.unfinished(), std::ios::binary);
  stream << text;
  stream.close();
  if (!stream) file.fail(std::strerror(errno));
  file.finish();
}

}  // namespace wavtool
