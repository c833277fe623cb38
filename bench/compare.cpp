#include "compare.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <utility>

#include "best.h"
#include "orpcore.h"

namespace bench {
namespace {

constexpr std::array kLengths = {16, 64, 1024, 16384, 1 << 20, 1 << 24};

template <class T, class Distribution>
void fill(std::byte* bytes, Distribution distribution) {
  std::mt19937 random(42);
  constexpr size_t kPeriod = 4096;  // drawn numbers; the rest repeats them
  std::vector<T> block(kPeriod);
  for (T& value : block) value = static_cast<T>(distribution(random));
  for (size_t i = 0; i + kPeriod * sizeof(T) <= Data::kBytes; i += kPeriod * sizeof(T))
    std::memcpy(bytes + i, block.data(), kPeriod * sizeof(T));
}

void fill(const Data& data, Kind kind) {
  for (std::byte* const bytes : {data.first, data.second, data.result}) {
    switch (kind) {
      case Kind::kBytes:
        fill<uint8_t>(bytes, std::uniform_int_distribution<int>(0, 255));
        break;
      case Kind::kNonzeroBytes:
        fill<uint8_t>(bytes, std::uniform_int_distribution<int>(1, 255));
        break;
      case Kind::kInt16:
        fill<int16_t>(bytes, std::uniform_int_distribution<int>(-32768, 32767));
        break;
      case Kind::kSmallNonzero16:
        fill<int16_t>(bytes, std::uniform_int_distribution<int>(257, 32000));
        break;
      case Kind::kTiny16:
        fill<int16_t>(bytes, std::uniform_int_distribution<int>(-10, 10));
        break;
      case Kind::kFloat:
        fill<float>(bytes, std::uniform_real_distribution<float>(0.5F, 2));
        break;
      case Kind::kDouble:
        fill<double>(bytes, std::uniform_real_distribution<double>(0.5, 2));
        break;
      case Kind::kSignedFloat:
        fill<float>(bytes, std::uniform_real_distribution<float>(-8, 8));
        break;
      case Kind::kSignedDouble:
        fill<double>(bytes, std::uniform_real_distribution<double>(-8, 8));
        break;
    }
  }
}

bool agree(const Case& c, const std::vector<std::byte>& x, const std::vector<std::byte>& y) {
  if (c.tolerance == 0) return x == y;
  const auto close = [&](auto zero) {
    using T = decltype(zero);
    for (size_t i = 0; i + sizeof(T) <= x.size(); i += sizeof(T)) {
      T p, q;
      std::memcpy(&p, &x[i], sizeof(T));
      std::memcpy(&q, &y[i], sizeof(T));
      if (!(std::abs(p - q) <= c.tolerance * (1 + std::abs(p)))) return false;
    }
    return true;
  };
  return c.kind == Kind::kDouble || c.kind == Kind::kSignedDouble ? close(0.0) : close(0.0F);
}

// A benchmark of something wrong is worth nothing.
void check(const Case& c, const Data& data) {
  constexpr int kLength = 1000;
  const size_t size = c.resultBytes != 0 ? c.resultBytes : kLength * c.elementBytes;
  const std::vector<std::byte> before(data.result, data.result + size);
  std::vector<std::vector<std::byte>> results;
  for (const Work work : {c.library, c.plain, c.volk, c.sleef, c.fastSleef}) {
    if (!work) continue;
    std::copy(before.begin(), before.end(), data.result);
    work(data, kLength);
    results.emplace_back(data.result, data.result + size);
  }
  for (const auto& other : results) {
    if (agree(c, results.front(), other)) continue;
    std::fprintf(stderr, "%s: the results differ\n", c.name.c_str());
    std::exit(1);
  }
  std::copy(before.begin(), before.end(), data.result);
}

std::string key(const Case& c, const char* who, int length) {
  return c.name + "/" + who + "/" + std::to_string(length);
}

void printTable(std::span<const Case> cases, const Best& best) {
  if (best.empty()) return;  // of another group than the one asked for
  printHead(kLengths);
  for (const Case& c : cases) {
    std::string cells;
    bool measured = false;
    for (const int length : kLengths) {
      const auto time = [&](const char* who) { return best.seconds(key(c, who, length)); };
      char cell[64];
      const double library = time("library");
      if (library != 0) {
        measured = true;
        std::snprintf(cell, sizeof(cell), " %.3f ×%.1f", library / length * 1e9, time("plain") / library);
        cells += cell;
        for (const auto& [peer, letter] : {std::pair{"volk", "v"}, {"sleef", "s"}, {"fastSleef", "f"}}) {
          if (time(peer) == 0) continue;
          std::snprintf(cell, sizeof(cell), " %s%.1f", letter, time(peer) / library);
          cells += cell;
        }
      }
      cells += " |";
    }
    if (measured) std::printf("| %s |%s\n", c.name.c_str(), cells.c_str());
  }
  std::printf("\n");
}

}  // namespace

int run(std::span<const std::span<const Case>> groups, int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  Data data{};
  for (std::byte** const p : {&data.first, &data.second, &data.result}) {
    *p = static_cast<std::byte*>(orpMalloc(static_cast<int64_t>(Data::kBytes)));
    if (!*p) return 1;
  }
  for (const auto& cases : groups) {
    Best best;
    for (const Case& c : cases) {
      fill(data, c.kind);
      check(c, data);
      for (const int length : kLengths) {
        if (static_cast<size_t>(length) * c.elementBytes > Data::kElements * Data::kLargest) continue;
        const auto add = [&](const char* who, Work work) {
          if (!work) return;
          benchmark::RegisterBenchmark(key(c, who, length).c_str(),
                                       [&data, work, length](benchmark::State& state) {
                                         for (auto _ : state) {
                                           work(data, length);
                                           benchmark::ClobberMemory();
                                         }
                                       })
              ->MinTime(0.01)
              ->Repetitions(length >= 1 << 20 ? 3 : 7);
        };
        add("library", c.library);
        add("plain", c.plain);
        add("volk", c.volk);
        add("sleef", c.sleef);
        add("fastSleef", c.fastSleef);
      }
      benchmark::RunSpecifiedBenchmarks(&best);
      benchmark::ClearRegisteredBenchmarks();
    }
    printTable(cases, best);
  }
  return 0;
}

}  // namespace bench
