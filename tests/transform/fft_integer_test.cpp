// FFTs of integers: the exactly scaled result, as far as the floating-point transform inside is exact.
#include <gtest/gtest.h>

#include <cmath>

#include "support/random.h"
#include "transform/fft_calls.h"

namespace orptest {
namespace {

// number * 2^-scale as an element.
double scaled(double number, int scale, double highest) {
  const double result = std::nearbyint(std::ldexp(number, -std::clamp(scale, -2000, 2000)));
  return std::clamp(result, -highest - 1, highest);
}

struct Case {
  int order, flag, hint;
  double amplitude;  // of the source
};

void checkScales(const Transform& t, const Case& c) {
  Random random(static_cast<uint64_t>(c.order));
  const auto input = inputFor(t.kind, c.order,
                              [&] { return std::round((c.amplitude + 0.5) * random.element<double>(Values::modest)); });
  const auto spectrum = transformed(input);
  const Spec spec(*t.type, c.order, c.flag, c.hint);
  const auto exact = stored(t.isInverse ? reversed(spectrum) : spectrum, t.to);
  const double factor = spec.factor(t.isInverse);
  double squares = 0;
  std::vector<double> want;
  for (const long double number : exact) {
    want.push_back(static_cast<double>(number) * factor);
    squares += want.back() * want.back();
  }
  const double rms = std::sqrt(squares / static_cast<double>(want.size()));
  // Up to four points there is nothing to round but the result: every tie is seen.
  const double epsilon = t.type->isDouble ? 0x1p-52 : 0x1p-23;
  const bool isExact = c.order <= 2 && c.flag != 4 && 4 * c.amplitude < 1 / epsilon;
  const double tolerance = isExact ? 0 : 4 * epsilon * std::sqrt(c.order + 1) * rms;
  if (isExact)
    for (double& number : want) number = std::nearbyint(number * 16) / 16;  // what the reference itself rounds

  const int fitting = static_cast<int>(std::ceil(std::log2(std::max(4 * rms / t.destinationHighest, 1e-9))));
  for (const int scale : {fitting, fitting - 4, fitting + 8, 1, 0, -1, INT_MIN, INT_MAX}) {
    SCOPED_TRACE(testing::Message() << t.name << ", order " << c.order << ", flag " << c.flag << ", hint " << c.hint
                                    << ", amplitude " << c.amplitude << ", scale factor " << scale);
    const std::vector<double> source = sourceOf(t, input);
    const size_t misalignment = static_cast<size_t>(c.order % 5 + 4);
    Guarded<Orp8u> work(spec.workBytes(), misalignment);
    TransformCall call(t, c.order, misalignment);
    call.setSource(source);
    ASSERT_EQ(StsOk, call(spec, scale == 0 ? nullptr : work.data(), scale));
    EXPECT_TRUE(t.isInPlace || call.sourceIs(source)) << "the source has changed";
    const auto got = call.result();
    for (size_t i = 0; i < got.size(); ++i) {
      ASSERT_LE(scaled(want[i] - tolerance, scale, t.destinationHighest), got[i])
          << "number " << i << ", exactly " << want[i];
      ASSERT_GE(scaled(want[i] + tolerance, scale, t.destinationHighest), got[i])
          << "number " << i << ", exactly " << want[i];
    }
  }
}

TEST(FftInteger, ResultsAreRoundedOnceAndSaturated) {
  int transformsSeen = 0;
  for (const Transform& t : transforms()) {
    if (!t.isOfIntegers) continue;
    ++transformsSeen;
    for (int order = 0; order <= 12; ++order) {
      for (const int hint : {0, 1, 2}) {
        if (order > 4 && hint != order % 3) continue;
        for (const int flag : {1, 2, 4, 8}) {
          if (order > 6 && flag != 1 << order % 4) continue;
          checkScales(t, {order, flag, hint, t.sourceHighest});
          checkScales(t, {order, flag, hint, 3});
        }
      }
    }
  }
  EXPECT_EQ(16 + 24 + 2, transformsSeen);
}

}  // namespace
}  // namespace orptest
