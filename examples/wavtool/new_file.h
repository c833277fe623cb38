// Files that appear only when they are complete.
#pragma once

#include <string>

namespace wavtool {

// Written beside a file and then put in its place, in one step; if anything fails, that one stays as it was and no
// other is left behind.
class NewFile {
 public:
  explicit NewFile(const std::string& path);
  ~NewFile();
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  const std::string& unfinished() const { return unfinished_; }  // where to write
  void finish();                                                 // after it has been closed
  [[noreturn]] void fail(const std::string& reason) const;

 private:
  std::string path_, unfinished_;
};

void writeTextFile(const std::string& path, const std::string& text);

}  // namespace wavtool
