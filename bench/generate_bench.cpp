// Windows against plain loops.
#include <array>

#include "cases.h"

int main(int argc, char** argv) {
  const std::array groups = {bench::windowCases()};
  return bench::run(groups, argc, argv);
}
