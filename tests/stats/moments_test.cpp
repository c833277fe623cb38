// Sum, Mean, StdDev and MeanStdDev in the documented order of additions; SumLn.
#include "reduction.h"

namespace reduction {
namespace {

// Eight or four lanes of double precision, behind a first element by itself if the address asks for it.
double besideAddress(const std::vector<double>& terms, uintptr_t address, size_t count) {
  std::vector<double> lanes(count);
  size_t n = 0;
  const auto take = [&](size_t block) {
    for (size_t k = 0; k < block; ++k) lanes[k] += terms[n + k];
    n += block;
  };
  if (address % 8 != 0) take(1);
  while (terms.size() - n >= count) take(count);
  fold(lanes, 4);
  for (const size_t block : {4U, 2U, 1U})
    if (terms.size() - n >= block) take(block);
  return (lanes[0] + lanes[2]) + (lanes[1] + lanes[3]);
}

// Single elements up to a multiple of 16 bytes, which elements at odd addresses never reach.
double fastSum(const std::vector<float>& terms, uintptr_t address) {
  const size_t head = address % 4 != 0 ? 0 : std::min<size_t>(terms.size(), (16 - address % 16) % 16 / 4);
  double total = 0;
  for (size_t n = 0; n < head; ++n) total += static_cast<double>(terms[n]);
  for (size_t n = head; n < terms.size(); n += 32768) {
    const size_t end = std::min(terms.size(), n + 32768);
    total += inBlocks(std::vector<float>(&terms[n], &terms[n] + (end - n)))[0];
  }
  return total;
}

// Of each part.
template <class S>
auto sums(const auto& in, const std::vector<S>& x) {
  if constexpr (Integers<S>) {
    std::vector<Int128> sums(kParts<S>);
    const auto parts = partsOf<Part<S>>(x);
    for (size_t n = 0; n < parts.size(); ++n) sums[n % kParts<S>] += parts[n];
    return sums;
  } else if constexpr (std::is_same_v<S, Orp32f>) {
    const double sum = in.extra == 1 ? fastSum(x, in.address) : besideAddress(partsOf<double>(x), in.address, 8);
    return std::vector{sum};
  } else {
    if constexpr (std::is_same_v<S, Orp32fc>)
      if (in.extra == 1) return inBlocks(partsOf<float>(x), 2);
    return inLanes(partsOf<double>(x), kParts<S>);
  }
}

struct Sum : Model {
  template <class D>
  D result(const auto& in) const {
    const auto s = sums(in, in.a);
    return made<D>([&](size_t p) { return reference::element<Part<D>>(s[p], in.extra); });
  }
};

struct Mean : Model {
  template <class D>
  D result(const auto& in) const {
    const auto s = sums(in, in.a);
    return made<D>([&](size_t p) {
      if constexpr (Integers<D>) {
        return reference::quotient<Part<D>>(s[p], Int128{in.a.size()}, in.extra);
      } else {
        volatile auto rounded = static_cast<Part<D>>(s[p]);  // in memory: GCC 12 may leave out the rounding of a pair
        return static_cast<double>(rounded) / static_cast<double>(in.a.size());
      }
    });
  }
};

double twoPasses(const std::vector<double>& x) {
  const auto len = static_cast<long double>(x.size());
  long double sum = 0, squares = 0, rest = 0;
  for (const double e : x) sum += e;
  for (const double e : x) {
    const long double deviation = e - sum / len;
    rest += deviation;
    squares += deviation * deviation;
  }
  return static_cast<double>(std::sqrt((squares - rest * rest / len) / (len - 1)));
}

// Sums over elements of single precision less a reference.
struct SingleSums {
  double sum = 0, squares = 0, reference = 0;

  explicit SingleSums(const auto& in) {
    if (in.extra == 1) {
      const auto len = static_cast<double>(in.a.size());
      sum = inBlocks(in.a, 1, 32)[0];
      squares = inBlocks(squared(in.a), 1, 32)[0];
      if (std::isfinite(squares) && len * squares - sum * sum >= len * squares / 16) return;
      sum = squares = 0;
      ofBlocks(in.a);
      if (std::isfinite(squares)) return;
    }
    const auto x = partsOf<double>(in.a);
    sum = besideAddress(x, in.address, 4);
    squares = besideAddress(squared(x), in.address, 4);
    reference = 0;
  }

 private:
  template <class T>
  static std::vector<T> squared(std::vector<T> x) {
    for (T& e : x) e *= e;
    return x;
  }
  void ofBlocks(const std::vector<float>& x) {
    for (size_t n = 0; n < x.size(); n += 32768) {
      const size_t count = std::min<size_t>(x.size() - n, 32768);
      std::vector<float> block(&x[n], &x[n] + count);
      const float first = block.front(), middle = block[count / 2], last = block.back();
      const float center = std::max(std::min(first, middle), std::min(std::max(first, middle), last));
      for (float& e : block) e -= center;
      if (n == 0) reference = static_cast<double>(center);
      const double offset = static_cast<double>(center) - reference, moved = static_cast<double>(count) * offset;
      const double here = inBlocks(block, 1, 32)[0];
      sum += here + moved;
      squares += inBlocks(squared(block), 1, 32)[0] + offset * (2 * here + moved);
    }
  }
};

struct StdDev : Model {
  static constexpr int kLeast = 2;
  template <class D>
  static constexpr double kUnits = std::is_same_v<D, double> ? 32 : 0;

  template <class D>
  D result(const auto& in) const {
    if constexpr (Integers<D>) {
      const Int128 len = in.a.size(), sum = sums(in, in.a)[0];
      Int128 squares = 0;
      for (const int x : in.a) squares += x * x;
      return static_cast<D>(
          nearestRoot(len * squares - sum * sum, len * (len - 1), in.extra, std::numeric_limits<D>::max()));
    } else if constexpr (std::is_same_v<D, float>) {
      const SingleSums sums(in);
      const auto len = static_cast<double>(in.a.size());
      const double difference = len * sums.squares - sums.sum * sums.sum;
      return static_cast<float>(std::sqrt((difference < 0 ? 0 : difference) / (len * (len - 1))));
    } else {
      return twoPasses(in.a);
    }
  }
};

// The mean in single precision is that of the deviation's own sum.
struct MeanBesideStdDev : Mean {
  template <class D>
  D result(const auto& in) const {
    if constexpr (std::is_same_v<D, float>) {
      const SingleSums sums(in);
      const auto len = static_cast<double>(in.a.size());
      return static_cast<float>(static_cast<double>(static_cast<float>(sums.sum + len * sums.reference)) / len);
    } else {
      return Mean::result<D>(in);
    }
  }
};

template <reference::Name name>
void checkExport(auto* exported) {
  if constexpr (name.isOf("Sum")) {
    check(exported, Sum{});
  } else if constexpr (name.isOf("Mean")) {
    check(exported, Mean{});
  } else if constexpr (name.isOf("StdDev")) {
    check(exported, StdDev{});
  } else {
    static_assert(name.isOf("MeanStdDev"));
    check(exported, MeanBesideStdDev{}, StdDev{});
  }
}

}  // namespace

#define ORPS_EXPORT(name, ...)                       \
  TEST(Moments, name) { checkExport<#name>(&name); } \
  static_assert(true)
#include "exports/moments.inc"

TEST(Moments, sumOfManySmallNumbers) {
  const std::vector<Orp32f> x(100'000, 1e-4F);
  Orp32f accurate, fast;
  ASSERT_EQ(StsOk, orpsSum_32f(x.data(), 100'000, &accurate, 2));
  ASSERT_EQ(StsOk, orpsSum_32f(x.data(), 100'000, &fast, 1));
  EXPECT_LE(orptest::ulps(accurate, 100'000 * static_cast<long double>(1e-4F)), 0.5);
  EXPECT_NEAR(fast, 10, 1e-4);
}

TEST(Moments, deviationWithLargeMean) {
  Random random;
  for (const size_t len : {2U, 3U, 1000U, 1024U, 1025U, 50'000U}) {
    for (const double mean : {1e3, 1e9, -1e9, 1e12}) {
      std::vector<Orp64f> x(len);
      for (auto& e : x) e = mean + random.element<Orp64f>(orptest::Values::modest);
      Orp64f deviation;
      ASSERT_EQ(StsOk, orpsStdDev_64f(x.data(), static_cast<int>(len), &deviation));
      const double want = twoPasses(x);
      EXPECT_NEAR(deviation, want, 1e-13 * want) << len << " elements around " << mean;
      if (mean > 1e3) continue;
      std::vector<Orp32f> singles(x.begin(), x.end());
      Orp32f fast;
      ASSERT_EQ(StsOk, orpsStdDev_32f(singles.data(), static_cast<int>(len), &fast, 1));
      const double wantFast = twoPasses({singles.begin(), singles.end()});
      EXPECT_NEAR(fast, wantFast, 1e-5 * wantFast) << len << " single elements around " << mean;
    }
  }
}

TEST(Moments, equalElementsDoNotDeviate) {
  for (const double value : {0.0, 0.1, -1.0 / 3, 1e300, 5e-324, 123456789.123456789}) {
    for (const int len : {2, 3, 7, 100, 1023, 1025, 5000}) {
      const std::vector<Orp64f> x(static_cast<size_t>(len), value);
      Orp64f mean, deviation = 1;
      ASSERT_EQ(StsOk, orpsStdDev_64f(x.data(), len, &deviation));
      EXPECT_EQ(deviation, 0) << len << " times " << value;
      ASSERT_EQ(StsOk, orpsMeanStdDev_64f(x.data(), len, &mean, &deviation));
      EXPECT_EQ(deviation, 0) << len << " times " << value;
    }
  }
  for (const float value : {0.1F, 1e30F, -3.3F}) {
    const Orp32f x[] = {value, value};
    Orp32f deviation = 1;
    for (const int hint : {1, 2}) {
      ASSERT_EQ(StsOk, orpsStdDev_32f(x, 2, &deviation, hint));
      EXPECT_EQ(deviation, 0) << value << ", hint " << hint;
    }
  }
}

namespace {

// The sum of the logarithms with 113 bits; whatever wins over it.
template <class S, class D>
void checkSumLn(OrpStatus (*f)(const S*, int, D*), const std::vector<S>& x, size_t misalignment) {
  orptest::Quad sum = 0;
  bool nan = false, infinite = false, zero = false, negative = false;
  for (const S e : x) {
    if constexpr (!std::is_integral_v<S>) {
      nan |= std::isnan(e);
      infinite |= e == std::numeric_limits<S>::infinity();
    }
    zero |= e == 0;
    negative |= e < 0;
    if (e > 0 && !infinite) sum += logq(e);
  }
  orptest::Guarded<S> src(x, misalignment);
  D got = 0;
  const auto len = static_cast<double>(x.size());
  EXPECT_EQ(negative ? StsDomain : zero ? StsSingularity : StsOk, f(src.data(), static_cast<int>(len), &got));
  if (negative) {
    constexpr uint64_t kDomain = sizeof(D) == 4 ? 0xFFC00000 : 0xFFF8000000000000;
    EXPECT_EQ(std::memcmp(&got, &kDomain, sizeof(D)), 0) << got << " of " << len << " elements";
  } else if (nan) {
    EXPECT_TRUE(std::isnan(got)) << got << " of " << len << " elements";
  } else if (zero || infinite) {
    EXPECT_EQ(got, std::numeric_limits<D>::infinity()) << len << " elements";
  } else {
    const double rounding = (sizeof(D) == 4 ? 0.501 : 1.5) * static_cast<double>(orptest::unitOf(static_cast<D>(sum)));
    EXPECT_LE(static_cast<double>(fabsq(got - sum)), rounding + std::ldexp(len, -53)) << got << ", " << len;
  }
}

template <class S>
S positive(Random& random, int kind) {
  using Limits = std::numeric_limits<S>;
  if constexpr (std::is_integral_v<S>) {
    return static_cast<S>(kind == 1 ? Limits::max() - random.below(3) : 1 + random.below(kind == 2 ? 3 : 32767));
  } else {
    const S usual = 1 + std::fabs(random.element<S>(orptest::Values::modest));
    if (kind == 1) return Limits::max();  // the largest significand as well
    if (kind == 2) return Limits::denorm_min() * static_cast<S>(1 + random.below(1000));  // subnormal
    if (kind == 3) return Limits::min() * usual;
    if (kind == 4) return 1 - Limits::epsilon() * static_cast<S>(random.below(3));  // logarithms around zero
    return std::ldexp(usual, random.below(2 * Limits::max_exponent - 10) - Limits::max_exponent + 5);
  }
}

template <class S, class D>
void checkSumLn(OrpStatus (*f)(const S*, int, D*)) {
  Random random;
  const auto run = [&](int len, int kind, int specials) {  // kind 6: all of them mixed
    std::vector<S> x(static_cast<size_t>(len));
    for (auto& e : x) e = positive<S>(random, kind == 6 ? random.below(6) : kind);
    for (int i = 0; i < specials; ++i) {
      constexpr double kInfinity = std::numeric_limits<double>::infinity(),
                       kNaN = std::numeric_limits<double>::quiet_NaN();
      constexpr double kSpecials[] = {0, -1, -32768, 0, -0.0, -1e-40, kInfinity, -kInfinity, kNaN, -kNaN};
      const double special = kSpecials[random.below(std::is_integral_v<S> ? 4 : 10)];
      x[static_cast<size_t>(random.below(len))] = static_cast<S>(special);
    }
    checkSumLn(f, x, static_cast<size_t>(random.below(64)));
    return !::testing::Test::HasFailure();
  };
  for (int len = 1; len <= 140; ++len)
    for (int kind = 0; kind < 7; ++kind)
      if (!run(len, kind, 0) || !run(1 + len / 4, kind, 1 + len % 3)) return;
  for (int kind = 0; kind < 7; ++kind)
    if (!run(4099, kind, kind % 2)) return;
  run(40'000, 1, 0);
  run(100'000, 6, 0);
}

}  // namespace

TEST(SumLn, orpsSumLn_16s32f) { checkSumLn(&orpsSumLn_16s32f); }
TEST(SumLn, orpsSumLn_32f) { checkSumLn(&orpsSumLn_32f); }
TEST(SumLn, orpsSumLn_32f64f) { checkSumLn(&orpsSumLn_32f64f); }
TEST(SumLn, orpsSumLn_64f) { checkSumLn(&orpsSumLn_64f); }

}  // namespace reduction
