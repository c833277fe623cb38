// FFTs of powers of two against FFTW, in one process on the same data, on one thread.
//
// Contestants take turns in short batches, so that whatever slows the machine down meets all of them; the best batch of
// each counts. A batch is preceded by one run that is not timed and brings the tables back into the caches. Results
// are compared before anything is measured. In place only zeros are transformed: without a division anything else would
// overflow after a few runs, and the time does not depend on the data.
//   fft_bench --only 'CToC_32fc$' --orders 6 12
#include <time.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <limits>
#include <map>
#include <optional>
#include <random>
#include <regex>
#include <stdexcept>
#include <string>
#include <vector>

#include "fft_contestants.h"
#include "peak.h"
#include "plot.h"

namespace {

using bench::fft::Arrays;
using bench::fft::Layout;
using bench::fft::Library;
using bench::fft::Shape;
using bench::fft::Work;
using Clock = std::chrono::steady_clock;

struct Options {
  std::vector<int> orders = {1, 20}, widths = {512, 256}, initOrders = {6, 24};
  std::string library, only = "Fwd|Init", wisdom, svg;
  bool patient = false, noLibrary = false;
  double seconds = 0.2;
};
constexpr int kHighestPatient = 16;  // planning takes minutes beyond

// ---- Cases

struct Case {
  const char* name;  // of the export, without its prefix
  bool isDouble;
  Layout layout;
  bool inPlace, inverse;
  // How many times as fast as FFTW (planned patiently) the best open library was, for orders from 3 on; 0: no figure.
  std::vector<double> best = {};
  const char* plotTitle = nullptr;
};

// The figures were measured on another machine of the kind that docs/benchmarks.md names, AVX-512 builds included.
const std::vector<Case> kCases = {
    {"FFTFwd_CToC_32fc",
     false,
     Layout::kInterleaved,
     false,
     false,
     {2.4, 3.4, 2.0, 1.2, 1.4, 1.3, 1.4, 1.3, 1.4, 1.4, 1.3, 1.4, 1.5, 1.4, 2.0, 2.3, 4.4, 3.1, 0, 1.5},
     "complex, single precision"},
    {"FFTFwd_CToC_64fc",
     true,
     Layout::kInterleaved,
     false,
     false,
     {1.3, 1.9, 2.0, 1.8, 1.4, 1.5, 1.5, 1.5, 1.4, 1.4, 1.4, 1.4, 1.4, 1.4, 2.0, 1.9, 2.6, 1.6},
     "complex, double precision"},
    {"FFTFwd_RToCCS_32f",
     false,
     Layout::kReal,
     false,
     false,
     {0, 1.1, 1.15, 1.1, 1.15, 1.3, 1.4, 1.9, 2.0, 2.1, 1.7, 1.5, 1.4, 1.5, 2.2, 1.9, 2.1, 1.2},
     "real, single precision"},
    {"FFTFwd_RToCCS_64f", true, Layout::kReal, false, false},
    {"FFTFwd_CToC_32fc_I", false, Layout::kInterleaved, true, false},
    {"FFTFwd_CToC_64fc_I", true, Layout::kInterleaved, true, false},
    {"FFTFwd_CToC_32f", false, Layout::kSplit, false, false},
    {"FFTFwd_CToC_64f", true, Layout::kSplit, false, false},
    {"FFTFwd_CToC_32f_I", false, Layout::kSplit, true, false},
    {"FFTFwd_RToCCS_32f_I", false, Layout::kReal, true, false},
    {"FFTInv_CToC_32fc", false, Layout::kInterleaved, false, true},
    {"FFTInv_CToC_64fc", true, Layout::kInterleaved, false, true},
    {"FFTInv_CCSToR_32f", false, Layout::kReal, false, true},
    {"FFTInv_CCSToR_64f", true, Layout::kReal, false, true},
};

double bestRatio(const Case& c, int order) {
  const auto i = static_cast<size_t>(order - 3);
  return order >= 3 && i < c.best.size() ? c.best[i] : 0;
}

// By the convention of 5 N log2 N operations for complex transforms, and half of that for real ones.
double gigaflops(const Case& c, int order, double seconds) {
  return (c.layout == Layout::kReal ? 2.5 : 5.0) * std::ldexp(order, order) / seconds * 1e-9;
}

// ---- Measuring

double secondsOfThread() {
  timespec time;
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

// A long batch does not fit between two interruptions on a busy machine, so the thread's own time counts there. Asking
// for it takes microseconds, too much for a short one.
double measure(const Work& work, int times) {
  constexpr double kLong = 1e-3;
  const double before = secondsOfThread();
  const auto start = Clock::now();
  work(times);
  const std::chrono::duration<double> time = Clock::now() - start;
  return (time.count() < kLong ? time.count() : secondsOfThread() - before) / times;
}

// Seconds of one run of each, the best of many batches.
std::vector<double> race(const std::vector<Work>& contestants, double seconds) {
  constexpr double kBatch = 30e-6;
  constexpr int kLeastRounds = 5;
  std::vector<int> times;
  for (const Work& work : contestants) {
    work(1);
    int count = 1;
    while (measure(work, count) * count < kBatch / 2) count *= 2;
    times.push_back(std::max(1, static_cast<int>(kBatch / measure(work, count))));
  }
  std::vector<double> best(contestants.size(), 1e9);
  const auto start = Clock::now();
  const std::chrono::duration<double> limit(seconds * static_cast<double>(contestants.size()));
  for (int round = 0; round < kLeastRounds || Clock::now() - start < limit; ++round) {
    for (size_t i = 0; i < contestants.size(); ++i) {
      contestants[i](1);
      best[i] = std::min(best[i], measure(contestants[i], times[i]));
    }
  }
  return best;
}

template <class T>
void fill(const Shape& shape, const Arrays<T>& arrays) {
  std::mt19937 random(static_cast<unsigned>(shape.order));
  std::uniform_real_distribution<T> uniform(-1, 1);
  for (size_t plane = 0; plane < arrays.planes; ++plane) {
    T* const data = arrays.source[plane].get();
    for (size_t i = 0; i < arrays.sourceCount; ++i) data[i] = uniform(random);
    if (shape.layout == Layout::kReal && shape.inverse) data[1] = data[arrays.sourceCount - 1] = 0;
    if (shape.inPlace) std::copy(data, data + arrays.sourceCount, arrays.destination[plane].get());
  }
}

template <class T>
std::vector<T> resultOf(const Work& work, const Shape& shape, const Arrays<T>& arrays) {
  fill(shape, arrays);
  work(1);
  std::vector<T> result;
  for (size_t plane = 0; plane < arrays.planes; ++plane) {
    const T* const data = arrays.destination[plane].get();
    result.insert(result.end(), data, data + arrays.destinationCount);
  }
  return result;
}

// A benchmark of something wrong is worth nothing.
template <class T>
void compare(const std::vector<T>& result, const std::vector<T>& expected, const std::string& what) {
  double error = 0, norm = 0;
  for (size_t i = 0; i < result.size(); ++i) {
    error += std::pow(static_cast<double>(result[i]) - static_cast<double>(expected[i]), 2);
    norm += std::pow(static_cast<double>(expected[i]), 2);
  }
  const double limit = 4.0 * static_cast<double>(std::numeric_limits<T>::epsilon());
  if (!(std::sqrt(error / norm) <= limit))
    throw std::runtime_error(what + ": differs from FFTW's result by " + std::to_string(std::sqrt(error / norm)));
}

// Seconds of FFTW, then of the libraries.
template <class T>
std::vector<double> measureCase(const Case& c, int order, const std::vector<Library>& libraries,
                                const Options& options) {
  const Shape shape{c.layout, c.inPlace, c.inverse, order};
  const Arrays<T> arrays(shape);
  std::vector<Work> contestants = {fftwTransform<T>(shape, arrays, options.patient && order <= kHighestPatient)};
  for (const Library& library : libraries) contestants.push_back(library.transform<T>(shape, arrays));
  const std::vector<T> expected = resultOf(contestants[0], shape, arrays);
  for (size_t i = 1; i < contestants.size(); ++i) {
    const std::string what = std::string(c.name) + ", order " + std::to_string(order);
    compare(resultOf(contestants[i], shape, arrays), expected, what);
  }
  if (shape.inPlace) {
    for (size_t plane = 0; plane < arrays.planes; ++plane)
      std::fill_n(arrays.destination[plane].get(), std::max(arrays.sourceCount, arrays.destinationCount), T{0});
  }
  return race(contestants, options.seconds);
}

// ---- Reports

std::string libraryName(const Library& library) { return "orpSP " + std::to_string(library.bits()); }

std::string withUnit(double seconds) {
  char text[32];
  const double ns = seconds * 1e9;
  if (ns < 1e5) {
    std::snprintf(text, sizeof(text), "%.*f", ns < 100 ? 1 : 0, ns);
  } else if (ns < 1e6) {
    std::snprintf(text, sizeof(text), "%.0f us", ns * 1e-3);
  } else {
    std::snprintf(text, sizeof(text), "%.2f ms", ns * 1e-6);
  }
  return text;
}

class Mean {  // geometric
 public:
  void add(double value) {
    sum_ += std::log(value);
    ++count_;
  }
  [[nodiscard]] std::optional<double> value() const {
    return count_ == 0 ? std::nullopt : std::optional(std::exp(sum_ / count_));
  }

 private:
  double sum_ = 0;
  int count_ = 0;
};

// Seconds of each contestant by order.
using Results = std::map<int, std::vector<double>>;

void printMeans(const Case& c, const std::vector<Library>& libraries, const Results& results) {
  for (size_t i = 0; i < libraries.size(); ++i) {
    Mean ratio, ahead;
    double least = 1e9, leastAhead = 1e9;
    for (const auto& [order, seconds] : results) {
      const double times = seconds[0] / seconds[i + 1], best = bestRatio(c, order);
      least = std::min(least, times);
      if (best > 0) leastAhead = std::min(leastAhead, times / best);
      if (order < 3 || order > 16) continue;
      ratio.add(times);
      if (best > 0) ahead.add(times / best);
    }
    if (!ratio.value()) continue;
    std::printf("%s%s: geometric mean over N = 8 to 65536 ×%.2f, least of all ×%.2f", i == 0 ? "\n" : "",
                libraryName(libraries[i]).c_str(), *ratio.value(), least);
    if (ahead.value()) std::printf("; to the best open result ×%.2f, least of all ×%.2f", *ahead.value(), leastAhead);
    std::printf(".\n");
  }
}

Results runCase(const Case& c, const std::vector<Library>& libraries, const Options& options) {
  std::printf("\n## %s\n\n| N | FFTW | GFLOP/s |", c.name);
  for (const Library& library : libraries) std::printf(" %s | GFLOP/s | × |", libraryName(library).c_str());
  std::printf("%s\n|---|---|---|", c.best.empty() ? "" : " best open × |");
  for (size_t i = 0; i < libraries.size(); ++i) std::printf("---|---|---|");
  std::printf("%s\n", c.best.empty() ? "" : "---|");
  Results results;
  for (int order = options.orders[0]; order <= options.orders[1]; ++order) {
    std::printf(order <= 16 ? "| %d |" : "| 2^%d |", order <= 16 ? 1 << order : order);
    std::fflush(stdout);
    const auto seconds = (c.isDouble ? measureCase<double> : measureCase<float>)(c, order, libraries, options);
    for (size_t i = 0; i < seconds.size(); ++i) {
      std::printf(" %s | %.1f |", withUnit(seconds[i]).c_str(), gigaflops(c, order, seconds[i]));
      if (i > 0) std::printf(" %.2f |", seconds[0] / seconds[i]);
    }
    if (const double best = bestRatio(c, order); best > 0)
      std::printf(" %.2f |", best);
    else if (!c.best.empty())
      std::printf(" |");
    std::printf("\n");
    results[order] = seconds;
  }
  printMeans(c, libraries, results);
  return results;
}

void printInit(const Library& library, const Options& options) {
  std::printf("\n## FFTInitAlloc and FFTFree, %s\n\n| N | C_32fc | C_64fc | R_32f |\n|---|---|---|---|\n",
              libraryName(library).c_str());
  for (int order = options.initOrders[0]; order <= options.initOrders[1]; ++order) {
    const auto seconds =
        race({library.init<float>(Layout::kInterleaved, order), library.init<double>(Layout::kInterleaved, order),
              library.init<float>(Layout::kReal, order)},
             options.seconds / 10);
    std::printf("| 2^%d | %s | %s | %s |\n", order, withUnit(seconds[0]).c_str(), withUnit(seconds[1]).c_str(),
                withUnit(seconds[2]).c_str());
    std::fflush(stdout);
  }
}

bench::Panel panelOf(const Case& c, const std::vector<Library>& libraries, const Results& results) {
  const char* const colours[] = {"#888888", "#0b62a8", "#3aa655", "#c06a10"};
  bench::Panel panel{c.plotTitle, {}};
  for (size_t i = 0; i <= libraries.size(); ++i) {
    const std::string name = i == 0 ? "FFTW" : "orpSP, " + std::to_string(libraries[i - 1].bits()) + "-bit vectors";
    bench::Line line{name, colours[i], {}};
    for (const auto& [order, seconds] : results) line.points.emplace_back(order, gigaflops(c, order, seconds[i]));
    panel.lines.push_back(line);
  }
  return panel;
}

void run(const Options& options) {
  std::vector<Library> libraries;
  if (!options.noLibrary) {
    for (const int bits : options.widths) libraries.emplace_back(options.library, bits);
  }
  std::printf("Multiply-add peak of one core, single precision: %.0f GFLOP/s with 512 bits, %.0f with 256 bits.\n",
              bench::multiplyAddPeak(512) * 1e-9, bench::multiplyAddPeak(256) * 1e-9);
  std::printf("FFTW planned with FFTW_%s. Times in ns where no unit is given.\n",
              options.patient ? "PATIENT up to N = 65536, with FFTW_MEASURE beyond" : "MEASURE");
  if (!options.wisdom.empty()) bench::fft::readWisdom(options.wisdom);
  const std::regex only(options.only);
  std::vector<bench::Panel> panels;
  for (const Case& c : kCases) {
    if (!std::regex_search(c.name, only)) continue;
    const Results results = runCase(c, libraries, options);
    if (c.plotTitle) panels.push_back(panelOf(c, libraries, results));
    if (!options.wisdom.empty()) bench::fft::writeWisdom(options.wisdom);
  }
  if (!libraries.empty() && std::regex_search("Init", only)) printInit(libraries[0], options);
  if (!options.svg.empty())
    bench::writePlot(options.svg, "Forward FFT of N points on one core", "log2 N", "GFLOP/s (5 N log2 N; real: half)",
                     panels);
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app("FFTs of powers of two against FFTW");
  Options options;
  app.add_option("--only", options.only, "expression that selects cases by name; Init: the specifications")
      ->capture_default_str();
  app.add_option("--orders", options.orders, "lowest and highest log2 N")
      ->expected(2)
      ->check(CLI::Range(0, 26))
      ->capture_default_str();
  app.add_option("--init-orders", options.initOrders, "the same for Init")->expected(2)->check(CLI::Range(0, 26));
  app.add_option("--library", options.library, "measures this file instead of the library of this build");
  app.add_option("--widths", options.widths, "vector widths of the library, in bits")
      ->check(CLI::IsMember({128, 256, 512}))
      ->capture_default_str();
  app.add_option("--seconds", options.seconds, "of measuring, for each contestant and size")->capture_default_str();
  app.add_flag("--patient", options.patient, "FFTW plans patiently up to N = 65536");
  app.add_option("--wisdom", options.wisdom, "files with FFTW's plans, read and written: saves the planning");
  app.add_flag("--no-library", options.noLibrary, "measures FFTW alone");
  app.add_option("--svg", options.svg, "writes a plot to this file");
  CLI11_PARSE(app, argc, argv);
  try {
    run(options);
  } catch (const std::exception& error) {
    std::printf("\n");
    std::fflush(stdout);
    std::fprintf(stderr, "fft_bench: %s\n", error.what());
    return 1;
  }
  return 0;
}
