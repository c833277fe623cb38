/** @file
 *  Generation subsystem: windows.
 */
#ifndef ORPSP_GENERATE_H
#define ORPSP_GENERATE_H

#include "orpsp/generate/windows.h"

#endif
