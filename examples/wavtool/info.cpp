// wavtool info: which library this is and what it chose to run on.
#include <CLI/App.hpp>
#include <cinttypes>
#include <cstdio>

#include "commands.h"
#include "library.h"

namespace wavtool {
namespace {

struct Calls {
  const Library& library;
  WAVTOOL_FUNCTION(orpsGetLibVersion);
  WAVTOOL_FUNCTION(orpGetEnabledCpuFeatures);
  WAVTOOL_FUNCTION(orpGetVectorBits);
  WAVTOOL_FUNCTION(ownGetNumThreads);
};

std::string featureNames(uint64_t mask) {
  constexpr struct {
    uint64_t bit;
    const char* name;
  } kFeatures[] = {
      {ORP_CPU_SSSE3, "SSSE3 "}, {ORP_CPU_MOVBE, "MOVBE "}, {ORP_CPU_AVX2, "AVX2 "}, {ORP_CPU_AVX512, "AVX-512 "}};
  std::string names;
  for (const auto& feature : kFeatures)
    if (mask & feature.bit) names += feature.name;
  return names;
}

void info(const Options& options) {
  const Library library(options.library);
  const Calls calls{library};
  const OrpLibraryVersion& version = *calls.orpsGetLibVersion();
  const uint64_t features = calls.orpGetEnabledCpuFeatures();
  std::printf("library       %s\n", library.file().string().c_str());
  std::printf("name          %s\n", version.nameText);
  std::printf("version       %s of %s (%d.%d.%d, build %d)\n", version.versionText, version.dateText, version.major,
              version.minor, version.revision, version.buildNumber);
  std::printf("variant       %.4s\n", version.cpuCode);
  std::printf("vector width  %d bits\n", calls.orpGetVectorBits());
  std::printf("features      %s(0x%" PRIx64 ")\n", featureNames(features).c_str(), features);
  std::printf("threads       %d\n", calls.ownGetNumThreads());
}

}  // namespace

void addInfo(CLI::App& tool, const Options& options) {
  tool.add_subcommand("info", "Show the library's version, processor variant, vector width and threads")
      ->callback([&options] { info(options); });
}

}  // namespace wavtool
