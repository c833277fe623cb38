// Angles and polar form.
#include "maths.h"

#define ORPS_EXPORT(name, ...)                      \
  TEST(Polar, name) { maths::check<#name>(&name); } \
  static_assert(true)
#include "exports/polar.inc"
