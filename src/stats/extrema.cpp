// Smallest and largest elements.
#include "orpsp/stats/extrema.h"

#include "frame/entry.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "stats/extrema.cpp"
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

#define ORPSP_TABLE "exports/extrema.inc"
#include "frame/exports-inl.h"
