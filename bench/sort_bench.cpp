// Sorts against std::sort and plain radix sorts, on fresh data in every repetition: a branch predictor learns what it
// sees twice. Only the sorting is timed. Results are compared with the first peer's before anything is measured.
//   --benchmark_filter=32f/random   measures what the expression selects; the names are function/pattern/who/length
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <numeric>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "best.h"
#include "orpsp.h"

namespace {

constexpr std::array kLengths = {16, 64, 1000, 100000, 1000000};
constexpr int kBatch = 1 << 15;  // elements that one measurement sorts at least, in vectors of one length

// ---- Data

enum class Pattern { kRandom, kSorted, kReversed, kFewValued, kOrganPipe };
constexpr std::array<std::pair<Pattern, const char*>, 5> kPatterns = {{{Pattern::kRandom, "random"},
                                                                       {Pattern::kSorted, "sorted"},
                                                                       {Pattern::kReversed, "reversed"},
                                                                       {Pattern::kFewValued, "few-valued"},
                                                                       {Pattern::kOrganPipe, "organ-pipe"}}};

uint64_t nextRandom() {  // splitmix64
  static uint64_t state = 42;
  uint64_t z = state += 0x9E3779B97F4A7C15;
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
  return z ^ (z >> 31);
}

// Neither zeros of both signs nor NaNs: std::sort would disagree with the order by bits.
template <class T>
T element(uint64_t bits) {
  if constexpr (std::is_floating_point_v<T>) {
    return static_cast<T>(static_cast<double>(static_cast<int64_t>(bits)) * 0x1p-63 + 0x1p-70);
  } else {
    return static_cast<T>(bits >> 32);
  }
}

template <class T>
void fill(T* data, int len, Pattern pattern) {
  const int half = len / 2;
  const uint64_t start = nextRandom();
  const auto rising = [=](int i) {  // in steps that fill the range of the type
    if constexpr (std::is_floating_point_v<T>) {
      return static_cast<T>(static_cast<double>(i) / len - 0.3 + 0x1p-70);
    } else {
      const double least = static_cast<double>(std::numeric_limits<T>::min());
      const double range = static_cast<double>(std::numeric_limits<T>::max()) - least;
      return static_cast<T>(least + range * i / len);
    }
  };
  for (int i = 0; i < len; ++i) {
    switch (pattern) {
      case Pattern::kRandom:
        data[i] = element<T>(nextRandom());
        break;
      case Pattern::kSorted:
        data[i] = rising(i);
        break;
      case Pattern::kReversed:
        data[i] = rising(len - 1 - i);
        break;
      case Pattern::kFewValued:
        data[i] = element<T>((start + (nextRandom() >> 60)) * 0x9E3779B97F4A7C15);
        break;
      case Pattern::kOrganPipe:
        data[i] = rising(i < half ? i : len - 1 - i);
        break;
    }
  }
}

// ---- Cases: a function of the library and its peers

// The vectors that one call works on; those but `data` are results or work buffers of len elements.
template <class T>
struct Job {
  T* data;
  T* tmp;
  int32_t* index;
  int32_t* tmpIndex;
  int len;
};

// What is compared: the data, the data and whether `index` says where they come from, or `index`.
enum class Result { kData, kPermutation, kIndex };

template <class T>
struct Contestant {
  const char* name;
  void (*work)(const Job<T>&);
};

template <class T>
struct Case {
  std::string name;
  Result result;
  std::vector<Contestant<T>> contestants;  // the library first
};

template <class T>
void stdSort(const Job<T>& job) {
  std::sort(job.data, job.data + job.len);
}

#define CONTESTANT(who, T, ...)                 \
  Contestant<T> {                               \
    who, [](const Job<T>& job) { __VA_ARGS__; } \
  }

#define SORT_CASE(T)                                                                                            \
  Case<Orp##T> {                                                                                                \
    "SortAscend_" #T "_I", Result::kData, {                                                                     \
      CONTESTANT("library", Orp##T, orpsSortAscend_##T##_I(job.data, job.len)), {"std::sort", stdSort<Orp##T>}, \
    }                                                                                                           \
  }

// std::sort of pairs, which are made and taken apart: what gives the same result.
template <class T>
void stdSortPairs(const Job<T>& job) {
  static std::vector<std::pair<T, int32_t>> pairs;
  pairs.resize(static_cast<size_t>(job.len));
  for (int i = 0; i < job.len; ++i) pairs[static_cast<size_t>(i)] = {job.data[i], i};
  std::sort(pairs.begin(), pairs.end());
  for (int i = 0; i < job.len; ++i) std::tie(job.data[i], job.index[i]) = pairs[static_cast<size_t>(i)];
}

template <class T>
void stdStableSortIndices(const Job<T>& job) {
  std::iota(job.index, job.index + job.len, 0);
  std::stable_sort(job.index, job.index + job.len, [=](int32_t a, int32_t b) { return job.data[a] < job.data[b]; });
}

// Radix sort as a textbook has it, without negative zeros and NaNs.
template <class T>
struct TextbookRadix {
  static constexpr int kBits = 8 * sizeof(T), kWidth = kBits <= 16 ? 8 : 11;
  static constexpr int kPasses = (kBits + kWidth - 1) / kWidth, kValues = 1 << kWidth;
  using Key = std::conditional_t<kBits == 64, uint64_t, uint32_t>;

  static int digit(T value, int pass) {
    Key key = 0;
    std::memcpy(&key, &value, sizeof(T));
    constexpr Key kSign = Key{1} << (kBits - 1);
    if (std::is_floating_point_v<T> && (key & kSign) != 0) {
      key = ~key;
    } else if (std::is_signed_v<T>) {
      key ^= kSign;
    }
    return static_cast<int>(key >> (pass * kWidth)) & (kValues - 1);
  }
  // Moves what `at` gives for i = 0, 1, ... to `to`, by the digit of its key.
  static void pass(int pass, const Job<T>& job, auto at, auto key, auto* to) {
    static std::array<int, kValues + 1> places;
    places = {};
    for (int i = 0; i < job.len; ++i) ++places[static_cast<size_t>(digit(job.data[i], pass)) + 1];
    std::partial_sum(places.begin(), places.end(), places.begin());
    for (int i = 0; i < job.len; ++i) to[places[static_cast<size_t>(digit(key(at(i)), pass))]++] = at(i);
  }
  static void sort(const Job<T>& job) {
    T *from = job.data, *to = job.tmp;
    for (int i = 0; i < kPasses; ++i, std::swap(from, to))
      pass(
          i, {from, nullptr, nullptr, nullptr, job.len}, [=](int n) { return from[n]; }, [](T t) { return t; }, to);
    if (from != job.data) std::copy(from, from + job.len, job.data);
  }
  static void sortIndices(const Job<T>& job) {
    int32_t *from = job.index, *to = job.tmpIndex;
    std::iota(from, from + job.len, 0);
    for (int i = 0; i < kPasses; ++i, std::swap(from, to))
      pass(
          i, job, [=](int n) { return from[n]; }, [=](int32_t index) { return job.data[index]; }, to);
    if (from != job.index) std::copy(from, from + job.len, job.index);
  }
};

#define SORT_INDEX_CASE(T)                                                                      \
  Case<Orp##T> {                                                                                \
    "SortIndexAscend_" #T "_I", Result::kPermutation, {                                         \
      CONTESTANT("library", Orp##T, orpsSortIndexAscend_##T##_I(job.data, job.index, job.len)), \
          {"pairs", stdSortPairs<Orp##T>},                                                      \
    }                                                                                           \
  }

#define SORT_RADIX_CASE(T)                                                                    \
  Case<Orp##T> {                                                                              \
    "SortRadixAscend_" #T "_I", Result::kData, {                                              \
      CONTESTANT("library", Orp##T, orpsSortRadixAscend_##T##_I(job.data, job.tmp, job.len)), \
          {"textbook", TextbookRadix<Orp##T>::sort}, {"std::sort", stdSort<Orp##T>},          \
    }                                                                                         \
  }

#define SORT_RADIX_INDEX_CASE(T)                                                                                \
  Case<Orp##T> {                                                                                                \
    "SortRadixIndexAscend_" #T, Result::kIndex, {                                                               \
      CONTESTANT("library", Orp##T,                                                                             \
                 orpsSortRadixIndexAscend_##T(job.data, sizeof(Orp##T), job.index, job.tmpIndex, job.len)),     \
          {"textbook", TextbookRadix<Orp##T>::sortIndices}, {"std::stable_sort", stdStableSortIndices<Orp##T>}, \
    }                                                                                                           \
  }

// ---- Measuring

template <class T>
class Measurement {
 public:
  Measurement(int len, Pattern pattern)
      : len_(len),
        pattern_(pattern),
        count_(std::max(1, kBatch / len)),
        data_(size()),
        tmp_(size()),
        index_(size()),
        tmpIndex_(size()) {
    refill();
  }

  void refill() {
    for (int i = 0; i < count_; ++i) fill(data_.data() + i * len_, len_, pattern_);
  }

  void run(const Contestant<T>& who) {
    for (int i = 0; i < count_; ++i) {
      const int at = i * len_;
      who.work({data_.data() + at, tmp_.data() + at, index_.data() + at, tmpIndex_.data() + at, len_});
    }
  }

  // A benchmark of something wrong is worth nothing.
  void check(const Case<T>& c) {
    const std::vector<T> before = data_;
    std::vector<T> expected;
    std::vector<int32_t> expectedIndex;
    for (const Contestant<T>& who : c.contestants) {
      data_ = before;
      run(who);
      if (expected.empty()) {
        expected = data_;
        expectedIndex = index_;
      }
      bool right = data_ == expected;
      if (c.result == Result::kIndex) right = right && index_ == expectedIndex;
      if (c.result == Result::kPermutation) {
        for (int i = 0; i < count_ * len_; ++i) {
          const int from = i / len_ * len_ + index_[static_cast<size_t>(i)];
          right = right && before[static_cast<size_t>(from)] == data_[static_cast<size_t>(i)];
        }
      }
      if (right) continue;
      std::fprintf(stderr, "%s: results differ between %s and %s\n", c.name.c_str(), c.contestants[0].name, who.name);
      std::exit(1);
    }
  }

  // One repetition.
  void measure(benchmark::State& state, const Contestant<T>& who) {
    for (auto _ : state) {
      refill();
      const auto start = std::chrono::steady_clock::now();
      run(who);
      benchmark::ClobberMemory();
      const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
      state.SetIterationTime(time.count() / (count_ * len_));
    }
  }

 private:
  [[nodiscard]] size_t size() const { return static_cast<size_t>(count_) * static_cast<size_t>(len_); }

  int len_;
  Pattern pattern_;
  int count_;
  std::vector<T> data_, tmp_;
  std::vector<int32_t> index_, tmpIndex_;
};

template <class T>
std::string key(const Case<T>& c, const char* pattern, const Contestant<T>& who, int len) {
  return c.name + "/" + pattern + "/" + who.name + "/" + std::to_string(len);
}

template <class T>
void add(const Case<T>& c) {
  for (const auto& [pattern, patternName] : kPatterns) {
    for (const int len : kLengths) {
      for (const Contestant<T>& who : c.contestants) {
        benchmark::RegisterBenchmark(
            key(c, patternName, who, len).c_str(),
            [&c, &who, len, pattern = pattern,
             measurement = std::shared_ptr<Measurement<T>>()](benchmark::State& state) mutable {
              if (!measurement) {
                measurement = std::make_shared<Measurement<T>>(len, pattern);
                measurement->check(c);
              }
              measurement->measure(state, who);
            })
            ->UseManualTime()
            ->Iterations(1)
            ->Repetitions(len >= 1000000 ? 7 : 25);
      }
    }
  }
}

template <class T>
void print(const Case<T>& c, const bench::Best& best) {
  for (const auto& [pattern, patternName] : kPatterns) {
    std::string cells;
    bool measured = false;
    for (const int len : kLengths) {
      const double library = best.seconds(key(c, patternName, c.contestants[0], len));
      char cell[64];
      if (library != 0) {
        measured = true;
        std::snprintf(cell, sizeof(cell), " %.2f", library * 1e9);
        cells += cell;
        for (size_t i = 1; i < c.contestants.size(); ++i) {
          const double peer = best.seconds(key(c, patternName, c.contestants[i], len));
          if (peer == 0) continue;
          std::snprintf(cell, sizeof(cell), " ×%.1f", peer / library);
          cells += cell;
        }
      }
      cells += " |";
    }
    if (measured) std::printf("| %s %s |%s\n", c.name.c_str(), patternName, cells.c_str());
  }
}

// A table of its own for the cases of one family.
template <class... T>
void runFamily(const char* peers, const Case<T>&... cases) {
  (add(cases), ...);
  bench::Best best;
  const size_t count = benchmark::RunSpecifiedBenchmarks(&best);
  benchmark::ClearRegisteredBenchmarks();
  if (count == 0) return;  // of another family than the one asked for
  bench::printHead(kLengths);
  (print(cases, best), ...);
  std::printf("\nTimes as long: %s.\n\n", peers);
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  runFamily("std::sort", SORT_CASE(8u), SORT_CASE(16s), SORT_CASE(32s), SORT_CASE(32f), SORT_CASE(64f));
  runFamily("std::sort of pairs of key and index, made and taken apart", SORT_INDEX_CASE(8u), SORT_INDEX_CASE(16s),
            SORT_INDEX_CASE(32s), SORT_INDEX_CASE(32f), SORT_INDEX_CASE(64f));
  runFamily("a textbook's radix sort, std::sort", SORT_RADIX_CASE(16s), SORT_RADIX_CASE(32s), SORT_RADIX_CASE(32u),
            SORT_RADIX_CASE(32f), SORT_RADIX_CASE(64f));
  runFamily("a textbook's radix sort of indices, std::stable_sort of indices", SORT_RADIX_INDEX_CASE(8u),
            SORT_RADIX_INDEX_CASE(16s), SORT_RADIX_INDEX_CASE(32s), SORT_RADIX_INDEX_CASE(32f));
  return 0;
}
