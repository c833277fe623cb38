#include "stopwatch.h"

#include <cstdio>

namespace wavtool {

void printSpeed(const char* done, double length, const Stopwatch& working, const Stopwatch& whole, const char* around) {
  std::printf("speed: %s in %.3f ms, %.0f times real time; %.3f ms with %s, %.0f times\n", done,
              1e3 * working.seconds(), length / working.seconds(), 1e3 * whole.seconds(), around,
              length / whole.seconds());
}

}  // namespace wavtool
