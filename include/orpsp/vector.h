/** @file
 *  Vector subsystem: element-wise arithmetic, conversion, thresholds, elementary and complex functions, data movement.
 */
#ifndef ORPSP_VECTOR_H
#define ORPSP_VECTOR_H

#include "orpsp/vector/arithmetic.h"
#include "orpsp/vector/complex.h"
#include "orpsp/vector/convert.h"
#include "orpsp/vector/division.h"
#include "orpsp/vector/elementary.h"
#include "orpsp/vector/logic.h"
#include "orpsp/vector/move.h"
#include "orpsp/vector/threshold.h"

#endif
