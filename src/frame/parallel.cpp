#include "frame/parallel.h"

#include <omp.h>

#include <algorithm>

#include "orpcore.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace orpsp {
namespace {

constexpr int kMostThreads = 2;  // of an element-wise call, however many the core library grants

// Idle threads of the OpenMP team wait in the runtime's code for the next region. That code must outlive the library
// being unloaded: on Linux it is libgomp, on Windows it is linked into the DLL itself.
void keepThreadRuntimeLoaded() {
#if defined(_WIN32)
  HMODULE module;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                     reinterpret_cast<LPCWSTR>(&keepThreadRuntimeLoaded), &module);
#else
  Dl_info runtime;
  if (dladdr(reinterpret_cast<void*>(&omp_get_thread_num), &runtime) && runtime.dli_fname)
    dlopen(runtime.dli_fname, RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
#endif
}

// A region of at most `most` threads: work(thread, threads of the team) on each of them.
template <class Work>
void inTeam(int most, const Work& work) {
  static const bool kept = (keepThreadRuntimeLoaded(), true);
  static_cast<void>(kept);
#pragma omp parallel num_threads(most)
  work(omp_get_thread_num(), omp_get_num_threads());
}

}  // namespace

bool forEachPart(int len, int threshold, PartFunction part, const void* call) {
  const int granted = len < threshold ? 1 : ownGetNumThreads();
  if (granted < 2 || len < granted) return part(call, 0, len) != 0;

  int failed = 0;
  inTeam(std::min(granted, kMostThreads), [&](int thread, int team) {
    const int chunk = len / team, begin = thread * chunk;
    const int count = thread == team - 1 ? len - begin : chunk;
    if (part(call, begin, count) != 0) {
#pragma omp atomic
      ++failed;
    }
  });
  return failed != 0;
}

bool mayUseTwoThreads() { return ownGetNumThreads() >= 2; }

int grantedThreads() { return std::max(1, ownGetNumThreads()); }

void onThreads(int most, TeamFunction work, const void* call) {
  if (most < 2) return work(call, 0, 1);
  inTeam(most, [=](int thread, int team) { work(call, thread, team); });
}

void onTwoThreads(HalfFunction half, const void* call) {
  inTeam(2, [=](int thread, int team) {
    for (int which = thread; which < 2; which += team) half(call, which);  // a nested region has one thread
  });
}

}  // namespace orpsp
