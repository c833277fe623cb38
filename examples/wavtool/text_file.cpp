#include "text_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "failure.h"

namespace wavtool {
namespace fs = std::filesystem;

void writeTextFile(const std::string& path, const std::string& text) {
  std::error_code error;
  if (const auto status = fs::status(path, error); fs::exists(status) && !fs::is_regular_file(status))
    throw Failure("cannot write " + path + ": it is there and not a file");
  const std::string unfinished = path + "." + std::to_string(getpid()) + ".part";
  errno = 0;
  std::ofstream file(unfinished, std::ios::binary);
  file << text;
  file.close();
  std::string reason = std::strerror(errno);
  if (file) {
    fs::rename(unfinished, path, error);
    if (!error) return;
    reason = error.message();
  }
  fs::remove(unfinished, error);
  throw Failure("cannot write " + path + ": " + reason);
}

}  // namespace wavtool
