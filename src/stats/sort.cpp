// Sorts of values: counting, networks and a vectorised quicksort.
#include "orpsp/stats/sorting.h"

#include "frame/entry.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "stats/sort.cpp"
#include <hwy/foreach_target.h>

#include "vector/forms-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/sort.inc"
#include "frame/exports-inl.h"
