#include "converter.h"

#include <algorithm>
#include <cmath>

namespace wavtool {
namespace {

// Turns an unsigned 8-bit sample, whose zero is 128, into a signed one, and back.
constexpr Orp8u kTopBit = 0x80;

double rounded(double value, int rounding) {
  if (rounding == OrpRoundZero) return std::trunc(value);
  return rounding == OrpRoundNear ? std::nearbyint(value) : std::round(value);
}

}  // namespace

void Converter::decode(SampleType type, const void* from, std::span<double> to) {
  const int len = static_cast<int>(to.size());
  switch (type) {
    case SampleType::k8u:
      calls_.orpsXorC_8u(static_cast<const Orp8u*>(from), kTopBit, narrow_.data(), len);
      calls_.orpsConvert_8s16s(reinterpret_cast<const Orp8s*>(narrow_.data()), medium_.data(), len);
      calls_.orpsConvert_16s64f_Sfs(medium_.data(), to.data(), len, 7);
      break;
    case SampleType::k16s:
      calls_.orpsConvert_16s64f_Sfs(static_cast<const Orp16s*>(from), to.data(), len, 15);
      break;
    case SampleType::k24s:
      calls_.orpsConvert_24s32s(static_cast<const Orp24s*>(from), wide_.data(), len);
      calls_.orpsConvert_32s64f_Sfs(wide_.data(), to.data(), len, 23);
      break;
    case SampleType::k32s:
      calls_.orpsConvert_32s64f_Sfs(static_cast<const Orp32s*>(from), to.data(), len, 31);
      break;
    case SampleType::k32f:
      calls_.orpsConvert_32f64f(static_cast<const Orp32f*>(from), to.data(), len);
      break;
    case SampleType::k64f:
      calls_.orpsCopy_64f(static_cast<const Orp64f*>(from), to.data(), len);
      break;
  }
}

void Converter::encode(std::span<const double> from, SampleType type, int rounding, void* to) {
  const int len = static_cast<int>(from.size());
  switch (type) {
    case SampleType::k8u:
      calls_.orpsConvert_64f16s_Sfs(from.data(), medium_.data(), len, rounding, -7);
      calls_.orpsConvert_16s8s_Sfs(medium_.data(), static_cast<Orp8s*>(to), len, 0);
      calls_.orpsXorC_8u_I(kTopBit, static_cast<Orp8u*>(to), len);
      break;
    case SampleType::k16s:
      calls_.orpsConvert_64f16s_Sfs(from.data(), static_cast<Orp16s*>(to), len, rounding, -15);
      break;
    case SampleType::k24s:
      calls_.orpsConvert_64f32s_Sfs(from.data(), wide_.data(), len, rounding, -23);
      calls_.orpsConvert_32s24s_Sfs(wide_.data(), static_cast<Orp24s*>(to), len, 0);
      break;
    case SampleType::k32s:
      calls_.orpsConvert_64f32s_Sfs(from.data(), static_cast<Orp32s*>(to), len, rounding, -31);
      break;
    case SampleType::k32f:
      calls_.orpsConvert_64f32f(from.data(), static_cast<Orp32f*>(to), len);
      break;
    case SampleType::k64f:
      calls_.orpsCopy_64f(from.data(), static_cast<Orp64f*>(to), len);
      break;
  }
}

int64_t clipped(std::span<const double> samples, SampleType type, int rounding) {
  if (!isInteger(type)) return 0;
  const double scale = std::ldexp(1.0, 8 * bytesOf(type) - 1);
  return std::count_if(samples.begin(), samples.end(), [=](double sample) {
    const double value = rounded(sample * scale, rounding);
    return value < -scale || value > scale - 1;
  });
}

}  // namespace wavtool
