#include "commands.h"

namespace wavtool {

void addAudioCommands(CLI::App& tool, const Options& options) {
  addMix(tool, options);
  addConvert(tool, options);
  addLimit(tool, options);
  addStats(tool, options);
  addSpectrum(tool, options);
  addTone(tool, options);
  addNoise(tool, options);
  addCompanding(tool, options);
}

}  // namespace wavtool
