// FFTs of float and double: results and threads. Statuses and memory of all FFTs.
#include <gtest/gtest.h>

#include <cmath>

#include "support/random.h"
#include "transform/fft_calls.h"

namespace orptest {
namespace {

struct Sample {
  std::vector<Z> input, spectrum;
};

// What takes the same inputs: complex transforms, those of real signals, those of half spectra; of one precision.
struct Group {
  Kind kind;
  bool isDouble;
  std::vector<const Transform*> members() const {
    std::vector<const Transform*> list;
    for (const Transform& t : transforms())
      if (!t.isOfIntegers && t.kind == kind && t.type->isDouble == isDouble) list.push_back(&t);
    return list;
  }
};

constexpr Group kGroups[] = {{Kind::complex, false},   {Kind::complex, true},   {Kind::toSpectrum, false},
                             {Kind::toSpectrum, true}, {Kind::toSignal, false}, {Kind::toSignal, true}};

Sample randomSample(Kind kind, bool isDouble, int order, int stream) {
  Random random(static_cast<uint64_t>(100 * order + stream));
  const auto input = inputFor(kind, order, [&]() -> double {
    return isDouble ? random.element<double>(Values::modest) : random.element<float>(Values::modest);
  });
  return {input, transformed(input)};
}

// The result; besides it what must hold for every call.
std::vector<double> resultOf(const Transform& t, const Spec& spec, const std::vector<Z>& input, size_t misalignment,
                             bool givesWork = true) {
  const std::vector<double> source = sourceOf(t, input);
  Guarded<Orp8u> work(spec.workBytes(), misalignment + 7);
  TransformCall call(t, spec.header().order, misalignment);
  call.setSource(source);
  EXPECT_EQ(StsOk, call(spec, givesWork ? work.data() : nullptr));
  EXPECT_TRUE(t.isInPlace || call.sourceIs(source)) << "the source has changed";
  std::vector<double> result = call.result();
  if (t.to == Layout::ccs) {
    EXPECT_EQ(0, result[1]) << "the sum of a real signal is real";
    EXPECT_EQ(0, result.back());
  }
  return result;
}

// In the L2 norm.
double relativeError(const Transform& t, double factor, const Sample& sample, const std::vector<double>& got) {
  const auto want = stored(t.isInverse ? reversed(sample.spectrum) : sample.spectrum, t.to);
  double error = 0, norm = 0;
  for (size_t i = 0; i < want.size(); ++i) {
    const long double exact = want[i] * static_cast<long double>(factor);
    const auto difference = static_cast<double>(got[i] - exact), value = static_cast<double>(exact);
    error += difference * difference;
    norm += value * value;
  }
  return std::sqrt(error / norm);
}

// Errors of random sign add up: an epsilon times the root of the number of roundings in a row, times less than a half.
// The mean of all samples. Correctly rounded twiddle factors and few roundings give 0.34 at most.
void checkAccuracy(const Transform& t, int order, int flag, const std::vector<Sample>& samples, int furtherRoundings) {
  SCOPED_TRACE(testing::Message() << t.name << ", order " << order << ", flag " << flag);
  const Spec spec(*t.type, order, flag);
  double error = 0;
  for (size_t i = 0; i < samples.size(); ++i) {
    const size_t misalignment = i == 0 ? 0 : static_cast<size_t>(order) + 8 * i;  // odd ones as well
    const auto result = resultOf(t, spec, samples[i].input, misalignment);
    error += relativeError(t, spec.factor(t.isInverse), samples[i], result);
    if (i == 1) {
      EXPECT_EQ(result, resultOf(t, spec, samples[i].input, misalignment, false)) << "with memory of its own";
    }
  }
  const double epsilon = t.type->isDouble ? 0x1p-52 : 0x1p-23;
  EXPECT_LE(error / static_cast<double>(samples.size()), 0.4 * epsilon * std::sqrt(order + furtherRoundings));
}

TEST(FftReference, IsTheDefinition) {
  for (const int order : {0, 1, 4, 6}) {
    const Sample sample = randomSample(Kind::complex, true, order, 0);
    const size_t n = sample.input.size();
    for (size_t k = 0; k < n; ++k) {
      Z sum{0, 0};
      for (size_t i = 0; i < n; ++i) sum = sum + sample.input[i] * rootOfUnity(i * k % n, n);
      EXPECT_NEAR(0, static_cast<double>(sum.re - sample.spectrum[k].re), 1e-17);
      EXPECT_NEAR(0, static_cast<double>(sum.im - sample.spectrum[k].im), 1e-17);
    }
  }
}

TEST(Fft, RandomInputs) {
  for (const Group& group : kGroups) {
    const auto members = group.members();
    ASSERT_GE(members.size(), 6U);
    for (int order = 0; order <= 17; ++order) {
      std::vector<Sample> samples;
      for (int i = 0; i < (order <= 4 ? 12 : order <= 10 ? 4 : 2); ++i)
        samples.push_back(randomSample(group.kind, group.isDouble, order, i));
      for (size_t m = 0; m < members.size(); ++m)
        for (const int flag : {1, 2, 4, 8})
          if (order <= 10 || flag == 1 << (m + static_cast<size_t>(order)) % 4)
            checkAccuracy(*members[m], order, flag, samples, flag == 4 ? 1 : 0);
    }
  }
}

TEST(Fft, LargeOrders) {
  for (const Kind kind : {Kind::complex, Kind::toSpectrum, Kind::toSignal}) {
    for (int order = 18; order <= (kind == Kind::complex ? 22 : 20); ++order) {
      const std::vector<Sample> samples = {randomSample(kind, false, order, 0)};  // one for both precisions
      for (const bool isDouble : {false, true}) {
        const auto members = Group{kind, isDouble}.members();
        for (size_t m = 0; m < members.size(); ++m)
          if ((kind == Kind::complex && order == 18) || (m + static_cast<size_t>(order)) % 3 == 0)
            checkAccuracy(*members[m], order, 2, samples, 0);
      }
    }
  }
}

// Impulses at many places, and what they transform to. A single input may be an unlucky one.
TEST(Fft, ImpulsesAndTones) {
  for (const Group& group : kGroups) {
    for (const int order : {1, 2, 3, 4, 5, 6, 9, 12, 14}) {
      const size_t n = size_t{1} << order, places = group.kind == Kind::toSignal ? n / 2 + 1 : n;
      std::vector<Sample> samples;
      for (size_t place = 0; place < places; place += order <= 6 ? 1 : places / 3 + 1) {
        std::vector<Z> x(n, {0, 0});
        x[place] = {1, 0};
        if (group.kind == Kind::toSignal && place > 0) x[n - place] = {1, 0};
        std::vector<Z> tone = transformed(x);
        samples.push_back({std::move(x), tone});
        for (Z& z : tone) {
          const auto rounded = [&](long double part) {
            return group.isDouble ? static_cast<double>(part) : static_cast<float>(part);
          };
          z = {rounded(z.re), group.kind == Kind::complex ? rounded(z.im) : 0};
        }
        samples.push_back({tone, transformed(tone)});
      }
      for (const Transform* t : group.members())
        for (const Sample& sample : samples) checkAccuracy(*t, order, 8, {sample}, 4);
    }
  }
}

TEST(Fft, TheSameBitsFromTwoThreads) {
  for (const Group& group : kGroups) {
    for (const int order : {13, 18, 21}) {
      const auto input =
          inputFor(group.kind, order, [random = Random()]() mutable { return random.element<float>(Values::modest); });
      const auto members = group.members();
      for (size_t m = 0; m < members.size(); m += order == 21 ? 7 : order == 18 ? 3 : 1) {
        const Spec spec(*members[m]->type, order, 4);
        const auto one = resultOf(*members[m], spec, input, 0);
        orpSetNumThreads(2);
        const auto two = resultOf(*members[m], spec, input, 0);
        orpSetNumThreads(1);
        EXPECT_TRUE(one == two) << members[m]->name << ", order " << order;
      }
    }
  }
}

// ---- all transforms, those of integers as well ----------------------------------------------------------------------

TEST(FftCalls, NullPointersAndForeignSpecifications) {
  for (const Transform& t : transforms()) {
    for (const int order : {3, 8}) {
      SCOPED_TRACE(testing::Message() << t.name << ", order " << order);
      Spec spec(*t.type, order, 1);
      Guarded<Orp8u> work(spec.workBytes());
      TransformCall call(t, order);
      call.slots[call.arrays()].pointer = spec.get();
      call.slots.back().pointer = work.data();
      const auto withNull = [&](size_t slot) {
        void* const kept = std::exchange(call.slots[slot].pointer, nullptr);
        const OrpStatus status = call();
        call.slots[slot].pointer = kept;
        return status;
      };
      for (size_t slot = 0; slot <= call.arrays(); ++slot) EXPECT_EQ(StsNullPtr, withNull(slot)) << "pointer " << slot;
      EXPECT_EQ(StsOk, spec.free());
      EXPECT_EQ(StsSpecMismatch, call()) << "after Free";
      for (const SpecType* type : specTypes()) {
        if (type == t.type) continue;
        const Spec foreign(*type, order, 1);
        call.slots[call.arrays()].pointer = foreign.get();
        EXPECT_EQ(StsSpecMismatch, call()) << type->name;
        EXPECT_EQ(t.kind == Kind::complex ? StsSpecMismatch : StsNullPtr, withNull(0)) << type->name;
      }
      EXPECT_TRUE(call.destinationUntouched());
      EXPECT_TRUE(work.untouched());
    }
  }
}

TEST(FftCalls, AllocateOnlyWithoutAWorkBuffer) {
  for (const Transform& t : transforms()) {
    for (const int order : {0, 3, 5, 10, 13, 18}) {
      SCOPED_TRACE(testing::Message() << t.name << ", order " << order);
      const Spec spec(*t.type, order, 1);
      Guarded<Orp8u> work(spec.workBytes(), 3);
      TransformCall call(t, order);
      {
        CountingAllocator memory(0);
        const OrpStatus status = call(spec, nullptr);
        EXPECT_EQ(memory.requests > 0 ? StsNoMemory : StsOk, status);
        EXPECT_LE(memory.requests > 0, call.destinationUntouched());
        EXPECT_LE(memory.requests > 0, spec.workBytes() > 0);
        EXPECT_GE(memory.requests > 0, order >= 10);
      }
      CountingAllocator memory;
      EXPECT_EQ(StsOk, call(spec, work.data()));
      EXPECT_EQ(0, memory.requests);
    }
  }
}

}  // namespace
}  // namespace orptest
