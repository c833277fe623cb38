// What the tests must know of an export that neither its line in a table nor its prototype says: one table for all.
//
// Most exports need no row. The sweeps call whatever has a prototype that they know; where exports_test, sweep_test,
// digest_test or parallel_test name a new export although nothing is wrong with it, its row is missing here.
#pragma once

#include <climits>

namespace orptest {

enum Trait : unsigned {
  kOtherShape = 1,          // the prototype is one that Call knows, its meaning is another: no sweep calls it
  kReduces = 2,             // the length stands behind the sources, and destinations are one element each
  kSorts = 4,               // a source may not be a destination as well
  kHasWorkArray = 8,        // the last array; what it holds after the call says nothing
  kTakesStride = 16,        // the first number is the distance of elements in bytes
  kTakesRelation = 32,      // the last number is a relation
  kHasBitStrings = 64,      // arrays count in bits, and a bit offset follows each
  kDependsOnAddress = 128,  // the result's bits may depend on the alignment of the source
  kDependsOnWidth = 256,    // the result's bits may depend on the vector width
};

inline constexpr int kNotShared = INT_MAX;

struct TraitRow {
  const char* names;  // a * stands for any text; all rows that match an export hold
  unsigned traits;
  int sharedFrom = kNotShared;  // from which length on two threads may share a call
};

constexpr TraitRow sharedFrom(int length, const char* names) { return {names, 0, length}; }

inline constexpr TraitRow kTraitRows[] = {
    // Sizes of states; sources longer than the destination, tables, arrays of one element or of other lengths.
    {"orps*GetSize*", kOtherShape},
    {"orps*GetStateSize*", kOtherShape},
    {"orpsConjCcs_16sc", kOtherShape},
    {"orpsConjCcs_32fc", kOtherShape},
    {"orpsConjCcs_64fc", kOtherShape},
    {"orpsFindNearest*", kOtherShape},
    {"orpsRand*", kOtherShape},
    {"orpsTone*", kOtherShape},
    {"orpsTriangle*", kOtherShape},
    {"orpsPreemphasize_*", kOtherShape},
    {"orpsSumWindow_*", kOtherShape},
    {"orpsPackBits_*", kOtherShape},
    {"orpsUpdateLinear_*", kOtherShape},
    {"orpsUpdatePower_*", kOtherShape},
    {"orpsDemodulateFM_*", kOtherShape},
    {"orps*DV_16*", kOtherShape},
    {"orps*DV4D_16sc", kOtherShape},

    {"orpsSum_*", kReduces},
    {"orpsSumLn_*", kReduces},
    {"orpsMean_*", kReduces},
    {"orpsMeanStdDev_*", kReduces},
    {"orpsStdDev_*", kReduces},
    {"orpsNorm_*", kReduces},
    {"orpsNormDiff_*", kReduces},
    {"orpsDotProd_*", kReduces},
    {"orpsMin_*", kReduces},
    {"orpsMinIndx_*", kReduces},
    {"orpsMinAbs*", kReduces},
    {"orpsMinMax*", kReduces},
    {"orpsMax_*", kReduces},
    {"orpsMaxIndx_*", kReduces},
    {"orpsMaxAbs*", kReduces},
    {"orpsCountInRange_*", kReduces},
    {"orpsZeroCrossing_*", kReduces},

    {"orpsSort*", kSorts},
    {"orpsSortRadix*", kHasWorkArray},
    {"orpsSortRadixIndex*", kTakesStride},
    {"orpsThreshold_16*", kTakesRelation},
    {"orpsThreshold_32*", kTakesRelation},
    {"orpsThreshold_64*", kTakesRelation},
    {"orps*_1u*", kHasBitStrings},

    // Sums of single precision take the elements up to an aligned address by themselves.
    {"orpsSum_32f", kDependsOnAddress},
    {"orpsMean_32f", kDependsOnAddress},
    {"orpsStdDev_32f", kDependsOnAddress},
    {"orpsMeanStdDev_32f", kDependsOnAddress},

    // Vector maths of floats is within its bounds at every width but may use what a width has, such as fused
    // multiply-adds.
    {"orpsExp_32f*", kDependsOnWidth},
    {"orpsExp_64f*", kDependsOnWidth},
    {"orpsLn_32f*", kDependsOnWidth},
    {"orpsLn_64f*", kDependsOnWidth},
    {"orpsCubrt_32f*", kDependsOnWidth},
    {"orpsArctan_*", kDependsOnWidth},
    {"orpsPhase_*32f*", kDependsOnWidth},
    {"orpsPhase_64f*", kDependsOnWidth},
    {"orpsCartToPolar_*", kDependsOnWidth},
    {"orpsPolarToCart_*", kDependsOnWidth},
    {"orpsMagnitude_32f*", kDependsOnWidth},
    {"orpsMagnitude_64f*", kDependsOnWidth},

    sharedFrom(32, "orpsSortRadix*cend_64f_I"),
    sharedFrom(64, "orpsSqrt_64fc*"),
    sharedFrom(256, "orpsDiv_16sc_Sfs"),
    sharedFrom(256, "orpsMagnitude_32sc_Sfs"),
    sharedFrom(256, "orpsMagnitude_64f"),
    sharedFrom(256, "orpsMagnitude_64fc"),
    sharedFrom(256, "orpsSqrt_16sc_*Sfs"),
    sharedFrom(512, "orpsDiv_Round_8u_Sfs"),
    sharedFrom(512, "orpsSqrt_32fc*"),
    sharedFrom(512, "orpsSqrt_64f"),
    sharedFrom(512, "orpsSqrt_64f_I"),
    sharedFrom(512, "orpsSqrt_64s16s_Sfs"),
    sharedFrom(512, "orpsThreshold_LTInv_64fc*"),
    sharedFrom(1024, "orpsDivC_16sc_Sfs"),
    sharedFrom(1024, "orpsDiv_16s_Sfs"),
    sharedFrom(1024, "orpsDiv_32fc"),
    sharedFrom(1024, "orpsDiv_32s16s_Sfs"),
    sharedFrom(1024, "orpsDiv_32s_Sfs"),
    sharedFrom(1024, "orpsDiv_64f"),
    sharedFrom(1024, "orpsDiv_64fc"),
    sharedFrom(1024, "orpsDiv_8u_Sfs"),
    sharedFrom(1024, "orpsDiv_Round_16u_Sfs"),
    sharedFrom(1024, "orpsSqrt_32s16s_Sfs"),
    sharedFrom(2048, "orpsDivCRev_16u"),
    sharedFrom(2048, "orpsMagnitude_16s32f"),
    sharedFrom(2048, "orpsMagnitude_16s_Sfs"),
    sharedFrom(2048, "orpsMagnitude_16sc_Sfs"),
    sharedFrom(2048, "orpsMagnitude_32fc"),
    sharedFrom(2048, "orpsSqrt_16s_*Sfs"),
    sharedFrom(2048, "orpsSqrt_16u_*Sfs"),
    sharedFrom(2048, "orpsSqrt_8u_*Sfs"),
    sharedFrom(2048, "orpsThreshold_LTInv_32fc*"),
    sharedFrom(2048, "orpsThreshold_LTInv_64f"),
    sharedFrom(2048, "orpsThreshold_LTInv_64f_I"),
    sharedFrom(4096, "orpsDivCRev_32f"),
    sharedFrom(4096, "orpsDivC_16s_Sfs"),
    sharedFrom(4096, "orpsDivC_8u_Sfs"),
    sharedFrom(4096, "orpsDiv_32f"),
    sharedFrom(4096, "orpsDiv_32f_I"),
    sharedFrom(4096, "orpsMagnitude_16sc32f"),
    sharedFrom(4096, "orpsMagnitude_32f"),
    sharedFrom(4096, "orpsSqrt_32f"),
    sharedFrom(4096, "orpsSqrt_32f_I"),
    sharedFrom(8192, "orpsThreshold_LTInv_32f"),
    sharedFrom(8192, "orpsThreshold_LTInv_32f_I"),
    sharedFrom(8192, "orpsSortRadix*cend_32f_I"),
    sharedFrom(8192, "orpsSortRadix*cend_32s_I"),
    sharedFrom(8192, "orpsSortRadix*cend_32u_I"),
};

inline bool matches(const char* name, const char* pattern) {
  if (*pattern == '*') return matches(name, pattern + 1) || (*name != 0 && matches(name + 1, pattern));
  return *name == *pattern && (*name == 0 || matches(name + 1, pattern + 1));
}

}  // namespace orptest
