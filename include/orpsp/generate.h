/** @file
 *  Generation subsystem: windows and test vectors.
 */
#ifndef ORPSP_GENERATE_H
#define ORPSP_GENERATE_H

#include "orpsp/generate/test_vectors.h"
#include "orpsp/generate/windows.h"

#endif
