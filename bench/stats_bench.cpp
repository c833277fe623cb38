// Reductions, extrema and searches against plain loops (-ffast-math) and VOLK.
#include <array>

#include "cases.h"

int main(int argc, char** argv) {
  const std::array groups = {bench::reductionCases(), bench::extremaCases()};
  return bench::run(groups, argc, argv);
}
