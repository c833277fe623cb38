// Samples of every type to doubles of full scale 1 and back, by the library's conversions.
//
// A double holds every sample of every type exactly. So a sample is rounded once, on its way back, whatever the two
// types are, and not at all where the type that it goes to can hold it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "audio_file.h"
#include "library.h"

namespace wavtool {

class Converter {
 public:
  Converter(const Library& library, size_t capacity)
      : calls_{library}, narrow_(capacity), medium_(capacity), wide_(capacity) {}

  // As many samples as `to` holds, up to the capacity.
  void decode(SampleType type, const void* from, std::span<double> to);

  // Saturates. `rounding` (OrpRoundZero, ...) is that of integers; floats are rounded to nearest, ties to even.
  void encode(std::span<const double> from, SampleType type, int rounding, void* to);

 private:
  struct Calls {
    const Library& library;
    WAVTOOL_FUNCTION(orpsXorC_8u);
    WAVTOOL_FUNCTION(orpsXorC_8u_I);
    WAVTOOL_FUNCTION(orpsConvert_8s16s);
    WAVTOOL_FUNCTION(orpsConvert_16s8s_Sfs);
    WAVTOOL_FUNCTION(orpsConvert_24s32s);
    WAVTOOL_FUNCTION(orpsConvert_32s24s_Sfs);
    WAVTOOL_FUNCTION(orpsConvert_32f64f);
    WAVTOOL_FUNCTION(orpsConvert_64f32f);
    WAVTOOL_FUNCTION(orpsConvert_16s64f_Sfs);
    WAVTOOL_FUNCTION(orpsConvert_64f16s_Sfs);
    WAVTOOL_FUNCTION(orpsConvert_32s64f_Sfs);
    WAVTOOL_FUNCTION(orpsConvert_64f32s_Sfs);
    WAVTOOL_FUNCTION(orpsCopy_64f);
  } calls_;
  std::vector<Orp8u> narrow_;
  std::vector<Orp16s> medium_;
  std::vector<Orp32s> wide_;
};

// How many samples are beyond what the type holds, after rounding: of finite ones, none in floats.
int64_t clipped(std::span<const double> samples, SampleType type, int rounding);

}  // namespace wavtool
