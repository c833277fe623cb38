// How accurate the vector maths of floats is: one-argument single-precision functions over all 2^32 inputs, the others
// over random and structured samples. Run on demand; see docs/accuracy.md.
//
//   accuracy [--function TEXT] [--stride N] [--samples N]
//
// TEXT selects the functions whose name holds it. N = 1 of the stride takes every input of the 2^32. Prints a line for
// each function; fails if one is less accurate than promised.
#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#if defined(ORPSP_HAS_MPFR)
#include <mpfr.h>
#endif

#include "orpcore.h"
#include "orpsp.h"
#include "support/export_tables.h"
#include "support/random.h"
#include "support/ulp.h"

namespace {

using orptest::Quad;
using orptest::Random;

constexpr int kBlock = 4096;

// The function f(x) or f(x, y) in the library that checks the reference at the worst input; with both, g(x, f(y)).
#if defined(ORPSP_HAS_MPFR)
struct Mpfr {
  int (*unary)(mpfr_ptr, mpfr_srcptr, mpfr_rnd_t) = nullptr;
  int (*binary)(mpfr_ptr, mpfr_srcptr, mpfr_srcptr, mpfr_rnd_t) = nullptr;
};
#define BY_MPFR(...) \
  Mpfr { __VA_ARGS__ }
#else
struct Mpfr {};
#define BY_MPFR(...) \
  Mpfr {}
#endif

// A function of x, or of x and y, in one precision; the reference has at least 11 bits more.
template <class T, class Exact>
struct Function {
  const char* name;  // of the export, without its prefix
  int destination;   // of two the one that is measured
  double promised;   // units in the last place
  Exact (*exact)(T x, T y);
  void (*sample)(Random&, T& x, T& y);  // null: all inputs
  Mpfr mpfr;
  double (*inDouble)(double x) = nullptr;  // a quick reference, see isSettled
};

template <class T>
struct Block {
  std::array<T, kBlock> x, y, result, other;

  void call(const orptest::Export& exported, int destination) {
    T* const destinations[] = {destination == 0 ? result.data() : other.data(),
                               destination == 0 ? other.data() : result.data()};
    const size_t sources = exported.sources();
    std::array<orptest::Slot, 5> slots;
    for (size_t i = 0; i < exported.arrays(); ++i)
      slots[i].pointer = i >= sources ? destinations[i - sources] : i == 0 ? x.data() : y.data();
    slots[exported.length()].number = kBlock;
    exported.invoke(exported.function, slots.data());
  }
};

template <class T>
struct Findings {
  double largest = 0;
  T x{}, y{}, got{};
  uint64_t inputs = 0, misrounded = 0;

  void add(const Findings& other) {
    inputs += other.inputs;
    misrounded += other.misrounded;
    if (!(other.largest > largest)) return;
    largest = other.largest;
    x = other.x, y = other.y, got = other.got;
  }
};

struct Options {
  std::string_view function;
  uint64_t stride = 1, samples = 100'000'000;
};

// True if a reference in double settles the matter: a right result (or a wrong one), far enough from a tie, with less
// of an error than was seen before. The library of the system is right to 1 unit of double, 2^-29 units of float.
bool isSettled(float got, double exact, Findings<float>& findings) {
  constexpr double kMargin = 1e-6;
  const auto rounded = static_cast<float>(exact);
  if (std::isnan(exact)) return std::isnan(got);
  if (std::isinf(rounded) || rounded == 0)  // far beyond the range, or exactly so
    return got == rounded && std::signbit(got) == std::signbit(exact) &&
           (std::fabs(exact) > 4e38 || std::fabs(exact) < 1e-47);
  // The smaller unit, if the number is a power of two.
  const double unit = orptest::unitOf(std::nextafter(rounded, 0.0F));
  const double fromRounded = std::fabs(exact - rounded) / unit, error = std::fabs(exact - got) / unit;
  if (fromRounded > 0.5 - kMargin || !(error < findings.largest - kMargin)) return false;
  if (got != rounded) ++findings.misrounded;
  return true;
}

template <class T, class Exact>
void compare(const Function<T, Exact>& function, const Block<T>& block, size_t count, Findings<T>& findings) {
  for (size_t i = 0; i < count; ++i) {
    const T got = block.result[i];
    if constexpr (std::is_same_v<T, float>)
      if (function.inDouble && isSettled(got, function.inDouble(block.x[i]), findings)) continue;
    const Exact exact = function.exact(block.x[i], block.y[i]);
    const auto rounded = static_cast<T>(exact);
    if (got != rounded && (got == got || rounded == rounded)) ++findings.misrounded;
    const double error = orptest::ulps(got, exact);
    if (error > findings.largest) {
      findings.largest = error;
      findings.x = block.x[i], findings.y = block.y[i], findings.got = got;
    }
  }
  findings.inputs += count;
}

// Blocks of inputs, taken by as many threads as there are cores.
template <class T, class Exact>
Findings<T> measure(const orptest::Export& exported, const Function<T, Exact>& function, const Options& options) {
  const uint64_t all = ((uint64_t{1} << 32) + options.stride - 1) / options.stride;
  const uint64_t total = function.sample ? options.samples : all;
  std::atomic<uint64_t> next = 0;
  std::vector<Findings<T>> findings(std::max(1u, std::thread::hardware_concurrency()));
  std::vector<std::thread> threads;
  for (Findings<T>& own : findings) {
    threads.emplace_back([&] {
      const auto block = std::make_unique<Block<T>>();
      for (uint64_t begin; (begin = next.fetch_add(kBlock)) < total;) {
        Random random(begin);
        for (size_t i = 0; i < kBlock; ++i) {
          if (function.sample)
            function.sample(random, block->x[i], block->y[i]);
          else
            block->x[i] = std::bit_cast<float>(static_cast<uint32_t>((begin + i) * options.stride));
        }
        block->call(exported, function.destination);
        compare(function, *block, std::min<uint64_t>(kBlock, total - begin), own);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  Findings<T> sum;
  for (const Findings<T>& own : findings) sum.add(own);
  return sum;
}

// The error at the worst input, by another library.
#if defined(ORPSP_HAS_MPFR)
template <class T>
double mpfrError(const Mpfr& mpfr, const Findings<T>& worst) {
  mpfr_t x, y, exact;
  mpfr_inits2(256, x, y, exact, nullptr);
  mpfr_set_d(x, worst.x, MPFR_RNDN);
  mpfr_set_d(y, worst.y, MPFR_RNDN);
  if (mpfr.unary && mpfr.binary) {
    mpfr.unary(exact, y, MPFR_RNDN);
    mpfr.binary(exact, x, exact, MPFR_RNDN);
  } else if (mpfr.unary) {
    mpfr.unary(exact, x, MPFR_RNDN);
  } else {
    mpfr.binary(exact, y, x, MPFR_RNDN);
  }
  const auto rounded = static_cast<T>(sizeof(T) == 4 ? mpfr_get_flt(exact, MPFR_RNDN) : mpfr_get_d(exact, MPFR_RNDN));
  mpfr_sub_d(exact, exact, worst.got, MPFR_RNDN);
  mpfr_div_d(exact, exact, orptest::unitOf(rounded), MPFR_RNDN);
  const double error = std::fabs(mpfr_get_d(exact, MPFR_RNDN));
  mpfr_clears(x, y, exact, nullptr);
  return error;
}
#endif

template <class T, class Exact>
bool report(std::span<const Function<T, Exact>> functions, const Options& options) {
  bool good = true;
  for (const auto& function : functions) {
    const std::string name = std::string("orps") + function.name;
    if (name.find(options.function) == std::string::npos) continue;
    const auto& exports = orptest::sweptExports();
    const auto exported =
        std::find_if(exports.begin(), exports.end(), [&](const orptest::Export& each) { return each.name == name; });
    if (exported == exports.end()) {
      std::printf("%s is in no table\n", name.c_str());
      good = false;
      continue;
    }
    const Findings<T> found = measure(*exported, function, options);
    const bool hasTwo = exported->arrays() - exported->sources() == 2;
    std::printf("| %s%s | %llu | %.4f |", function.name,
                !hasTwo                     ? ""
                : function.destination == 0 ? " re"
                                            : " im",
                static_cast<unsigned long long>(found.inputs), found.largest);
#if defined(ORPSP_HAS_MPFR)
    std::printf(" %.4f |", mpfrError(function.mpfr, found));
#endif
    std::printf(" %a", static_cast<double>(found.x));
    if (exported->sources() == 2) std::printf(", %a", static_cast<double>(found.y));
    std::printf(" | %.2g %% |\n", 100 * static_cast<double>(found.misrounded) / static_cast<double>(found.inputs));
    std::fflush(stdout);
    if (found.largest <= function.promised) continue;
    std::printf("%s: got %a, %g units from the exact result instead of %g\n", name.c_str(),
                static_cast<double>(found.got), found.largest, function.promised);
    good = false;
  }
  return good;
}

// ---- Samples --------------------------------------------------------------------------------------------------------

template <class T>
T modest(Random& random) {
  return random.element<T>(orptest::Values::modest);
}
template <class T>
T anyBits(Random& random) {
  if constexpr (sizeof(T) == 4)
    return std::bit_cast<T>(static_cast<uint32_t>(random.bits()));
  else
    return std::bit_cast<T>(random.bits());
}

// Any bits; the interval given; around 1 and around 0, at every distance.
template <class T, int range>
void sampleOne(Random& random, T& x, T& y) {
  y = 0;
  switch (random.below(4)) {
    case 0:
      x = anyBits<T>(random);
      break;
    case 1:
      x = range * modest<T>(random);
      break;
    case 2:
      x = 1 + std::ldexp(modest<T>(random), -random.below(std::numeric_limits<T>::digits));
      break;
    default:
      x = std::ldexp(modest<T>(random), 6 - random.below(40));
  }
}

// Parts of any bits; of about the same magnitude, everywhere in the range; close to the diagonals; a small and a large
// one.
template <class T>
void sampleTwo(Random& random, T& x, T& y) {
  x = anyBits<T>(random);
  switch (random.below(4)) {
    case 0:
      y = anyBits<T>(random);
      break;
    case 1:
      y = std::ldexp(x, random.below(8) - 4) * modest<T>(random);
      break;
    case 2:
      y = (random.below(2) ? -x : x) *
          (1 + std::ldexp(modest<T>(random), -random.below(std::numeric_limits<T>::digits)));
      break;
    default:
      x = modest<T>(random);
      y = std::ldexp(modest<T>(random), 35 - random.below(70));
  }
}

// A magnitude and a phase: any; within a few turns; huge; the neighbours of multiples of pi / 2.
template <class T>
void samplePolar(Random& random, T& x, T& y) {
  x = random.below(4) ? 1 + modest<T>(random) : anyBits<T>(random);
  switch (random.below(4)) {
    case 0:
      y = anyBits<T>(random);
      break;
    case 1:
      y = 8 * modest<T>(random);
      break;
    case 2:
      y = std::ldexp(modest<T>(random), random.below(60));
      break;
    default: {
      const auto multiple = static_cast<long double>(random.bits() >> (1 + random.below(63)));
      y = static_cast<T>(multiple * 1.57079632679489661923132169163975144L);
      for (int steps = random.below(3); steps > 0; --steps) y = std::nextafter(y, T{0});
    }
  }
}

// ---- Functions ------------------------------------------------------------------------------------------------------

#define EXACT(T, R, formula) [](T x [[maybe_unused]], T y [[maybe_unused]]) -> R { return formula; }

using L = long double;

constexpr Function<float, L> kSingle[] = {
    {"Sqrt_32f", 0, 0.5, EXACT(float, L, std::sqrt(L{x})), nullptr, BY_MPFR(mpfr_sqrt), std::sqrt},
    {"Exp_32f", 0, 1, EXACT(float, L, std::exp(L{x})), nullptr, BY_MPFR(mpfr_exp), std::exp},
    {"Ln_32f", 0, 1, EXACT(float, L, std::log(L{x})), nullptr, BY_MPFR(mpfr_log), std::log},
    {"Cubrt_32f", 0, 1, EXACT(float, L, std::cbrt(L{x})), nullptr, BY_MPFR(mpfr_cbrt), std::cbrt},
    {"Arctan_32f", 0, 1, EXACT(float, L, std::atan(L{x})), nullptr, BY_MPFR(mpfr_atan), std::atan},
    {"Phase_32f", 0, 1, EXACT(float, L, std::atan2(L{y}, L{x})), sampleTwo, BY_MPFR(nullptr, mpfr_atan2)},
    {"Magnitude_32f", 0, 1, EXACT(float, L, std::hypot(L{x}, L{y})), sampleTwo, BY_MPFR(nullptr, mpfr_hypot)},
    {"PolarToCart_32f", 0, 2, EXACT(float, L, x* std::cos(L{y})), samplePolar, BY_MPFR(mpfr_cos, mpfr_mul)},
    {"PolarToCart_32f", 1, 2, EXACT(float, L, x* std::sin(L{y})), samplePolar, BY_MPFR(mpfr_sin, mpfr_mul)},
};

constexpr Function<double, Quad> kDouble[] = {
    {"Exp_64f", 0, 1, EXACT(double, Quad, expq(x)), sampleOne<double, 746>, BY_MPFR(mpfr_exp)},
    {"Ln_64f", 0, 1, EXACT(double, Quad, logq(x)), sampleOne<double, 100>, BY_MPFR(mpfr_log)},
    {"Arctan_64f", 0, 1, EXACT(double, Quad, atanq(x)), sampleOne<double, 10>, BY_MPFR(mpfr_atan)},
    {"Phase_64f", 0, 1, EXACT(double, Quad, atan2q(y, x)), sampleTwo, BY_MPFR(nullptr, mpfr_atan2)},
    {"Magnitude_64f", 0, 1, EXACT(double, Quad, hypotq(x, y)), sampleTwo, BY_MPFR(nullptr, mpfr_hypot)},
    {"PolarToCart_64f", 0, 2, EXACT(double, Quad, x* cosq(y)), samplePolar, BY_MPFR(mpfr_cos, mpfr_mul)},
    {"PolarToCart_64f", 1, 2, EXACT(double, Quad, x* sinq(y)), samplePolar, BY_MPFR(mpfr_sin, mpfr_mul)},
};

}  // namespace

int main(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; i += 2) {
    const std::string_view option = argv[i];
    const char* const value = i + 1 < argc ? argv[i + 1] : "";
    const unsigned long long number = std::strtoull(value, nullptr, 0);
    if (option == "--function") {
      options.function = value;
    } else if (option == "--stride" && number > 0) {
      options.stride = number;
    } else if (option == "--samples" && number > 0) {
      options.samples = number;
    } else {
      std::printf("usage: accuracy [--function TEXT] [--stride N] [--samples N]\n");
      return 2;
    }
  }
  std::printf("%d-bit vectors\n\n| function | inputs | largest error |", orpGetVectorBits());
#if defined(ORPSP_HAS_MPFR)
  std::printf(" by MPFR |");
#endif
  std::printf(" at | not the nearest |\n");
  const bool single = report<float, L>(kSingle, options), twice = report<double, Quad>(kDouble, options);
  return single && twice ? 0 : 1;
}
