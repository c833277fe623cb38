// How long something took, next to how long it plays.
#pragma once

#include <chrono>

namespace wavtool {

class Stopwatch {
 public:
  void start() { start_ = Clock::now(); }
  void stop() { seconds_ += std::chrono::duration<double>(Clock::now() - start_).count(); }
  double seconds() const { return seconds_; }  // from every start to its stop, in sum

 private:
  using Clock = std::chrono::steady_clock;
  Clock::time_point start_;
  double seconds_ = 0;
};

// A recording of `length` seconds was "mixed" in `working` by the library, in `whole` with what there is `around` it.
void printSpeed(const char* done, double length, const Stopwatch& working, const Stopwatch& whole,
                const char* around = "reading, measuring and writing");

}  // namespace wavtool
