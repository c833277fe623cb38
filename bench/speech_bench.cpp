// Companding, Cauchy functions and helpers of speech coders and modems against plain loops.
#include <array>

#include "cases.h"

int main(int argc, char** argv) {
  const std::array groups = {bench::compandingCases(), bench::signalCases(), bench::viterbiCases()};
  return bench::run(groups, argc, argv);
}
