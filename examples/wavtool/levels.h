// Peak and RMS level of 16-bit samples.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace wavtool {

class Level {
 public:
  void add(std::span<const int16_t> samples);

  // "peak -3.1 dBFS, RMS -20.4 dBFS"; 0 dBFS is the amplitude 32768, for both.
  std::string text() const;

 private:
  int peak_ = 0;
  double squares_ = 0;  // their sum; exact up to 2^53
  int64_t count_ = 0;
};

}  // namespace wavtool
