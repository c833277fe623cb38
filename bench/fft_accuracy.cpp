// How far FFTs are from the exact result: the library and FFTW on the same data, against a transform in long double.
//
// All figures are relative errors in units of the type's epsilon (2^-23, 2^-52):
//   random    root mean square, over inputs uniform in [-1, 1], of |error| / |spectrum|, both as Euclidean norms
//   bin       the largest error of a single bin of these inputs, over the root mean square of the bins
//   impulses  the largest |error| / |spectrum| of a single 1 among zeros: at every position up to N = 1024, else at 64
//   tones     the largest |error| / |spectrum| of tones that fit the transform
// Fails if an error of random inputs exceeds 0.5 sqrt(log2 N), or FFTW's by more than a tenth.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdio>
#include <limits>
#include <numbers>
#include <random>
#include <string>
#include <vector>

#include "fft_contestants.h"

namespace {

using bench::fft::Arrays;
using bench::fft::Layout;
using bench::fft::Library;
using bench::fft::Shape;
using bench::fft::Work;
using Real = long double;
using Complex = std::complex<Real>;
using Spectrum = std::vector<Complex>;

struct Options {
  std::vector<int> orders = {1, 20}, widths = {512, 256};
  std::string library;
  int inputs = 20;
};

Complex product(Complex a, Complex b) {  // the operator also looks for NaNs
  return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

// Radix 2, decimation in time, in place.
class Reference {
 public:
  explicit Reference(int order) : root_(size_t{1} << order) {
    for (size_t k = 0; k < root_.size(); ++k) {
      const Real angle = -2 * std::numbers::pi_v<Real> * std::ldexp(static_cast<Real>(k), -order);
      root_[k] = {std::cos(angle), std::sin(angle)};
    }
  }

  // exp(-2 pi i k / N)
  [[nodiscard]] Complex root(size_t k) const { return root_[k & (root_.size() - 1)]; }

  void transform(Spectrum& x) const {
    const size_t points = root_.size();
    for (size_t i = 0, reversed = 0; i < points; ++i) {
      if (i < reversed) std::swap(x[i], x[reversed]);
      size_t bit = points / 2;  // counts up from the top bit
      for (; (reversed & bit) != 0; bit /= 2) reversed ^= bit;
      reversed ^= bit;
    }
    for (size_t half = 1; half < points; half *= 2) {
      const size_t step = points / (2 * half);
      for (size_t start = 0; start < points; start += 2 * half) {
        for (size_t k = 0; k < half; ++k) {
          const Complex a = x[start + k], b = product(x[start + half + k], root_[k * step]);
          x[start + k] = a + b;
          x[start + half + k] = a - b;
        }
      }
    }
  }

 private:
  Spectrum root_;
};

struct Errors {
  double squares = 0, bin = 0, impulses = 0, tones = 0;
};

struct Distance {
  double relative;  // of the Euclidean norms
  double bin;       // of the worst bin to the root mean square
};

template <class T>
Distance distance(const T* result, const Spectrum& exact, size_t bins) {
  Real error = 0, norm = 0, worst = 0;
  for (size_t k = 0; k < bins; ++k) {
    const Real off = std::norm(Complex(result[2 * k], result[2 * k + 1]) - exact[k]);
    error += off;
    worst = std::max(worst, off);
    norm += std::norm(exact[k]);
  }
  return {static_cast<double>(std::sqrt(error / norm)),
          static_cast<double>(std::sqrt(worst / norm * static_cast<Real>(bins)))};
}

// One size of one type: the contestants and what they work on.
template <class T>
class Size {
 public:
  Size(Layout layout, int order, const std::vector<Library>& libraries)
      : shape_{layout, false, false, order}, arrays_(shape_), reference_(order), random_(static_cast<unsigned>(order)) {
    contestants_.push_back(bench::fft::fftwTransform<T>(shape_, arrays_, false));
    for (const Library& library : libraries) contestants_.push_back(library.transform<T>(shape_, arrays_));
    errors_.resize(contestants_.size());
  }

  std::vector<Errors> measure(int inputs) {
    const int count = std::max(inputs, static_cast<int>(4096 / points()));
    std::uniform_real_distribution<T> uniform(-1, 1);
    for (int i = 0; i < count; ++i) {
      setSource([&](size_t) { return uniform(random_); });
      compareWithReference([=](Errors& errors, const Distance& d) {
        errors.squares += d.relative * d.relative / count;
        errors.bin = std::max(errors.bin, d.bin);
      });
    }
    for (size_t i = 0; i < std::min<size_t>(points(), 16); ++i) {
      const size_t bin = points() <= 16 ? i : random_() % points();
      setSource([&](size_t at) {
        const Complex turn = reference_.root(at / parts() * bin);
        return static_cast<T>(at % parts() == 0 ? turn.real() : -turn.imag());
      });
      compareWithReference(
          [](Errors& errors, const Distance& d) { errors.tones = std::max(errors.tones, d.relative); });
    }
    setSource([](size_t) { return T{0}; });
    for (size_t i = 0; i < std::min<size_t>(points(), points() <= 1024 ? 1024 : 64); ++i) {
      const size_t position = points() <= 1024 ? i : random_() % points();
      arrays_.source[0][position * parts()] = 1;
      Spectrum exact(points());
      for (size_t k = 0; k < points(); ++k) exact[k] = reference_.root(k * position);
      compare(exact,
              [](Errors& errors, const Distance& d) { errors.impulses = std::max(errors.impulses, d.relative); });
      arrays_.source[0][position * parts()] = 0;
    }
    return errors_;
  }

 private:
  [[nodiscard]] size_t points() const { return size_t{1} << shape_.order; }
  [[nodiscard]] size_t parts() const { return shape_.layout == Layout::kReal ? 1 : 2; }

  template <class Value>
  void setSource(const Value& value) {
    for (size_t i = 0; i < arrays_.sourceCount; ++i) arrays_.source[0][i] = value(i);
  }

  template <class Note>
  void compareWithReference(const Note& note) {
    Spectrum exact(points());
    const T* const source = arrays_.source[0].get();
    for (size_t i = 0; i < points(); ++i)
      exact[i] = parts() == 1 ? Complex(source[i], 0) : Complex(source[2 * i], source[2 * i + 1]);
    reference_.transform(exact);
    compare(exact, note);
  }

  template <class Note>
  void compare(const Spectrum& exact, const Note& note) {
    for (size_t i = 0; i < contestants_.size(); ++i) {
      contestants_[i](1);
      note(errors_[i], distance(arrays_.destination[0].get(), exact, arrays_.destinationCount / 2));
    }
  }

  Shape shape_;
  Arrays<T> arrays_;
  Reference reference_;
  std::mt19937 random_;
  std::vector<Work> contestants_;
  std::vector<Errors> errors_;
};

// Returns how many results of the library are not good enough.
template <class T>
int runType(const char* name, Layout layout, const std::vector<Library>& libraries, const Options& options) {
  std::string who = "FFTW";
  for (const Library& library : libraries) who += " / " + std::to_string(library.bits());
  std::printf("\n## %s\n\n| N | 0.5 sqrt(log2 N) | random: %s | bin: %s | impulses: %s | tones: %s |\n", name,
              who.c_str(), who.c_str(), who.c_str(), who.c_str());
  std::printf("|---|---|---|---|---|---|\n");
  int bad = 0;
  for (int order = options.orders[0]; order <= options.orders[1]; ++order) {
    const double epsilon = static_cast<double>(std::numeric_limits<T>::epsilon()), limit = 0.5 * std::sqrt(order);
    const std::vector<Errors> all = Size<T>(layout, order, libraries).measure(options.inputs);
    const double peer = std::sqrt(all[0].squares);
    std::string cells[4];
    for (size_t i = 0; i < all.size(); ++i) {
      const double random = std::sqrt(all[i].squares);
      const bool isBad = i > 0 && !(random <= limit * epsilon && random <= 1.1 * peer);
      bad += isBad;
      const double figures[] = {random, all[i].bin, all[i].impulses, all[i].tones};
      for (size_t cell = 0; cell < 4; ++cell) {
        char text[32];
        std::snprintf(text, sizeof(text), "%s%.3f%s", i == 0 ? "" : " / ", figures[cell] / epsilon,
                      cell == 0 && isBad ? " !" : "");
        cells[cell] += text;
      }
    }
    std::printf(order <= 16 ? "| %d |" : "| 2^%d |", order <= 16 ? 1 << order : order);
    std::printf(" %.2f | %s | %s | %s | %s |\n", limit, cells[0].c_str(), cells[1].c_str(), cells[2].c_str(),
                cells[3].c_str());
    std::fflush(stdout);
  }
  return bad;
}

int run(const Options& options) {
  std::vector<Library> libraries;
  for (const int bits : options.widths) libraries.emplace_back(options.library, bits);
  int bad = 0;
  bad += runType<float>("Complex, single precision", Layout::kInterleaved, libraries, options);
  bad += runType<double>("Complex, double precision", Layout::kInterleaved, libraries, options);
  bad += runType<float>("Real, single precision", Layout::kReal, libraries, options);
  bad += runType<double>("Real, double precision", Layout::kReal, libraries, options);
  std::printf("\n%d results (!) are beyond the limit, or more than a tenth worse than FFTW's.\n", bad);
  return bad == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app("Accuracy of FFTs of powers of two");
  Options options;
  app.add_option("--orders", options.orders, "lowest and highest log2 N")
      ->expected(2)
      ->check(CLI::Range(1, 24))
      ->capture_default_str();
  app.add_option("--library", options.library, "measures this file instead of the library of this build");
  app.add_option("--widths", options.widths, "vector widths of the library, in bits")
      ->check(CLI::IsMember({128, 256, 512}))
      ->capture_default_str();
  app.add_option("--inputs", options.inputs, "random inputs of each size, more of small ones")->capture_default_str();
  CLI11_PARSE(app, argc, argv);
  try {
    return run(options);
  } catch (const std::exception& error) {
    std::fflush(stdout);
    std::fprintf(stderr, "\nfft_accuracy: %s\n", error.what());
    return 1;
  }
}
