#include "new_file.h"

#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "failure.h"

namespace wavtool {
namespace fs = std::filesystem;

namespace {

constinit std::atomic<const char*> toRemove = nullptr;
static_assert(decltype(toRemove)::is_always_lock_free, "a signal handler reads it");

extern "C" void removeAndEnd(int signal) {
  if (const char* path = toRemove) unlink(path);
  raise(signal);  // to its default action, as soon as this handler returns
}

void removeWhenEnded(const std::string& path) {
  toRemove = path.c_str();
  signal(SIGXFSZ, SIG_IGN);  // a write beyond the limit fails like any other that fails
  for (const int ending : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGXCPU}) {
    struct sigaction action {};
    sigaction(ending, nullptr, &action);
    if (action.sa_handler == SIG_IGN) continue;  // by nohup, for example
    action.sa_handler = removeAndEnd;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigfillset(&action.sa_mask);
    sigaction(ending, &action, nullptr);
  }
}

// Whether programs take a file of this name for one of a well-known format.
bool promisesFormat(std::string_view extension) {
  constexpr std::string_view kExtensions[] = {
      ".aac",  ".ac3", ".aif",  ".aifc", ".aiff", ".amr", ".ape",  ".au",   ".bmp", ".caf",  ".csv", ".eps",
      ".flac", ".gif", ".htm",  ".html", ".jpeg", ".jpg", ".m4a",  ".mka",  ".mkv", ".mov",  ".mp2", ".mp3",
      ".mp4",  ".oga", ".ogg",  ".opus", ".pcm",  ".pdf", ".png",  ".ps",   ".raw", ".rf64", ".snd", ".spx",
      ".svg",  ".tif", ".tiff", ".txt",  ".w64",  ".wav", ".webm", ".webp", ".wma", ".wv",   ".xml"};
  return std::find(std::begin(kExtensions), std::end(kExtensions), extension) != std::end(kExtensions);
}

std::string lowerCase(std::string text) {
  for (char& c : text)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return text;
}

}  // namespace

NewFile::NewFile(const std::string& path, const std::string& format)
    : path_(path), unfinished_(path + "." + std::to_string(getpid()) + ".part") {
  const std::string extension = lowerCase(fs::path(path).extension().string());
  if (extension != "." + lowerCase(format) && promisesFormat(extension))
    fail("this command writes " + format + ", not " + extension.substr(1));
  std::error_code error;
  if (const auto status = fs::status(path, error); fs::exists(status) && !fs::is_regular_file(status))
    fail("it is there and not a file");
  removeWhenEnded(unfinished_);
}

NewFile::~NewFile() {
  std::error_code ignored;
  if (!unfinished_.empty()) fs::remove(unfinished_, ignored);
  toRemove = nullptr;
}

void NewFile::write(const std::string& text) {
  errno = 0;
  std::ofstream stream(unfinished_, std::ios::binary);
  stream << text;
  stream.close();
  if (!stream) fail(std::strerror(errno));
}

void NewFile::finish() {
  std::error_code error;
  fs::rename(unfinished_, path_, error);
  if (error) fail(error.message());
  toRemove = nullptr;
  unfinished_.clear();
}

void NewFile::fail(const std::string& reason) const { throw Failure("cannot write " + path_ + ": " + reason); }

}  // namespace wavtool
