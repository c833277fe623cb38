// Files that appear only when they are complete.
#pragma once

#include <string>

namespace wavtool {

// Written beside a file and then put in its place, in one step; if anything fails or a signal ends the program, that
// one stays as it was and no other is left behind. There is one at a time.
class NewFile {
 public:
  // `format`: "WAV". Refuses a name by which users would take the file for one of another format.
  NewFile(const std::string& path, const std::string& format);
  ~NewFile();
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  const std::string& unfinished() const { return unfinished_; }  // where to write
  void write(const std::string& text);                           // all that it is to hold
  void finish();                                                 // after it has been closed
  [[noreturn]] void fail(const std::string& reason) const;

 private:
  std::string path_, unfinished_;
};

}  // namespace wavtool
