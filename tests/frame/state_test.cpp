// What all states and specifications share, checked for every type that the export tables have.
#include <gtest/gtest.h>

#include <cstring>

#include "support/allocator.h"
#include "support/random.h"
#include "support/state_call.h"

namespace orptest {
namespace {

using Bytes = std::vector<unsigned char>;

// A state in memory of the caller's that is as small as it may be, at any address.
struct StateInMemory {
  StateInMemory(const StateType& type, const std::vector<int>& numbers, size_t misalignment) {
    StateCall size(type.getSize, numbers, nullptr);
    EXPECT_EQ(StsOk, size());
    const auto bytesOf = [&](int i) { return static_cast<size_t>(std::max(0, size.sizes[i])); };
    memory = std::make_unique<Guarded<Orp8u>>(bytesOf(0), misalignment);
    Guarded<Orp8u> buffer(bytesOf(1), misalignment + 32);
    StateCall init(type.init, numbers, memory->data(), memory->data(), bytesOf(1) > 0 ? buffer.data() : nullptr);
    EXPECT_EQ(StsOk, init());
    state = type.init.has(Role::made) ? init.made : memory->data();
  }
  std::unique_ptr<Guarded<Orp8u>> memory;
  void* state;
};

void* allocated(const StateType& type, const std::vector<int>& numbers) {
  StateCall call(type.initAlloc, numbers, nullptr);
  EXPECT_EQ(StsOk, call());
  return call.made;
}

OrpStatus released(const StateType& type, void* state) { return StateCall(type.release, {}, state)(); }

// The results of a use, one behind the other, of a call for each length; every call at another alignment.
Bytes resultsOf(const StateExport& use, void* state, const std::vector<int>& lengths) {
  Bytes all;
  for (const int len : lengths) {
    StateCall call(use, {}, state, nullptr, nullptr, len, all.size());
    EXPECT_EQ(StsOk, call());
    for (const unsigned char byte : call.result()) all.push_back(byte);
  }
  return all;
}

Bytes used(const StateType& type, void* state) {
  Bytes all;
  for (const StateExport& use : type.uses)
    for (const unsigned char byte : resultsOf(use, state, {3, 50})) all.push_back(byte);
  return all;
}

// Calls with this state are refused, and leave everything as it is.
void expectRefusal(const StateType& type, void* state) {
  for (const StateExport& each : type.all()) {
    if (!each.has(Role::state) || each.says("Init")) continue;
    StateCall call(each, {}, state);
    EXPECT_EQ(StsSpecMismatch, call()) << each.name;
    EXPECT_TRUE(call.untouched()) << each.name;
  }
}

// Calls `test(type, numbers)`, once for each set of numbers that states are made with.
template <class Test>
void forEachState(Test test) {
  for (const StateType& type : stateTypes()) {
    for (const auto& numbers : type.making->numbers) {
      SCOPED_TRACE(testing::Message() << type.init.name << ' ' << testing::PrintToString(numbers));
      test(type, numbers);
    }
  }
}

// A fault is reported alone, and whatever else is wrong that comes behind it.
TEST(States, FaultsAreFoundInOrder) {
  ASSERT_EQ(21u, stateTypes().size());
  for (const StateType& type : stateTypes()) {
    const std::vector<int>& numbers = type.making->numbers.back();
    const StateInMemory state(type, numbers, 3);
    const auto before = state.memory->values();
    for (const StateExport& each : type.all()) {
      const auto faults = type.faultsOf(each);
      for (size_t first = 0; first < faults.size(); ++first) {
        for (const size_t end : {first + 1, faults.size()}) {
          SCOPED_TRACE(testing::Message() << each.name << ", faults " << first << " to " << end);
          CountingAllocator allocator;
          Guarded<Orp8u> memory(before.size()), buffer(1 << 15);
          StateCall call(each, numbers, each.name == type.init.name ? memory.data() : state.state, memory.data(),
                         buffer.data());
          for (size_t i = end; i-- > first;) call.apply(faults[i]);
          EXPECT_EQ(faults[first].status, call());
          EXPECT_TRUE(call.untouched());
          EXPECT_TRUE(memory.untouched() || !type.making->init.empty());
          EXPECT_EQ(0, allocator.requests);
        }
      }
    }
    EXPECT_EQ(before, state.memory->values());
  }
}

TEST(States, OthersAndReleasedOnesAreRefused) {
  for (const StateType& type : stateTypes()) {
    CountingAllocator allocator(INT_MAX, true);
    void* const state = allocated(type, type.making->numbers[0]);
    for (const StateType& other : stateTypes())
      if (&other != &type) expectRefusal(other, state);
    EXPECT_EQ(StsOk, released(type, state));
    EXPECT_EQ(0, allocator.live);
    expectRefusal(type, state);
  }
}

TEST(States, AreTheSameInAnyMemory) {
  forEachState([](const StateType& type, const std::vector<int>& numbers) {
    void* const state = allocated(type, numbers);
    const Bytes expected = used(type, state);
    for (const size_t misalignment : {1U, 16U, 47U, 63U})
      EXPECT_EQ(expected, used(type, StateInMemory(type, numbers, misalignment).state)) << misalignment;
    EXPECT_EQ(StsOk, released(type, state));
  });
}

TEST(States, FailingAllocationsLeaveNothing) {
  forEachState([](const StateType& type, const std::vector<int>& numbers) {
    OrpStatus status = StsNoMemory;
    for (int failsAt = 0; status == StsNoMemory; ++failsAt) {
      CountingAllocator allocator(failsAt);
      StateCall call(type.initAlloc, numbers, nullptr);
      status = call();
      EXPECT_EQ(status == StsNoMemory, call.untouched());
      EXPECT_EQ(status == StsNoMemory, allocator.requests > failsAt);
      EXPECT_EQ(status == StsOk, allocator.live == 1);
      if (status == StsOk) status = released(type, call.made);
    }
    EXPECT_EQ(StsOk, status);
  });
}

// A copy goes on from where it was made, and owns nothing.
TEST(States, CopiesAreFreedWithoutHarm) {
  forEachState([](const StateType& type, const std::vector<int>& numbers) {
    CountingAllocator allocator;
    void* const state = allocated(type, numbers);
    Guarded<Orp8u> copy(StateInMemory(type, numbers, 0).memory->size() - (type.init.has(Role::made) ? 64 : 0), 8);
    std::memcpy(copy.data(), state, copy.size());
    EXPECT_EQ(StsOk, released(type, copy.data()));
    std::memcpy(copy.data(), state, copy.size());
    EXPECT_EQ(1, allocator.live);
    EXPECT_EQ(used(type, copy.data()), used(type, state));
    EXPECT_EQ(StsOk, released(type, state));
  });
}

TEST(States, InMemoryOfTheCallersOutliveFree) {
  forEachState([](const StateType& type, const std::vector<int>& numbers) {
    const StateInMemory one(type, numbers, 5), other(type, numbers, 6);
    EXPECT_EQ(StsOk, released(type, one.state));
    if (type.making->freeEnds) return expectRefusal(type, one.state);
    EXPECT_EQ(StsOk, released(type, one.state));
    EXPECT_EQ(other.memory->values(), one.memory->values());
    EXPECT_EQ(used(type, other.state), used(type, one.state));
  });
}

TEST(States, SequencesAreTheSameInManyCalls) {
  forEachState([](const StateType& type, const std::vector<int>& numbers) {
    for (const StateExport& use : type.uses) {
      if (!use.has(Role::length)) continue;
      Random random;
      std::vector<int> lengths;
      int whole = 0;
      for (const int most : {3, 20, 70, 300, 5000})
        for (int i = 0; i < 12; ++i) whole += lengths.emplace_back(1 + random.below(most));
      const StateInMemory once(type, numbers, 0), often(type, numbers, 9);
      EXPECT_TRUE(resultsOf(use, once.state, {whole}) == resultsOf(use, often.state, lengths)) << use.name;
      EXPECT_EQ(once.memory->values(), often.memory->values()) << "the states differ";
    }
  });
}

}  // namespace
}  // namespace orptest
