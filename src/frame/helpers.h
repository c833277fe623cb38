// Threads that take parts of a call off the calling thread's hands.
#pragma once

#include <cstdint>

#include "frame/parallel.h"

namespace orpsp {

// What a shared call took, in ticks of the processor's counter.
struct Shared {
  int64_t ticks;       // in all
  int64_t ownTicks;    // the calling thread's, in its parts
  int ownParts;        // done by the calling thread
  int threads;         // parts in all
  bool woke;           // a helper was woken or started
  bool sameProcessor;  // a helper ran on the calling thread's processor
};

// Whether one of so many helpers waits for work; with `mayWake` also if it sleeps, or can be started.
bool helperIsFree(int number, bool mayWake);

// Does all parts on at most `most` threads, with any of so many helpers, and returns when all are done. The calling
// thread does part 0, and then every part whose helper has not begun: it waits only for helpers in the middle of their
// part. A helper works under the calling thread's floating-point environment; exceptions that it raises are raised in
// the calling thread.
//
// Helpers are started when they are wanted for the first time, and done without where that fails or where they are
// busy with another call. Without work, a helper looks for some for 30 to 130 microseconds, then sleeps.
Shared runWithHelpers(int most, int number, bool mayWake, TeamFunction work, const void* call);

}  // namespace orpsp
