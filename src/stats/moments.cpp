// Sums, means and standard deviations.
#include "orpsp/stats/moments.h"

#include "frame/entry.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "stats/moments.cpp"
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

#define ORPSP_TABLE "exports/moments.inc"
#include "frame/exports-inl.h"
