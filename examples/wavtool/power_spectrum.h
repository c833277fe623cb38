// Power spectra of a recording, frame by frame.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "audio_file.h"
#include "library.h"
#include "window.h"

namespace wavtool {

// Adds up the power spectra of frames of one length, each under a window. A frame is filled up with zeros to at
// least twice its length, so that the spectrum shows where between two independent values a maximum lies.
class PowerSpectrum {
 public:
  PowerSpectrum(const Library& library, const Window& window, size_t frameLength);
  ~PowerSpectrum();
  PowerSpectrum(const PowerSpectrum&) = delete;
  PowerSpectrum& operator=(const PowerSpectrum&) = delete;

  size_t frameLength() const { return window_.size(); }
  size_t transformLength() const { return frame_.size(); }
  size_t bins() const { return bins_.size(); }  // equally spaced from 0 to half the sample rate, both included

  // Adds the power of a frame to bins() sums.
  void add(std::span<const double> samples, std::span<double> sums);

  // Sums over `frames` frames to the levels of their means, in dB below a sine of amplitude 1; kFloor if there is less.
  void toDecibels(std::span<double> sums, size_t frames) const;
  static constexpr double kFloor = -200;
  static bool isSilence(double level) { return level < kFloor + 1; }

 private:
  struct Calls {
    const Library& library;
    WAVTOOL_FUNCTION(orpsFFTInitAlloc_R_64f);
    WAVTOOL_FUNCTION(orpsFFTGetBufSize_R_64f);
    WAVTOOL_FUNCTION(orpsFFTFwd_RToCCS_64f);
    WAVTOOL_FUNCTION(orpsFFTFree_R_64f);
    WAVTOOL_FUNCTION(orpsSum_64f);
    WAVTOOL_FUNCTION(orpsMul_64f);
    WAVTOOL_FUNCTION(orpsPowerSpectr_64fc);
    WAVTOOL_FUNCTION(orpsAdd_64f_I);
    WAVTOOL_FUNCTION(orpsMulC_64f_I);
    WAVTOOL_FUNCTION(orpsThreshold_LT_64f_I);
    WAVTOOL_FUNCTION(orpsLn_64f_I);
  } calls_;
  std::vector<double> window_, frame_, power_;
  std::vector<Orp64fc> bins_;
  std::vector<Orp8u> work_;
  OrpFftSpec_R_64f* spec_ = nullptr;
};

// How many frames of a length lie in a recording if they overlap by half or a little more, but at least `least`, if it
// is long enough for them to differ.
size_t framesIn(const AudioReader& input, size_t length, size_t least = 1);

// Calls `work` with the samples of one channel in one frame: for every frame, for every channel of it. The first frame
// begins and the last one ends with the recording, so that none is lost. Returns how many samples were not finite.
using FrameWork = std::function<void(size_t frame, size_t channel, std::span<const double> samples)>;
int64_t forEachFrame(const Library& library, AudioReader& input, size_t length, size_t frames, const FrameWork& work);

}  // namespace wavtool
