// When and how a long call is shared by threads.
#pragma once

#include <climits>
#include <cstddef>
#include <type_traits>

#include "frame/access.h"

namespace orpsp {

// Part of the elements [begin, begin + count) of a call; nonzero means that the part saw the call's warning condition.
using PartFunction = int (*)(const void* call, int begin, int count);

// Runs `part` over [0, len): on the calling thread if len < threshold or the core library grants one thread, else in at
// most two contiguous parts, the last one taking the remainder. True if any part answered nonzero.
bool forEachPart(int len, int threshold, PartFunction part, const void* call);

template <class Call>
bool forEachPart(int len, int threshold, const Call& call) {
  static_assert(std::is_trivially_copyable_v<Call>);
  return forEachPart(
      len, threshold,
      [](const void* opaque, int begin, int count) -> int {
        return (*static_cast<const Call*>(opaque))(begin, count) ? 1 : 0;
      },
      &call);
}

inline constexpr int kNever = INT_MAX;  // the length from which on a call that stays on its thread may use two

// kernel(begin, count) over the parts of a call; `from` is the length from which on two threads may share it. True if
// any part answers so.
template <int from, class Kernel>
bool inParts(int len, const Kernel& kernel) {
  const auto part = [=](int begin, int count) { return kernel(toSize(begin), toSize(count)); };
  return len < from ? part(0, len) : forEachPart(len, from, part);
}

// Calls `half` with 0 and with 1, if possible on two threads. Only for calls that may use two threads.
using HalfFunction = void (*)(const void* call, int which);
void onTwoThreads(HalfFunction half, const void* call);

template <class Call>
void onTwoThreads(const Call& call) {
  onTwoThreads([](const void* opaque, int which) { (*static_cast<const Call*>(opaque))(which); }, &call);
}

// The core library grants two threads or more.
bool mayUseTwoThreads();

// Where the part-th of `parts` nearly equal parts of `count` begins.
__attribute__((always_inline)) inline size_t partBegin(size_t count, int part, int parts) {
  return count * static_cast<size_t>(part) / static_cast<size_t>(parts);
}

// How many threads the core library grants, at least one.
int grantedThreads();

// Calls work(thread, threads) once for each of up to `most` threads. None may wait for another: one thread may do all.
using TeamFunction = void (*)(const void* call, int thread, int threads);
void onThreads(int most, TeamFunction work, const void* call);

template <class Work>
void onThreads(int most, const Work& work) {
  onThreads(
      most, [](const void* opaque, int thread, int threads) { (*static_cast<const Work*>(opaque))(thread, threads); },
      &work);
}

}  // namespace orpsp
