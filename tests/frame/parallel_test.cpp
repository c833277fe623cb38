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
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#endif

#include "orpcore.h"
#include "orpsp.h"
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

// Those of the table of traits.
const std::vector<Shared> kShared = [] {
  std::vector<Shared> shared;
  for (const Export& each : sweptExports())
    if (each.sharedFrom != kNotShared) shared.push_back({each.name, each.sharedFrom});
  return shared;
}();

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
    arrays.push_back(parameter.makeArray(static_cast<size_t>(len), kAnyAddress));
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

std::atomic<int> threadsCreated = 0, timesAsked = 0;
std::atomic<bool> threadsFail = false;

// A call that may use two threads asks for their number.
TEST(Parallel, AsksForThreadsFromTheThresholdOn) {
  for (const Shared& shared : kShared) {
    Call below(shared.exported(), shared.threshold - 1), at(shared.exported(), shared.threshold);
    below.fillWithOnes();
    at.fillWithOnes();
    timesAsked = 0;
    below();
    EXPECT_EQ(0, timesAsked) << shared.name << ", threshold - 1";
    at();
    EXPECT_NE(0, timesAsked) << shared.name << ", threshold";
  }
}

TEST(Parallel, NoOtherCallAsksForThreads) {
  for (const Export& each : sweptExports()) {
    const auto isThis = [&](const Shared& shared) { return std::string_view(shared.name) == each.name; };
    if (std::any_of(std::begin(kShared), std::end(kShared), isThis)) continue;
    Call call(each, 20'000);
    call.fillWithOnes();
    timesAsked = 0;
    call();
    EXPECT_EQ(0, timesAsked) << each.name;
  }
}

bool dividesRight() {
  const std::vector<float> three(100'000, 3.0f), six(100'000, 6.0f);
  std::vector<float> quotient(three.size());
  return orpsDiv_32f(three.data(), six.data(), quotient.data(), static_cast<int>(three.size())) == StsOk &&
         quotient == std::vector<float>(three.size(), 2.0f);
}

// Runs `body` in a forked process; whether it came back in time, with true.
template <class Body>
bool inFork(const Body& body) {
  const pid_t child = fork();
  if (child == 0) {
    alarm(60);
    std::exit(body() ? 0 : 1);  // with the library's farewell
  }
  int status = -1;
  return waitpid(child, &status, 0) == child && status == 0;
}

// What one process saw of the threads of a fresh library.
TEST(Parallel, StartsAThreadOnceItIsGrantedAndWanted) {
  EXPECT_TRUE(inFork([] {
    const int before = threadsCreated;
    const bool single = dividesRight() && threadsCreated == before;
    orpSetNumThreads(2);
    while (threadsCreated == before) dividesRight();  // a pause of the parent is the child's, too
    for (int i = 0; i < 100; ++i)
      if (!dividesRight()) return false;
    return single && threadsCreated == before + 1;
  }));
}

TEST(Parallel, DoesWithoutThreadsThatCannotBeStarted) {
  EXPECT_TRUE(inFork([] {
    threadsFail = true;
    orpSetNumThreads(2);
    for (int i = 0; i < 100; ++i)
      if (!dividesRight()) return false;
    threadsFail = false;
    const int before = threadsCreated;
    while (threadsCreated == before) dividesRight();  // it keeps trying, now and then
    return dividesRight();
  }));
}

TEST(Parallel, ForkedProcessesStartWithoutHelpers) {
  orpSetNumThreads(2);
  EXPECT_TRUE(dividesRight());
  EXPECT_TRUE(inFork([] {
    const int before = threadsCreated;
    const bool single = dividesRight() && threadsCreated == before;
    orpSetNumThreads(2);
    while (threadsCreated == before) dividesRight();
    return single && inFork([] { return dividesRight(); });
  }));
  EXPECT_TRUE(dividesRight());
  orpSetNumThreads(1);
}

#endif

}  // namespace

#if defined(__linux__)
// These two take the place of the system's and of orpcore's function for the whole process.
extern "C" __attribute__((visibility("default"))) int pthread_create(pthread_t* thread,
                                                                     const pthread_attr_t* attributes,
                                                                     void* (*body)(void*), void* argument) noexcept {
  static const auto create = reinterpret_cast<decltype(&pthread_create)>(dlsym(RTLD_NEXT, "pthread_create"));
  if (threadsFail) return EAGAIN;
  ++threadsCreated;
  return create(thread, attributes, body, argument);
}

extern "C" __attribute__((visibility("default"))) int ownGetNumThreads() {
  ++timesAsked;
  return orpGetNumThreads();
}
#endif

}  // namespace orptest
