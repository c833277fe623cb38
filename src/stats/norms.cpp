// Norms of a vector and of a difference.
#include "orpsp/stats/norms.h"

#include "frame/entry.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "stats/norms.cpp"
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

#define ORPSP_TABLE "exports/norms.inc"
#include "frame/exports-inl.h"
