// Windows and generators against plain loops.
#include <array>

#include "cases.h"

int main(int argc, char** argv) {
  const std::array groups = {bench::toneCases(), bench::windowCases(), bench::randomCases()};
  return bench::run(groups, argc, argv);
}
