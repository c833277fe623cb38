// digests_equal FILE...: the digests that the sweep wrote at each width and variant are the same.
// Files of configurations that the processor cannot run are absent; one file alone proves nothing (77, skipped).
#include <cstdio>
#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace {

using Digests = std::map<std::string, std::string>;  // by export

Digests read(std::istream& file) {
  Digests digests;
  for (std::string name, digest; file >> name >> digest;) digests[name] = digest;
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
  const auto& [firstName, expected] = files.front();
  int differences = expected.empty() ? 1 : 0;
  for (const auto& [fileName, digests] : files) {
    if (digests.size() != expected.size()) ++differences;
    for (const auto& [name, digest] : digests) {
      const auto other = expected.find(name);
      if (other != expected.end() && other->second == digest) continue;
      std::printf("%s differs: %s, %s\n", name.c_str(), firstName.c_str(), fileName.c_str());
      ++differences;
    }
  }
  std::printf("%zu exports, %zu configurations, %d differences\n", expected.size(), files.size(), differences);
  return differences == 0 ? 0 : 1;
}
