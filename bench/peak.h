// The speed of light of a processor core, for the scale of other figures.
#pragma once

namespace bench {

// Operations a second, in single precision, of independent fused multiply-adds in registers of `bits` bits (256, 512);
// each element counts as two. 0: the processor has none. Doubles reach half of it.
double multiplyAddPeak(int bits);

}  // namespace bench
