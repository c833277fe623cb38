// The quicksort without its pivots: what it does with bad samples, by the kernels of every width the processor has.
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "stats/quick_sort_test.cpp"
#include <hwy/foreach_target.h>

#include "stats/quick_sort-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

template <class T>
void SortWithoutPivots(T* p, size_t n, T flip) {
  QuickSort(p, n, flip, 0);
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "orpcore.h"
#include "sorting.h"

namespace {

using namespace sorting;

template <class T>
void check(bool descend) {
  const auto sort = orpGetVectorBits() == 512   ? &orpsp::ORPSP_NAMESPACE_512::SortWithoutPivots<T>
                    : orpGetVectorBits() == 256 ? &orpsp::ORPSP_NAMESPACE_256::SortWithoutPivots<T>
                                                : &orpsp::ORPSP_NAMESPACE_128::SortWithoutPivots<T>;
  sweep<T>(
      descend, {600, 4099, 50'000},
      [&](const std::vector<T>& input, const std::vector<T>& sorted) {
        Guarded<T> data(input, 0);
        sort(data.data(), input.size(), static_cast<T>(descend ? -1 : 0));
        ASSERT_TRUE(sameBits(sorted, data.values()));
      },
      2);
}

}  // namespace

TEST(QuickSort, BadSamplesHalveTheSpanOfTheKeys) {
  for (const bool descend : {false, true}) {
    check<int16_t>(descend);
    check<int64_t>(descend);
  }
}
#endif
