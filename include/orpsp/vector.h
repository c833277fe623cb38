/** @file
 *  Vector subsystem: element-wise arithmetic and data movement.
 */
#ifndef ORPSP_VECTOR_H
#define ORPSP_VECTOR_H

#include "orpsp/vector/arithmetic.h"
#include "orpsp/vector/division.h"
#include "orpsp/vector/logic.h"
#include "orpsp/vector/move.h"

#endif
