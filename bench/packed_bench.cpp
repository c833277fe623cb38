// Products and expansion of packed spectra against plain loops.
#include <array>

#include "cases.h"

int main(int argc, char** argv) {
  const std::array groups = {bench::packedCases()};
  return bench::run(groups, argc, argv);
}
