// Steps of a Viterbi decoder. An element is a received point, a symbol or a state that is updated.
#include <array>

#include "cases.h"
#include "plain_viterbi.h"

namespace {

using bench::Case;
using bench::Data;
using bench::Kind;

// 64 points; half of all 16-bit numbers are within their range.
constexpr int kLimit = 7, kFraction = 11;

// The code of that many states which the header describes.
template <int states>
std::array<Orp16u, 4 * states> trellisOf(int g0, int g1, int g2) {
  std::array<Orp16u, 4 * states> trellis;
  std::array<int, states> count{};
  for (int state = 0; state < states; ++state)
    for (int k = 0; k < 4; ++k) {
      const int subset = (k & 1) + 2 * (state & 1) + 4 * (k >> 1);
      const int next = (state >> 1) ^ (subset & 1 ? g0 : 0) ^ (subset & 2 ? g1 : 0) ^ (subset & 4 ? g2 : 0);
      trellis[static_cast<size_t>(states * count[static_cast<size_t>(next)]++ + next)] =
          static_cast<Orp16u>(8 * state + subset);
    }
  return trellis;
}
const auto kTrellis16 = trellisOf<16>(3, 9, 4);
const auto kTrellis64 = trellisOf<64>(27, 34, 14);

// Steps until n states have been updated, one at least.
template <auto step, const auto& trellis>
void update(const Data& data, int n) {
  constexpr int kStates = static_cast<int>(trellis.size() / 4);
  Orp16u metrics[kStates] = {};
  int state = 0;
  for (int i = 0; i < n; i += kStates)
    step(data.a<Orp16u>() + i, trellis.data(), metrics, metrics, data.d<Orp16u>() + i, kStates, &state);
}
// The plain loop does not work in place.
void plainStep(const Orp16u* branchMetrics, const Orp16u* trellis, const Orp16u* old, Orp16u* metrics, Orp16u* paths,
               int states, int* bestState) {
  Orp16u copy[64];
  for (int s = 0; s < states; ++s) copy[s] = old[s];
  plain::pathMetrics(branchMetrics, trellis, copy, metrics, paths, states, bestState);
}

const Case kCases[] = {
    {"GetVarPointDV_16sc", Kind::kInt16, 24,
     WORK(orpsGetVarPointDV_16sc(data.a<Orp16sc>(), data.d<Orp16sc>(), data.d<Orp16u>() + 8 * n, n, kLimit, kFraction)),
     WORK(plain::variants(data.a<Orp16sc>(), data.d<Orp16sc>(), data.d<Orp16u>() + 8 * n, n, kLimit, kFraction))},
    {"BuildSymblTableDV4D_16sc", Kind::kInt16, 80,
     WORK(orpsBuildSymblTableDV4D_16sc(data.a<Orp16sc>(), data.b<Orp16u>(), data.d<Orp16sc>(),
                                       data.d<Orp16u>() + 32 * n, n)),
     WORK(plain::symbolTable(data.a<Orp16sc>(), data.b<Orp16u>(), data.d<Orp16sc>(), data.d<Orp16u>() + 32 * n, n))},
    {"UpdatePathMetricsDV_16u, 16 states", Kind::kSmallNonzero16, 2, update<orpsUpdatePathMetricsDV_16u, kTrellis16>,
     update<plainStep, kTrellis16>},
    {"UpdatePathMetricsDV_16u, 64 states", Kind::kSmallNonzero16, 2, update<orpsUpdatePathMetricsDV_16u, kTrellis64>,
     update<plainStep, kTrellis64>},
};

}  // namespace

std::span<const Case> bench::viterbiCases() { return kCases; }
