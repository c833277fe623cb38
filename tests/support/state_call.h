// Calls the exports that make, use and release a type of state by their names and prototypes alone: the types are those
// that the export tables name. What a new family adds is its table and a line of arguments (kMakings).
#pragma once

#include <algorithm>
#include <climits>
#include <map>
#include <memory>
#include <string>
#include <typeindex>
#include <vector>

#include "orpsp.h"
#include "support/call.h"

namespace orptest {

// What a parameter is: where the state's address goes (S**) or the state (S*), where a size goes, memory, an array of
// elements and its length, or another number.
enum class Role { made, state, size, memory, array, length, number };

struct StateExport {
  std::string name;
  std::vector<Role> roles = {};
  std::vector<std::unique_ptr<AnyArray> (*)(size_t len, size_t misalignment)> makeArray = {};
  void (*function)() = nullptr;
  OrpStatus (*invoke)(void (*function)(), const Slot* slots) = nullptr;
  std::type_index state = typeid(void);

  bool says(const char* word) const { return name.find(word) != std::string::npos; }
  bool has(Role role) const { return std::find(roles.begin(), roles.end(), role) != roles.end(); }
  // The name without what says which call it is.
  std::string stem() const {
    for (const std::string word : {"GetStateSize", "GetSize", "InitAlloc", "Init"})
      if (says(word.c_str())) return std::string(name).erase(name.find(word), word.size());
    return name;
  }
};

// One thing wrong with a call: a number, or a null pointer, or for StsSpecMismatch what has another tag.
struct Fault {
  size_t parameter;
  OrpStatus status = StsNullPtr;
  int number = 0;
};

// Numbers that states of a family are made with, and wrong ones with their statuses, in the order in which they are
// found: for Init and InitAlloc, behind all null pointers, counted among the numbers. Other orders are listed in full.
struct Making {
  const char* family;  // what the names of the exports begin with
  std::vector<std::vector<int>> numbers;
  std::vector<Fault> wrongNumbers;
  bool freeEnds = false;  // Free ends a state in the caller's memory too
  std::vector<Fault> getSize = {}, init = {}, initAlloc = {};
};

inline const Making kMakings[] = {
    {"orpsTone",
     {{30001, 12345, 205886}},
     {{0, StsToneMagnitude}, {1, StsToneFrequency, 16384}, {2, StsTonePhase, 205887}}},
    {"orpsTriangle",
     {{30001, 12345, 205886, -102943}},
     {{0, StsTriangleMagnitude},
      {1, StsTriangleFrequency, 16384},
      {2, StsTrianglePhase, 205887},
      {3, StsTriangleAsymmetry, 102944},
      {3, StsTriangleAsymmetry, -102944}}},
    {"orpsRandUniform", {{3, 100, 77}}, {{0, StsBadArg, 101}}},
    {"orpsRandGauss", {{10, 100, 77}}, {}},
    {"orpsFFT",
     {{0, 8, 0}, {3, 1, 0}, {3, 2, 2}, {8, 4, 1}, {14, 1, 0}, {18, 8, 0}, {11, 2, 0}},
     {},
     true,
     {{0, StsFftOrder, -1}, {0, StsFftOrder, 31}, {3}, {4}, {5}, {1, StsFftFlag, 3}, {0, StsFftOrder, 30}},
     {{0}, {1, StsFftOrder, -1}, {1, StsFftOrder, 30}, {4}, {2, StsFftFlag, 3}, {5}},
     {{0}, {1, StsFftOrder, -1}, {1, StsFftOrder, 31}, {2, StsFftFlag, 0}, {1, StsFftOrder, 30}}},
};

struct StateType {
  const Making* making = nullptr;
  StateExport getSize, init, initAlloc, release;
  std::vector<StateExport> uses;

  std::vector<StateExport> all() const {
    auto list = uses;
    list.insert(list.end(), {release, init, initAlloc, getSize});
    return list;
  }

  // In the order in which they are found.
  std::vector<Fault> faultsOf(const StateExport& each) const {
    for (const auto& [call, listed] : {std::pair(&getSize, &making->getSize), std::pair(&init, &making->init),
                                       std::pair(&initAlloc, &making->initAlloc)})
      if (call->name == each.name && !listed->empty()) return *listed;
    std::vector<Fault> faults, behind;
    std::vector<size_t> numbers;
    for (size_t i = 0; i < each.roles.size(); ++i) {
      if (each.roles[i] == Role::number) {
        numbers.push_back(i);
      } else if (each.roles[i] == Role::length) {
        behind.insert(behind.begin(), {{i, StsBadSize, 0}, {i, StsBadSize, INT_MIN}});
      } else {
        faults.push_back({i});
        if (each.roles[i] == Role::state && !each.says("Init")) behind.push_back({i, StsSpecMismatch});
      }
    }
    if (each.says("Init"))
      for (const Fault& wrong : making->wrongNumbers)
        behind.push_back({numbers.at(wrong.parameter), wrong.status, wrong.number});
    faults.insert(faults.end(), behind.begin(), behind.end());
    return faults;
  }
};

// Types of states are never complete.
template <class T>
concept Opaque = std::is_class_v<T> && !requires {
  sizeof(T);
};

template <class A>
void addParameter(StateExport& to) {
  to.makeArray.push_back(nullptr);
  if constexpr (std::is_pointer_v<A>) {
    using T = std::remove_const_t<std::remove_pointer_t<A>>;
    if constexpr (std::is_pointer_v<T> || Opaque<T>) {
      to.state = typeid(std::conditional_t<Opaque<T>, T, std::remove_pointer_t<T>>*);
      to.roles.push_back(Opaque<T> ? Role::state : Role::made);
    } else {
      to.makeArray.back() = &makeArray<T>;
      to.roles.push_back(to.says("Size")                                ? Role::size
                         : to.says("Init") && std::is_same_v<A, Orp8u*> ? Role::memory
                                                                        : Role::array);
    }
  } else {
    to.roles.push_back(!to.roles.empty() && to.roles.back() == Role::array && !to.says("Init") ? Role::length
                                                                                               : Role::number);
  }
}

template <class... A>
StateExport describeStateCall(const char* name, OrpStatus (*function)(A...)) {
  StateExport it{.name = name, .function = reinterpret_cast<void (*)()>(function), .invoke = &invoke<A...>};
  (addParameter<A>(it), ...);
  return it;
}

// Every type of state that the export tables have.
inline const std::vector<StateType>& stateTypes() {
  static const std::vector<StateType> types = [] {
    std::map<std::type_index, StateType> all;
    std::map<std::string, StateExport> sizes;
    const auto add = [&](const StateExport& each) {
      StateType& type = all[each.state];
      (each.state == typeid(void) ? sizes[each.stem()]
       : each.says("InitAlloc")   ? type.initAlloc
       : each.says("Init")        ? type.init
       : each.says("Free")        ? type.release
                                  : type.uses.emplace_back()) = each;
    };
#define ORPS_EXPORT(name, ...) add(describeStateCall(#name, &::name))
#include "exports/fft_spec.inc"
#include "exports/random.inc"
#include "exports/tone.inc"
#undef ORPS_EXPORT
    all.erase(typeid(void));
    std::vector<StateType> list;
    for (auto& [key, type] : all) {
      type.getSize = sizes.at(type.init.stem());
      for (const Making& making : kMakings)
        if (type.init.name.starts_with(making.family)) type.making = &making;
      list.push_back(type);
    }
    return list;
  }();
  return types;
}

// One call, with arrays of `len` elements.
class StateCall {
 public:
  StateCall(const StateExport& each, const std::vector<int>& numbers, void* state, void* memory = nullptr,
            void* buffer = nullptr, int len = 1, size_t misalignment = 0)
      : export_(each), slots_(each.roles.size()) {
    size_t number = 0, size = 0, given = 0;
    void* memories[] = {memory, buffer};
    for (size_t i = 0; i < slots_.size(); ++i) {
      const Role role = each.roles[i];
      if (role == Role::number) slots_[i].number = numbers.at(number++);
      if (role == Role::length) slots_[i].number = len;
      if (role == Role::made) slots_[i].pointer = &made;
      if (role == Role::state) slots_[i].pointer = state;
      if (role == Role::size) slots_[i].pointer = &sizes[size++];
      if (role == Role::memory) slots_[i].pointer = memories[given++];
      if (role != Role::array) continue;
      arrays_.push_back(each.makeArray[i](static_cast<size_t>(len), misalignment));
      slots_[i].pointer = arrays_.back()->data();
    }
  }

  OrpStatus operator()() { return export_.invoke(export_.function, slots_.data()); }
  void apply(const Fault& fault) {
    slots_[fault.parameter].number = fault.number;
    slots_[fault.parameter].pointer = fault.status == StsSpecMismatch ? foreign_.data() : nullptr;
  }

  void* made = this;  // what Init or InitAlloc stored
  int sizes[3] = {-1, -1, -1};

  bool untouched() const {
    return made == this && sizes[0] == -1 && sizes[1] == -1 && sizes[2] == -1 &&
           std::all_of(arrays_.begin(), arrays_.end(), [](const auto& array) { return array->untouched(); });
  }
  std::vector<unsigned char> result() const {
    std::vector<unsigned char> all;
    if (export_.has(Role::size)) all.push_back(static_cast<unsigned char>(sizes[0] >> 6));
    for (const auto& array : arrays_)
      for (const unsigned char byte : array->bytes()) all.push_back(byte);
    return all;
  }

 private:
  const StateExport export_;
  std::vector<Slot> slots_;
  std::vector<std::unique_ptr<AnyArray>> arrays_;
  Guarded<Orp32u> foreign_{std::vector<Orp32u>{0x5A5A5A5A}};  // as small as a record may be
};

}  // namespace orptest
