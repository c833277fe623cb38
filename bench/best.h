// What the reports of the benchmark programs share: the best time of each run, and the head of a table by lengths.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <span>
#include <string>
#include <vector>

namespace bench {

class Best : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration) continue;
      double& best = seconds_.try_emplace(run.run_name.function_name, 1e9).first->second;
      best = std::min(best, run.real_accumulated_time / static_cast<double>(run.iterations));
    }
  }
  [[nodiscard]] bool empty() const { return seconds_.empty(); }
  [[nodiscard]] double seconds(const std::string& name) const {  // 0: was not measured
    const auto found = seconds_.find(name);
    return found == seconds_.end() ? 0 : found->second;
  }

 private:
  std::map<std::string, double> seconds_;
};

inline void printHead(std::span<const int> lengths) {
  std::printf("| ns an element at |");
  for (const int length : lengths) std::printf(" %d |", length);
  std::printf("\n|---|");
  for (size_t i = 0; i < lengths.size(); ++i) std::printf("---|");
  std::printf("\n");
}

}  // namespace bench
