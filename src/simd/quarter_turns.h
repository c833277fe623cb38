// Reduction of large angles.
#pragma once

#include <cstdint>

namespace orpsp {

// x less its nearest multiple of pi/2, as *r + *rest (*rest below half a unit in the last place of *r); returns that
// multiple modulo 4. Of infinity and NaN *r is NaN.
uint64_t quarterTurns(double x, double* r, double* rest);

}  // namespace orpsp
