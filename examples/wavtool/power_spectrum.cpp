#include "power_spectrum.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <numbers>

#include "converter.h"
#include "not_finite.h"

namespace wavtool {
namespace {

constexpr int kNoScaling = 8, kNoHint = 0;  // arguments of an FFT's specification

int lengthOf(const auto& vector) { return static_cast<int>(vector.size()); }

}  // namespace

PowerSpectrum::PowerSpectrum(const Library& library, const Window& window, size_t frameLength)
    : calls_{library}, window_(weightsOf(window, library, frameLength)) {
  frame_.resize(2 * std::bit_ceil(frameLength));
  bins_.resize(frame_.size() / 2 + 1);
  power_.resize(bins_.size());
  calls_.orpsFFTInitAlloc_R_64f(&spec_, std::countr_zero(frame_.size()), kNoScaling, kNoHint);
  int workSize = 0;
  calls_.orpsFFTGetBufSize_R_64f(spec_, &workSize);
  work_.resize(static_cast<size_t>(workSize));
}

PowerSpectrum::~PowerSpectrum() { calls_.orpsFFTFree_R_64f(spec_); }

void PowerSpectrum::add(std::span<const double> samples, std::span<double> sums) {
  calls_.orpsMul_64f(samples.data(), window_.data(), frame_.data(), lengthOf(window_));
  calls_.orpsFFTFwd_RToCCS_64f(frame_.data(), reinterpret_cast<Orp64f*>(bins_.data()), spec_,
                               work_.empty() ? nullptr : work_.data());
  calls_.orpsPowerSpectr_64fc(bins_.data(), power_.data(), lengthOf(power_));
  calls_.orpsAdd_64f_I(power_.data(), sums.data(), lengthOf(sums));
}

void PowerSpectrum::toDecibels(std::span<double> sums, size_t frames) const {
  // A sine's amplitude times half the sum of the window stands in its bin.
  double gain;
  calls_.orpsSum_64f(window_.data(), lengthOf(window_), &gain);
  calls_.orpsMulC_64f_I(4 / (gain * gain) / static_cast<double>(frames), sums.data(), lengthOf(sums));
  calls_.orpsThreshold_LT_64f_I(sums.data(), lengthOf(sums), std::pow(10, kFloor / 10));
  calls_.orpsLn_64f_I(sums.data(), lengthOf(sums));
  calls_.orpsMulC_64f_I(10 / std::numbers::ln10, sums.data(), lengthOf(sums));
}

size_t framesIn(const AudioReader& input, size_t length, size_t least) {
  const size_t rest = static_cast<size_t>(input.frames()) - length, hop = std::max<size_t>(length / 2, 1);
  return std::max((rest + hop - 1) / hop, std::min(rest, least - 1)) + 1;
}

int64_t forEachFrame(const Library& library, AudioReader& input, size_t length, size_t frames, const FrameWork& work) {
  const auto channels = static_cast<size_t>(input.format().channels);
  const size_t rest = static_cast<size_t>(input.frames()) - length;
  Converter converter(library, length * channels);
  std::vector<std::byte> read(length * channels * static_cast<size_t>(bytesOf(input.readsAs())));
  std::vector<double> block(length * channels);
  std::vector<std::vector<double>> samples(channels, std::vector<double>(length));
  int64_t notFinite = 0;
  for (size_t frame = 0, begin = 0, end = 0; frame < frames; ++frame) {
    if (frame > 0) begin = frame * rest / (frames - 1);
    const size_t fresh = begin + length - end;
    end += fresh;
    input.read(read.data(), fresh);
    const auto decoded = std::span(block).first(fresh * channels);
    converter.decode(input.readsAs(), read.data(), decoded);
    notFinite += zeroNotFinite(decoded);
    for (size_t channel = 0; channel < channels; ++channel) {
      std::vector<double>& own = samples[channel];
      std::copy(own.begin() + static_cast<std::ptrdiff_t>(fresh), own.end(), own.begin());
      for (size_t n = 0; n < fresh; ++n) own[length - fresh + n] = decoded[n * channels + channel];
      work(frame, channel, own);
    }
  }
  return notFinite;
}

}  // namespace wavtool
