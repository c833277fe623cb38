// The vector subsystem against plain loops, VOLK and SLEEF.
#include <array>

#include "cases.h"

int main(int argc, char** argv) {
  const std::array groups = {bench::arithmeticCases(), bench::convertCases(), bench::thresholdCases(),
                             bench::mathsCases(), bench::complexCases()};
  return bench::run(groups, argc, argv);
}
