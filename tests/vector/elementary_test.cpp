// Exponentials, logarithms and what else stands in this table.
#include "maths.h"

#define ORPS_EXPORT(name, ...)                           \
  TEST(Elementary, name) { maths::check<#name>(&name); } \
  static_assert(true)
#include "exports/elementary.inc"
