// Peak and RMS level of samples.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace wavtool {

class Level {
 public:
  void add(std::span<const int16_t> samples);
  void add(std::span<const double> samples);  // of full scale 1

  // "peak -3.1 dBFS, RMS -20.4 dBFS"; 0 dBFS is the amplitude 1 (32768 of 16-bit samples), for both.
  std::string text() const;

 private:
  void addOne(double sample);

  double peak_ = 0;
  double squares_ = 0;  // their sum
  int64_t count_ = 0;
};

}  // namespace wavtool
