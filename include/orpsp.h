/** @file
 *  orpSP: signal-processing primitives over arrays of samples. Includes every header of the library.
 */
#ifndef ORPSP_H
#define ORPSP_H

#include "orpsp/frame.h"
#include "orpsp/generate.h"
#include "orpsp/speech.h"
#include "orpsp/stats.h"
#include "orpsp/transform.h"
#include "orpsp/types.h"
#include "orpsp/vector.h"

#endif
