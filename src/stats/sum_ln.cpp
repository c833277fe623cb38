// Sums of logarithms: the logarithm of the product, whose significand and exponent are kept apart.
#include "orpsp/stats/moments.h"

#include "frame/entry.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "stats/sum_ln.cpp"
#include <hwy/foreach_target.h>

#include "simd/forms-inl.h"
#include "simd/maths-inl.h"
#include "stats/logarithm.h"
#include "stats/reduce-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

constexpr hn::ScalableTag<double> kTag;
constexpr hn::ScalableTag<uint64_t> kBitsTag;
using Bits = hn::Vec<decltype(kBitsTag)>;
constexpr int kBias = 1023, kSignificandBits = 52;

constexpr double kGreatest = std::numeric_limits<double>::max();

enum : unsigned { kZero = 1, kNegative = 2, kNan = 4, kInfinite = 8 };

// Elements with their subnormal numbers scaled up, by which exponents, and what else is among them.
struct Unusual {
  Doubles scaled;
  Bits exponents;
  unsigned seen;
};

HWY_NOINLINE Unusual UnusualOf(Doubles x) {
  const auto zero = hn::Zero(kTag);
  const auto isSubnormal = hn::And(hn::Gt(x, zero), hn::Lt(x, hn::Set(kTag, kLeastNormal<double>)));
  const auto noted = [](auto mask, unsigned what) HWY_ATTR { return hn::AllFalse(kTag, mask) ? 0 : what; };
  return {hn::IfThenElse(isSubnormal, hn::Mul(x, hn::Set(kTag, 0x1p64)), x),
          hn::BitCast(kBitsTag, hn::IfThenElseZero(isSubnormal, hn::BitCast(kTag, hn::Set(kBitsTag, 64)))),
          noted(hn::Eq(x, zero), kZero) | noted(hn::Lt(x, zero), kNegative) | noted(hn::IsNaN(x), kNan) |
              noted(hn::Gt(x, hn::Set(kTag, kGreatest)), kInfinite)};
}

// Significands are multiplied lane by lane; the exponents, still biased, are summed. Only the careful kind can do with
// other numbers than positive normal ones; the other tells whether there were any.
template <bool isCareful>
struct Logarithms {
  using Lanes = Sums<double, 32>;
  static constexpr size_t kVectors = Lanes::kVectors, kPer = Lanes::kWidth;
  static constexpr size_t kMostSteps = 512;  // products of so many significands, below 2 each, do not overflow

  Doubles product[kVectors];
  Bits exponents[kVectors];
  Bits outside;          // sign bits: an element was
  uint64_t factors = 0;  // all lanes together
  unsigned seen = 0;     // of what decides the result by itself

  HWY_INLINE Logarithms() : outside(hn::Zero(kBitsTag)) {
    Unrolled<kVectors>([this](auto k) ORPSP_INLINED {
      product[k] = hn::Set(kTag, 1.0);
      exponents[k] = hn::Zero(kBitsTag);
    });
  }

  HWY_INLINE void Add(size_t k, auto v) {
    auto x = Lift(kTag, v);
    if constexpr (isCareful) {
      const Unusual unusual = UnusualOf(x);
      x = unusual.scaled;
      exponents[k] = hn::Sub(exponents[k], unusual.exponents);
      seen |= unusual.seen;
    } else {
      const auto least = hn::Set(kBitsTag, __builtin_bit_cast(uint64_t, kLeastNormal<double>));
      const auto most = hn::Set(kBitsTag, __builtin_bit_cast(uint64_t, kGreatest));
      const auto bits = hn::BitCast(kBitsTag, x);
      outside = hn::Or(outside, hn::Or(hn::Sub(bits, least), hn::Sub(most, bits)));
    }
    Multiply(k, x);
    factors += kPer;
  }

  HWY_INLINE void Flush() {
    Unrolled<kVectors>([this](auto k) ORPSP_INLINED {
      const auto all = product[k];
      product[k] = hn::Set(kTag, 1.0);
      Multiply(k, all);
    });
    factors += kVectors * kPer;
  }

  HWY_INLINE void Multiply(size_t k, Doubles x) {
    const auto bits = hn::BitCast(kBitsTag, x);
    const auto significand = hn::Or(hn::And(bits, hn::Set(kBitsTag, (uint64_t{1} << kSignificandBits) - 1)),
                                    hn::Set(kBitsTag, uint64_t{kBias} << kSignificandBits));
    exponents[k] = hn::Add(exponents[k], hn::ShiftRight<kSignificandBits>(bits));
    product[k] = hn::Mul(product[k], hn::BitCast(kTag, significand));
  }

  HWY_INLINE bool HasOthers() const {
    constexpr hn::ScalableTag<int64_t> d;
    return !hn::AllFalse(kTag, hn::MaskFromVec(hn::BitCast(kTag, hn::BroadcastSignBit(hn::BitCast(d, outside)))));
  }

  HWY_INLINE double Total() const {
    Sums<uint64_t, 32> exponent;
    alignas(HWY_MAX_BYTES) double lane[32];
    Unrolled<kVectors>([&](auto k) ORPSP_INLINED {
      exponent.v[k] = exponents[k];
      hn::Store(product[k], kTag, lane + k * kPer);
    });
    for (size_t half = 16; half != 0; half /= 2)
      for (size_t i = 0; i < half; ++i) lane[i] *= lane[i + half];
    return logarithm(lane[0], static_cast<int64_t>(exponent.Total() - factors * kBias));
  }
};

struct LogarithmOfAll {
  double value;
  unsigned seen;
};

template <bool isCareful, class T>
HWY_NOINLINE LogarithmOfAll LogarithmOf(const T* p, size_t len) {
  const auto all = Accumulated<Logarithms<isCareful>>(len, Padded<T>{{p}, T{1}});
  if constexpr (!isCareful) {
    if (HWY_UNLIKELY(all.HasOthers())) return LogarithmOf<true>(p, len);
  }
  const unsigned seen = all.seen;
  if (seen & kNegative) return {hn::GetLane(DomainNan(kTag)), seen};
  if (seen & kNan) return {std::numeric_limits<double>::quiet_NaN(), seen};
  if (seen & (kZero | kInfinite)) return {std::numeric_limits<double>::infinity(), seen};
  return {all.Total(), seen};
}

template <class T, class R>
OrpStatus sumLn(const T* pSrc, int len, R* pSum) {
  ORPS_CHECK_VECTOR(len, pSrc, pSum);
  const LogarithmOfAll result = LogarithmOf<false>(pSrc, toSize(len));
  put(pSum, static_cast<R>(result.value));
  return result.seen & kNegative ? StsDomain : result.seen & kZero ? StsSingularity : StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/sum_ln.inc"
#define ORPSP_NEAREST always
#include "frame/exports-inl.h"
