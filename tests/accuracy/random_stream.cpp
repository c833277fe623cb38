// The uniform random numbers as raw bits on standard output, without end, for programs that test generators
// (docs/accuracy.md):
//
//   random_stream --form 8u | dieharder -a -g 200
//   random_stream --form 16s --restart 16 | dieharder -a -g 200    # a new seed after every 16 samples
//
// The bits are what callers get: bytes from 0 to 255, all integers of 16 bits, or floats in [0, 65536) rounded down.
#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "orpsp.h"

namespace {

constexpr int kBlock = 1 << 14;

struct Options {
  std::string form = "8u";
  uint32_t seed = 0;
  int restart = 0;
};

// Writes blocks until nobody reads any more.
template <class Out, class T, class State>
int write(const Options& options, OrpStatus (*init)(State*, T, T, Orp32u), OrpStatus (*next)(T*, int, State*),
          OrpStatus (*getSize)(int*), T low, T high) {
  int bytes = 0;
  if (getSize(&bytes) != StsOk) return 1;
  std::vector<Orp8u> memory(static_cast<size_t>(bytes));
  auto* const state = reinterpret_cast<State*>(memory.data());
  const auto run = static_cast<size_t>(options.restart > 0 ? options.restart : kBlock);
  std::vector<T> samples(kBlock / run * run);
  std::vector<Out> out(samples.size());
  uint32_t seed = options.seed;
  if (init(state, low, high, seed) != StsOk) return 1;
  do {
    for (size_t n = 0; n < samples.size(); n += run) {
      if (options.restart > 0 && init(state, low, high, seed++) != StsOk) return 1;
      if (next(&samples[n], static_cast<int>(run), state) != StsOk) return 1;
    }
    for (size_t n = 0; n < samples.size(); ++n) out[n] = static_cast<Out>(samples[n]);
  } while (std::fwrite(out.data(), sizeof(Out), out.size(), stdout) == out.size());
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  CLI::App app("Writes uniform random numbers as raw bits.");
  app.add_option("--form", options.form, "8u, 16s or 32f")->check(CLI::IsMember({"8u", "16s", "32f"}));
  app.add_option("--seed", options.seed, "the (first) seed");
  app.add_option("--restart", options.restart, "samples from each seed, which then grows by 1; 0: all from one")
      ->check(CLI::Range(0, kBlock));
  CLI11_PARSE(app, argc, argv);
  if (options.form == "8u")
    return write<Orp8u, Orp8u>(options, &orpsRandUniformInit_8u, &orpsRandUniform_8u, &orpsRandUniformGetSize_8u, 0,
                               255);
  if (options.form == "16s")
    return write<Orp16u, Orp16s>(options, &orpsRandUniformInit_16s, &orpsRandUniform_16s, &orpsRandUniformGetSize_16s,
                                 -32768, 32767);
  return write<Orp16u, Orp32f>(options, &orpsRandUniformInit_32f, &orpsRandUniform_32f, &orpsRandUniformGetSize_32f, 0,
                               65536);
}
