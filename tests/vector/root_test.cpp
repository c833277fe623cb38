// Roots and magnitudes.
#include "maths.h"

#define ORPS_EXPORT(name, ...)                     \
  TEST(Root, name) { maths::check<#name>(&name); } \
  static_assert(true)
#include "exports/root.inc"
