// The commands of wavtool, one file each. A command adds itself to the command line, with what it does when it is
// chosen.
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace wavtool {

// What stands on the command line before or after any command.
struct Options {
  std::string library;  // --library
};

void addInfo(CLI::App& tool, const Options& options);
void addMix(CLI::App& tool, const Options& options);
void addConvert(CLI::App& tool, const Options& options);
void addLimit(CLI::App& tool, const Options& options);
void addStats(CLI::App& tool, const Options& options);
void addSpectrum(CLI::App& tool, const Options& options);
void addTone(CLI::App& tool, const Options& options);
void addNoise(CLI::App& tool, const Options& options);
void addCompanding(CLI::App& tool, const Options& options);  // alaw and mulaw

// The commands that read and write recordings: all of them, or, in a build without libsndfile, one line of apology
// each.
void addAudioCommands(CLI::App& tool, const Options& options);

}  // namespace wavtool
