// digests_equal FILE...: the digests of each export are the same in all configurations, or in all of one width where
// the digest says that it holds for that one only.
// Files of configurations that the processor cannot run are absent; one file alone proves nothing (77, skipped).
#include <cstdio>
#include <fstream>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

struct Digest {
  std::string widths, value;
};
using Digests = std::map<std::string, Digest>;  // by export

Digests read(std::istream& file) {
  Digests digests;
  for (std::string name, widths, value; file >> name >> widths >> value;) digests[name] = {widths, value};
  return digests;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::pair<std::string, Digests>> files;
  for (int i = 1; i < argc; ++i) {
    std::ifstream file(argv[i]);
    if (file) files.emplace_back(argv[i], read(file));
  }
  if (files.size() < 2) {
    std::printf("%zu of %d configurations ran: nothing to compare\n", files.size(), argc - 1);
    return 77;
  }
  const size_t exports = files.front().second.size();
  int differences = exports == 0 ? 1 : 0;
  std::map<std::pair<std::string, std::string>, std::pair<std::string, std::string>> expected;  // file and digest
  for (const auto& [fileName, digests] : files) {
    if (digests.size() != exports) ++differences;
    for (const auto& [name, digest] : digests) {
      if (!files.front().second.contains(name)) ++differences;
      const auto& [firstName, value] =
          expected.try_emplace({name, digest.widths}, fileName, digest.value).first->second;
      if (value == digest.value) continue;
      std::printf("%s differs: %s, %s\n", name.c_str(), firstName.c_str(), fileName.c_str());
      ++differences;
    }
  }
  std::printf("%zu exports, %zu configurations, %d differences\n", exports, files.size(), differences);
  return differences == 0 ? 0 : 1;
}
