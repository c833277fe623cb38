// One logarithm of a product, the same bits on every processor.
#pragma once

#include <cstdint>

namespace orpsp {

// ln(significand * 2^exponent), significand normal and positive, |exponent| < 2^44. Error below 0.6 units in the last
// place.
double logarithm(double significand, int64_t exponent);

}  // namespace orpsp
