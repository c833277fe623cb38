// The calls that may use two threads: from which length on, and with the results and warnings of one thread.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#if defined(__linux__)
#include <dlfcn.h>
#include <pthread.h>
#endif

#include "orpcore.h"
#include "support/call.h"
#include "support/export_tables.h"
#include "support/lengths.h"

namespace orptest {
namespace {

// The calls that use a second thread, and from which length on.
struct Shared {
  const char* name;
  int threshold;

  const Export& exported() const {
    for (const Export& each : sweptExports())
      if (std::string_view(name) == each.name) return each;
    throw std::runtime_error(std::string(name) + " is in no table");
  }
};

constexpr Shared kShared[] = {
    {"orpsSortRadixAscend_64f_I", 32},
    {"orpsSortRadixDescend_64f_I", 32},
    {"orpsSqrt_64fc", 64},
    {"orpsSqrt_64fc_I", 64},
    {"orpsDiv_16sc_Sfs", 256},
    {"orpsMagnitude_32sc_Sfs", 256},
    {"orpsMagnitude_64f", 256},
    {"orpsMagnitude_64fc", 256},
    {"orpsSqrt_16sc_Sfs", 256},
    {"orpsSqrt_16sc_ISfs", 256},
    {"orpsDiv_Round_8u_Sfs", 512},
    {"orpsSqrt_32fc", 512},
    {"orpsSqrt_32fc_I", 512},
    {"orpsSqrt_64f", 512},
    {"orpsSqrt_64f_I", 512},
    {"orpsSqrt_64s16s_Sfs", 512},
    {"orpsThreshold_LTInv_64fc", 512},
    {"orpsThreshold_LTInv_64fc_I", 512},
    {"orpsDivC_16sc_Sfs", 1024},
    {"orpsDiv_16s_Sfs", 1024},
    {"orpsDiv_32fc", 1024},
    {"orpsDiv_32s16s_Sfs", 1024},
    {"orpsDiv_32s_Sfs", 1024},
    {"orpsDiv_64f", 1024},
    {"orpsDiv_64fc", 1024},
    {"orpsDiv_8u_Sfs", 1024},
    {"orpsDiv_Round_16u_Sfs", 1024},
    {"orpsSqrt_32s16s_Sfs", 1024},
    {"orpsDivCRev_16u", 2048},
    {"orpsMagnitude_16s32f", 2048},
    {"orpsMagnitude_16s_Sfs", 2048},
    {"orpsMagnitude_16sc_Sfs", 2048},
    {"orpsMagnitude_32fc", 2048},
    {"orpsSqrt_16s_Sfs", 2048},
    {"orpsSqrt_16s_ISfs", 2048},
    {"orpsSqrt_16u_Sfs", 2048},
    {"orpsSqrt_16u_ISfs", 2048},
    {"orpsSqrt_8u_Sfs", 2048},
    {"orpsSqrt_8u_ISfs", 2048},
    {"orpsThreshold_LTInv_32fc", 2048},
    {"orpsThreshold_LTInv_32fc_I", 2048},
    {"orpsThreshold_LTInv_64f", 2048},
    {"orpsThreshold_LTInv_64f_I", 2048},
    {"orpsDivCRev_32f", 4096},
    {"orpsDivC_16s_Sfs", 4096},
    {"orpsDivC_8u_Sfs", 4096},
    {"orpsDiv_32f", 4096},
    {"orpsDiv_32f_I", 4096},
    {"orpsMagnitude_16sc32f", 4096},
    {"orpsMagnitude_32f", 4096},
    {"orpsSqrt_32f", 4096},
    {"orpsSqrt_32f_I", 4096},
    {"orpsThreshold_LTInv_32f", 8192},
    {"orpsThreshold_LTInv_32f_I", 8192},
    {"orpsSortRadixAscend_32f_I", 8192},
    {"orpsSortRadixDescend_32f_I", 8192},
    {"orpsSortRadixAscend_32s_I", 8192},
    {"orpsSortRadixDescend_32s_I", 8192},
    {"orpsSortRadixAscend_32u_I", 8192},
    {"orpsSortRadixDescend_32u_I", 8192},
};

// What one element of the first source makes of a call whose other elements are 1.
enum class Element { one, zero, negative };
struct Warning {
  OrpStatus status;
  Element element;
  int extra;
};

Warning warningOf(std::string_view name) {
  const auto isOf = [&](const char* operation) { return name.starts_with(operation); };
  const bool hasSign = name.find("c") == std::string_view::npos && name.find("u") == std::string_view::npos;
  if (isOf("orpsDiv") && !isOf("orpsDivC_")) return {StsDivByZero, Element::zero, kExtras[0]};
  if (isOf("orpsThreshold_LTInv_")) return {StsDivByZero, Element::zero, 0};  // level 0
  if (isOf("orpsSqrt_") && hasSign) return {StsDomain, Element::negative, kExtras[0]};
  return {StsOk, Element::one, kExtras[0]};
}

// The status of a call of ones, but for the element `at` of the first source, unless it is -1.
OrpStatus statusWith(const Export& each, int len, const Warning& warning, int at) {
  std::vector<std::unique_ptr<AnyArray>> arrays;
  std::vector<Slot> slots(each.parameters.size());
  for (size_t i = 0; i < slots.size(); ++i) {
    const Parameter& parameter = each.parameters[i];
    slots[i].number = i == each.length() ? len : warning.extra;
    if (!parameter.element) continue;
    arrays.push_back(parameter.makeArray(static_cast<size_t>(len), 0));
    arrays.back()->fillWithOnes();
    slots[i].pointer = arrays.back()->data();
  }
  if (at >= 0 && warning.element == Element::zero) arrays.front()->clear(static_cast<size_t>(at));
  if (at >= 0 && warning.element == Element::negative) {
    const size_t bytes = each.parameters.front().elementBytes;
    static_cast<unsigned char*>(arrays.front()->data())[static_cast<size_t>(at + 1) * bytes - 1] |= 0x80;  // the sign
  }
  return each.invoke(each.function, slots.data());
}

TEST(Parallel, AnyPartMayWarn) {
  for (const Shared& shared : kShared) {
    const Warning warning = warningOf(shared.name);
    if (warning.status == StsOk) continue;
    for (const Length& len : lengthsAroundThreshold(shared.threshold)) {
      SCOPED_TRACE(testing::Message() << shared.name << ", " << len);
      for (const int threads : {1, 2}) {
        orpSetNumThreads(threads);
        for (const int at : {-1, 0, len.value / 2, len.value - 1})
          EXPECT_EQ(at >= 0 ? warning.status : StsOk, statusWith(shared.exported(), len.value, warning, at))
              << threads << " threads, at " << at;
      }
    }
  }
  orpSetNumThreads(1);
}

TEST(Parallel, GivesTheBitsOfOneThread) {
  for (const Shared& shared : kShared) {
    for (const Length& len : lengthsAroundThreshold(shared.threshold)) {
      SCOPED_TRACE(testing::Message() << shared.name << ", " << len);
      Call alone(shared.exported(), len.value), together(shared.exported(), len.value);
      alone.fill(4, Values::mixed);
      together.fill(4, Values::mixed);
      orpSetNumThreads(1);
      const OrpStatus status = alone();
      orpSetNumThreads(2);
      EXPECT_EQ(status, together());
      EXPECT_EQ(kSame, firstDifference(alone, together));
    }
  }
  orpSetNumThreads(1);
}

#if defined(__linux__)

std::atomic<int> threadsCreated = 0;

// Threads that `call` starts as the first work of its thread. The thread runtime keeps a team for every thread that has
// opened a parallel region, so a new thread shows whether the call opens one.
int threadsStartedBy(Call& call) {
  int started = 0;
  std::thread([&] {
    const int before = threadsCreated;
    call();
    started = threadsCreated - before;
  }).join();
  return started;
}

TEST(Parallel, UsesTheSecondThreadFromTheThresholdOn) {
  orpSetNumThreads(2);
  for (const Shared& shared : kShared) {
    Call below(shared.exported(), shared.threshold - 1), at(shared.exported(), shared.threshold);
    below.fillWithOnes();
    at.fillWithOnes();
    EXPECT_EQ(0, threadsStartedBy(below)) << shared.name << ", threshold - 1";
    EXPECT_EQ(1, threadsStartedBy(at)) << shared.name << ", threshold";
  }
  orpSetNumThreads(1);
}

TEST(Parallel, NoOtherCallUsesASecondThread) {
  orpSetNumThreads(2);
  for (const Export& each : sweptExports()) {
    const auto isThis = [&](const Shared& shared) { return std::string_view(shared.name) == each.name; };
    if (std::any_of(std::begin(kShared), std::end(kShared), isThis)) continue;
    Call call(each, 20'000);
    call.fillWithOnes();
    EXPECT_EQ(0, threadsStartedBy(call)) << each.name;
  }
  orpSetNumThreads(1);
}

#endif

}  // namespace

#if defined(__linux__)
// Takes the place of the system's function for the whole process, and counts.
extern "C" __attribute__((visibility("default"))) int pthread_create(pthread_t* thread,
                                                                     const pthread_attr_t* attributes,
                                                                     void* (*body)(void*), void* argument) noexcept {
  static const auto create = reinterpret_cast<decltype(&pthread_create)>(dlsym(RTLD_NEXT, "pthread_create"));
  ++threadsCreated;
  return create(thread, attributes, body, argument);
}
#endif

}  // namespace orptest
