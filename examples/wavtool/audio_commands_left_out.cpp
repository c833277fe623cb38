// Stands in for the commands that read and write recordings where there is no libsndfile.
#include <CLI/App.hpp>

#include "commands.h"
#include "failure.h"

namespace wavtool {

void addAudioCommands(CLI::App& tool, const Options&) {
  for (const std::string name : {"mix", "convert", "limit", "stats", "spectrum", "tone", "noise", "alaw", "mulaw"})
    tool.add_subcommand(name, "(not in this build: it was made without libsndfile)")
        ->fallthrough(false)
        ->allow_extras()
        ->callback([name] { throw Failure(name + " is not in this build: it was made without libsndfile"); });
}

}  // namespace wavtool
