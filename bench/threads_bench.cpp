// What a second thread brings on an idle machine, and what it costs when another process keeps the second processor
// busy: the time of sequences of calls, since single calls say nothing about what a sequence may lose.
#include <sched.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "orpcore.h"
#include "orpsp.h"

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr auto kSequence = 100ms;
constexpr int kRepetitions = 7;

// A process that keeps the last processor busy as long as the object lives.
class BusyProcess {
 public:
  BusyProcess() : id_(fork()) {
    if (id_ != 0) return;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    cpu_set_t usable, last;
    sched_getaffinity(0, sizeof(usable), &usable);
    CPU_ZERO(&last);
    for (int i = CPU_SETSIZE - 1; CPU_COUNT(&last) == 0; --i)
      if (CPU_ISSET(i, &usable)) CPU_SET(i, &last);
    sched_setaffinity(0, sizeof(last), &last);
    for (volatile unsigned spins = 0;;) spins = spins + 1;
  }
  ~BusyProcess() {
    kill(id_, SIGKILL);
    waitpid(id_, nullptr, 0);
  }
  BusyProcess(const BusyProcess&) = delete;
  BusyProcess& operator=(const BusyProcess&) = delete;

 private:
  pid_t id_;
};

struct Work {
  std::string name;
  std::function<void()> call;
};

// Mean seconds of the calls of a sequence, one after the other or each after a rest.
double meanOf(const Work& work, int threads, Clock::duration rest) {
  orpSetNumThreads(threads);
  Clock::duration within{};
  long calls = 0;
  for (const auto end = Clock::now() + kSequence; Clock::now() < end;) {
    const long atOnce = rest == 0s ? 16 : 1;
    const auto begin = Clock::now();
    for (long i = 0; i < atOnce; ++i) work.call();
    within += Clock::now() - begin;
    calls += atOnce;
    if (rest != 0s) std::this_thread::sleep_for(rest);
  }
  orpSetNumThreads(1);
  return Seconds(within).count() / static_cast<double>(calls);
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

// One thread, in microseconds, and how many times as long two take, each between runs of the other.
void compare(const Work& work, Clock::duration rest, bool isBusy) {
  std::optional<BusyProcess> busy;
  if (isBusy) busy.emplace();
  std::vector<double> alone, ratio;
  for (int i = 0; i < kRepetitions; ++i) {
    alone.push_back(meanOf(work, 1, rest) * 1e6);
    ratio.push_back(meanOf(work, 2, rest) * 1e6 / alone.back());
  }
  const double worst = *std::max_element(ratio.begin(), ratio.end());
  if (isBusy) {
    std::printf(" %.2f (%.2f) |", median(ratio), worst);
  } else {
    std::printf(" %.2f | %.2f |", median(alone), median(ratio));
  }
  std::fflush(stdout);
}

Work quotients(int len) {
  const auto count = static_cast<size_t>(len);
  return {"Div_32f, " + std::to_string(len),
          [=, divisor = std::vector(count, 3.0f), dividend = std::vector(count, 2.0f),
           quotient = std::vector(count, 0.0f)]() mutable {
            orpsDiv_32f(divisor.data(), dividend.data(), quotient.data(), len);
          }};
}

Work roots(int len) {
  const std::vector<Orp64fc> from(static_cast<size_t>(len), {3.0, 4.0});
  return {"Sqrt_64fc, " + std::to_string(len),
          [=, to = from]() mutable { orpsSqrt_64fc(from.data(), to.data(), len); }};
}

Work sort(int len) {
  std::vector<double> from(static_cast<size_t>(len));
  for (size_t i = 0; i < from.size(); ++i) from[i] = static_cast<double>(i * 7919 % 10007);
  return {"SortRadixAscend_64f_I, " + std::to_string(len), [=, data = from, tmp = from]() mutable {
            data = from;
            orpsSortRadixAscend_64f_I(data.data(), tmp.data(), len);
          }};
}

Work transform(int order) {
  OrpFftSpec_C_32fc* made = nullptr;
  orpsFFTInitAlloc_C_32fc(&made, order, 8, 0);
  const std::shared_ptr<OrpFftSpec_C_32fc> spec(made, orpsFFTFree_C_32fc);
  int bytes = 0;
  orpsFFTGetBufSize_C_32fc(made, &bytes);
  const std::vector<Orp32fc> from(size_t{1} << order, {1.0f, 2.0f});
  return {"FFTFwd_CToC_32fc, 2^" + std::to_string(order),
          [=, to = from, buffer = std::vector<Orp8u>(static_cast<size_t>(bytes))]() mutable {
            orpsFFTFwd_CToC_32fc(from.data(), to.data(), spec.get(), buffer.data());
          }};
}

}  // namespace

int main() {
  std::printf(
      "| call, length | 1 thread, us | 2, idle | 2, busy (worst) | 1 thread, rested, us | 2, idle | 2, busy (worst) "
      "|\n");
  std::printf("|---|---|---|---|---|---|---|\n");
  for (const Work& work : {roots(64), roots(4096), quotients(4096), quotients(65'536), quotients(1'000'000), sort(32),
                           sort(8192), sort(100'000), transform(16), transform(18), transform(20)}) {
    std::printf("| %s |", work.name.c_str());
    for (const Clock::duration rest : {Clock::duration(0), Clock::duration(1ms)})
      for (const bool isBusy : {false, true}) compare(work, rest, isBusy);
    std::printf("\n");
  }
}
