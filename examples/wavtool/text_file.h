// Text files that appear only when they are complete.
#pragma once

#include <string>

namespace wavtool {

// Replaces a file that is there in one step; if anything fails, it stays as it was and no other is left behind.
void writeTextFile(const std::string& path, const std::string& text);

}  // namespace wavtool
