// Sort: there is exactly one right result, bit for bit.
#include "sorting.h"

namespace {

using namespace sorting;

template <class T>
void checkSort(OrpStatus (*sort)(T*, int), bool descend) {
  size_t misalignment = 0;
  const auto check = [&](const std::vector<T>& input, const std::vector<T>& sorted) {
    Guarded<T> data(input, misalignment += 5);
    ASSERT_EQ(StsOk, sort(data.data(), static_cast<int>(input.size())));
    ASSERT_TRUE(sameBits(sorted, data.values()));
  };
  sweep<T>(descend, lengths(), check);
  sweep<T>(descend, {100'003}, check);
  sweep<T>(descend, {static_cast<int>(kLarge)}, check, 1);
}

template <class T>
void checkSortTimes(OrpStatus (*sort)(T*, int), bool descend) {
  checkTimes<T>(descend, sort);
}

}  // namespace

#define ORPS_EXPORT(name, ...)                                     \
  TEST(Sort, name) { checkSort(&name, descends(#name)); }          \
  TEST(SortTime, name) { checkSortTimes(&name, descends(#name)); } \
  static_assert(true)
#include "exports/sort.inc"
