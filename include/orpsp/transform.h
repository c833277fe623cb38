/** @file
 *  Transform subsystem: FFTs of 2^order points and the packed spectra of real signals.
 */
#ifndef ORPSP_TRANSFORM_H
#define ORPSP_TRANSFORM_H

#include "orpsp/transform/fft_complex.h"
#include "orpsp/transform/fft_real.h"
#include "orpsp/transform/fft_spec.h"
#include "orpsp/transform/spectra.h"

#endif
