/** @file
 *  Generation subsystem: windows, tones, triangles, test vectors, random numbers.
 */
#ifndef ORPSP_GENERATE_H
#define ORPSP_GENERATE_H

#include "orpsp/generate/random.h"
#include "orpsp/generate/test_vectors.h"
#include "orpsp/generate/tone.h"
#include "orpsp/generate/windows.h"

#endif
