/** @file
 *  Statistics subsystem: sums, means, deviations, norms, dot products, extrema, searches and sorting.
 */
#ifndef ORPSP_STATS_H
#define ORPSP_STATS_H

#include "orpsp/stats/dot.h"
#include "orpsp/stats/extrema.h"
#include "orpsp/stats/moments.h"
#include "orpsp/stats/norms.h"
#include "orpsp/stats/search.h"
#include "orpsp/stats/sorting.h"

#endif
