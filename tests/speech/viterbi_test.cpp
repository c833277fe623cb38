// Viterbi steps one by one against their definitions, and together as a decoder.
#include "orpsp/speech/viterbi.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <random>
#include <tuple>
#include <utility>
#include <vector>

#include "support/guarded.h"
#include "support/random.h"

bool operator==(const Orp16sc& a, const Orp16sc& b) { return a.re == b.re && a.im == b.im; }

namespace orptest {
namespace {

using Symbol = std::array<Orp16sc, 2>;

// ---- Geometry, in whole coordinates

constexpr int kClassRe[] = {1, 3, 3, 1}, kClassIm[] = {1, 1, 3, 3};

Orp16sc pointOf(int re, int im) { return {static_cast<Orp16s>(re), static_cast<Orp16s>(im)}; }

std::vector<Orp16sc> pointsOfClass(int x, int limit) {
  std::vector<Orp16sc> points;
  for (int re = -limit; re <= limit; ++re)
    for (int im = -limit; im <= limit; ++im)
      if ((re & 3) == kClassRe[x] && (im & 3) == kClassIm[x]) points.push_back(pointOf(re, im));
  return points;
}

int subsetOf(int x, int y) { return 2 * ((y - x) & 3) + x % 2; }

// Least squared distance of different symbols.
int distanceOfSubsets(int s, int t) { return s == t ? 16 : ((s ^ t) & 2) != 0 ? 4 : 8; }

TEST(ViterbiSubsets, HaveTheirDistances) {
  std::vector<std::pair<Symbol, int>> all;
  for (int x = 0; x < 4; ++x)
    for (int y = 0; y < 4; ++y)
      for (const Orp16sc first : pointsOfClass(x, 3))
        for (const Orp16sc second : pointsOfClass(y, 3)) all.push_back({{first, second}, subsetOf(x, y)});
  const auto square = [](Orp16sc a, Orp16sc b) {
    return (a.re - b.re) * (a.re - b.re) + (a.im - b.im) * (a.im - b.im);
  };
  int least[8][8];
  std::fill_n(&least[0][0], 64, INT_MAX);
  for (const auto& [a, s] : all)
    for (const auto& [b, t] : all)
      if (const int distance = square(a[0], b[0]) + square(a[1], b[1]); distance > 0)
        least[s][t] = std::min(least[s][t], distance);
  for (int s = 0; s < 8; ++s)
    for (int t = 0; t < 8; ++t) EXPECT_EQ(distanceOfSubsets(s, t), least[s][t]) << s << ' ' << t;
}

// ---- Codes

struct Code {
  int states, g0, g1, g2, distance;

  int next(int state, int subset) const {
    return (state >> 1) ^ (subset & 1 ? g0 : 0) ^ (subset & 2 ? g1 : 0) ^ (subset & 4 ? g2 : 0);
  }
  static int subset(int state, int k) { return (k & 1) + 2 * (state & 1) + 4 * (k >> 1); }

  std::vector<Orp16u> trellis() const {
    std::vector<Orp16u> branches(static_cast<size_t>(4 * states));
    std::vector<int> count(static_cast<size_t>(states));
    for (int state = 0; state < states; ++state)
      for (int k = 0; k < 4; ++k) {
        const int to = next(state, subset(state, k));
        const int b = count[static_cast<size_t>(to)]++;
        branches.at(static_cast<size_t>(b * states + to)) = static_cast<Orp16u>(8 * state + subset(state, k));
      }
    return branches;
  }
};

constexpr Code kCodes[] = {{16, 3, 9, 4, 20}, {32, 6, 17, 9, 24}, {64, 27, 34, 14, 24}};

// Distances depend on differences of subsets, and these make sequences of the code themselves: the shortest way from
// state 0 back to it is looked for.
TEST(ViterbiCodes, HaveTheirDistances) {
  for (const Code& code : kCodes) {
    constexpr int kFar = 1000;
    std::vector<int> least(static_cast<size_t>(code.states), kFar);
    bool changed = true;
    const auto extend = [&](int state, int distance, int firstBranch) {
      for (int k = firstBranch; k < 4; ++k) {
        const int subset = Code::subset(state, k), sum = distance + (subset == 0 ? 0 : distanceOfSubsets(subset, 0));
        int& known = least[static_cast<size_t>(code.next(state, subset))];
        changed |= sum < known;
        known = std::min(known, sum);
      }
    };
    extend(0, 0, 1);
    while (std::exchange(changed, false))
      for (int state = 1; state < code.states; ++state) extend(state, least[static_cast<size_t>(state)], 0);
    EXPECT_EQ(code.distance, least[0]) << code.states << " states";
  }
}

// ---- The steps

std::vector<Orp16u> numbersBelow(int end, size_t count, Random& random) {
  std::vector<Orp16u> numbers;
  for (size_t i = 0; i < count; ++i) numbers.push_back(static_cast<Orp16u>(random.below(end)));
  return numbers;
}

void checkVariants(int limit, int fraction, int len, Random& random) {
  SCOPED_TRACE(testing::Message() << "limit " << limit << ", fraction " << fraction << ", " << len << " points");
  const int unit = 1 << fraction, bound = (limit + 1) * unit;
  const auto coordinate = [&] {
    // Now and then anywhere, else often halfway between points or at the bound.
    if (random.below(2 * len) == 0) return static_cast<int>(static_cast<Orp16s>(random.bits()));
    return std::min(random.below(4) == 0 ? random.below(2 * limit + 3) * unit - bound : random.below(2 * bound) - bound,
                    32767);
  };
  std::vector<Orp16sc> received;
  for (int n = 0; n < len; ++n) received.push_back(pointOf(coordinate(), coordinate()));
  const size_t count = static_cast<size_t>(len);
  Guarded<Orp16sc> src(received, count % 5), points(4 * count, count % 7);
  Guarded<Orp16u> distances(4 * count, count % 3);
  const OrpStatus status = orpsGetVarPointDV_16sc(src.data(), points.data(), distances.data(), len, limit, fraction);
  bool isMoved = false;
  for (size_t n = 0; n < count; ++n) {
    const auto within = [&](int v) {
      isMoved |= std::abs(v) > bound;
      return std::clamp(v, -bound, bound);
    };
    const auto nearest = [&](int v, int residue) {
      int best = 1 << 20;
      for (int c = limit; c >= -limit; --c)
        if ((c & 3) == residue && std::abs(v - c * unit) < std::abs(v - best)) best = c * unit;
      return best;
    };
    const int re = within(received[n].re), im = within(received[n].im);
    for (size_t x = 0; x < 4; ++x) {
      const int pointRe = nearest(re, kClassRe[x]), pointIm = nearest(im, kClassIm[x]);
      ASSERT_EQ(pointOf(pointRe, pointIm), points[4 * n + x]) << re << ' ' << im << ", class " << x;
      const double square = std::pow(re - pointRe, 2) + std::pow(im - pointIm, 2);
      ASSERT_EQ(std::floor(std::ldexp(square, 8 - 2 * fraction) + 0.5), distances[4 * n + x]);
    }
  }
  EXPECT_EQ(isMoved ? StsVarPoint : StsOk, status);
}

TEST(GetVarPointDV, FindsTheNearestPointOfEveryClass) {
  Random random;
  for (const auto& [limit, fraction] :
       {std::pair(1, 0), {3, 0}, {5, 3}, {7, 4}, {7, 5}, {9, 9}, {31, 10}, {1, 13}, {3, 13}, {2047, 4}})
    for (int len = 1; len < 40; ++len) checkVariants(limit, fraction, len, random);
}

TEST(BuildSymblTableDV4D, TakesTheNearerPair) {
  Random random;
  for (const auto& [most, inPlace] : {std::pair(3, false), {5000, false}, {65536, false}, {65536, true}}) {
    constexpr size_t kSymbols = 50;
    const auto points = random.vector<Orp16sc>(8 * kSymbols);
    const auto distances = numbersBelow(most, 8 * kSymbols, random);
    Guarded<Orp16sc> src(points, 3), symbols(16 * kSymbols, 5);
    Guarded<Orp16u> toPoints(distances, 7), separate(8 * kSymbols, 1);
    Guarded<Orp16u>& metrics = inPlace ? toPoints : separate;
    ASSERT_EQ(StsOk,
              orpsBuildSymblTableDV4D_16sc(src.data(), toPoints.data(), symbols.data(), metrics.data(), kSymbols));
    for (size_t n = 0; n < kSymbols; ++n) {
      Symbol nearest[8];
      std::vector<int> least(8, 1 << 20);
      for (int x = 0; x < 4; ++x)
        for (int y = 0; y < 4; ++y) {
          const size_t i = 8 * n + static_cast<size_t>(x), j = 8 * n + 4 + static_cast<size_t>(y);
          const auto s = static_cast<size_t>(subsetOf(x, y));
          const int sum = distances[i] + distances[j];
          if (sum < least[s]) nearest[s] = {points[i], points[j]};
          least[s] = std::min(least[s], sum);
        }
      for (size_t s = 0; s < 8; ++s) {
        ASSERT_EQ(nearest[s], (Symbol{symbols[16 * n + 2 * s], symbols[16 * n + 2 * s + 1]})) << n << ' ' << s;
        ASSERT_EQ(std::min(least[s], 65535), metrics[8 * n + s]) << n << ' ' << s;
      }
    }
  }
}

void checkStep(int nStates, int least, int most, bool inPlace, Random& random) {
  SCOPED_TRACE(testing::Message() << nStates << " states, metrics below " << most << (inPlace ? ", in place" : ""));
  const auto states = static_cast<size_t>(nStates);
  const auto branchMetrics = numbersBelow(most, 8, random), trellis = numbersBelow(8 * nStates, 4 * states, random);
  auto old = numbersBelow(most - least, states, random);
  for (Orp16u& metric : old) metric = static_cast<Orp16u>(metric + least);
  std::vector<Orp16u> sums, paths;
  for (size_t s = 0; s < states; ++s) {
    const auto sumOf = [&](size_t b) {
      const Orp16u branch = trellis[b * states + s];
      return static_cast<Orp16u>(std::min(old[branch / 8] + branchMetrics[branch % 8], 65535));
    };
    const std::array candidates = {sumOf(0), sumOf(1), sumOf(2), sumOf(3)};
    const auto best = std::min_element(candidates.begin(), candidates.end());  // the first of equal ones
    sums.push_back(*best);
    paths.push_back(trellis[static_cast<size_t>(best - candidates.begin()) * states + s]);
  }
  const auto best = std::min_element(sums.begin(), sums.end());
  for (const Orp16u subtrahend = *best; Orp16u & sum : sums) sum = static_cast<Orp16u>(sum - subtrahend);

  Guarded<Orp16u> branches(branchMetrics, 1), table(trellis, 2), src(old, 3), separate(states, 5), chosen(states, 1);
  Guarded<Orp16u>& dst = inPlace ? src : separate;
  Guarded<int> state(1, 2);
  ASSERT_EQ(StsOk, orpsUpdatePathMetricsDV_16u(branches.data(), table.data(), src.data(), dst.data(), chosen.data(),
                                               nStates, state.data()));
  ASSERT_EQ(sums, dst.values());
  ASSERT_EQ(paths, chosen.values());
  ASSERT_EQ(best - sums.begin(), state[0]);
}

TEST(UpdatePathMetricsDV, AddsComparesSelects) {
  Random random;
  for (const int states : {1, 2, 7, 8, 9, 15, 16, 17, 31, 32, 33, 40, 63, 64, 65, 100, 1024, 8191, 8192}) {
    for (const bool inPlace : {false, true}) {
      checkStep(states, 0, 2, inPlace, random);  // many ties
      checkStep(states, 0, 1000, inPlace, random);
      checkStep(states, 40000, 65536, inPlace, random);  // many sums that saturate
    }
  }
}

// With every pointer null in its turn, and whatever sizes and ranges.
template <class... A>
void expectNullFirst(OrpStatus (*f)(A...), std::type_identity_t<A>... arguments) {
  const auto without = [&]<size_t k>(std::integral_constant<size_t, k>) {
    std::tuple<A...> all(arguments...);
    if constexpr (std::is_pointer_v<std::tuple_element_t<k, decltype(all)>>) {
      std::get<k>(all) = nullptr;
      EXPECT_EQ(StsNullPtr, std::apply(f, all)) << "argument " << k;
    }
  };
  [&]<size_t... k>(std::index_sequence<k...>) { (without(std::integral_constant<size_t, k>{}), ...); }
  (std::index_sequence_for<A...>{});
}

TEST(Viterbi, RefusesBadArguments) {
  Guarded<Orp16sc> src(std::vector<Orp16sc>(16), 0), points(32);
  Guarded<Orp16u> in(std::vector<Orp16u>(64), 0), out(16), paths(16);
  Guarded<int> best(1);
  const auto variants = [&](int len, int limit, int fraction) {
    return orpsGetVarPointDV_16sc(src.data(), points.data(), out.data(), len, limit, fraction);
  };
  const auto update = [&](int states) {
    return orpsUpdatePathMetricsDV_16u(in.data(), in.data(), in.data(), out.data(), paths.data(), states, best.data());
  };
  const auto decide = [&](int len, int states, int depth, int row, int state) {
    return orpsCalcStatesDV_16sc(in.data(), src.data(), points.data(), len, states, depth, row, state);
  };
  expectNullFirst(orpsGetVarPointDV_16sc, src.data(), points.data(), out.data(), 0, 0, -1);
  expectNullFirst(orpsBuildSymblTableDV4D_16sc, src.data(), in.data(), points.data(), out.data(), 0);
  expectNullFirst(orpsUpdatePathMetricsDV_16u, in.data(), in.data(), in.data(), out.data(), paths.data(), 0,
                  best.data());
  expectNullFirst(orpsCalcStatesDV_16sc, in.data(), src.data(), points.data(), 0, 0, 0, -1, -1);
  for (const int size : {INT_MIN, -1, 0}) {
    EXPECT_EQ(StsBadSize, variants(size, 0, -1));
    EXPECT_EQ(StsBadSize, orpsBuildSymblTableDV4D_16sc(src.data(), in.data(), points.data(), out.data(), size));
    EXPECT_EQ(StsBadSize, update(size));
    EXPECT_EQ(StsBadSize, decide(size, 1, 1, -1, -1));
    EXPECT_EQ(StsBadSize, decide(1, size, 1, -1, -1));
    EXPECT_EQ(StsBadSize, decide(1, 1, size, -1, -1));
  }
  for (const int states : {8193, INT_MAX}) {
    EXPECT_EQ(StsBadSize, update(states));
    EXPECT_EQ(StsBadSize, decide(1, states, 1, -1, -1));
  }
  EXPECT_EQ(StsBadSize, decide(3, 1, 2, 0, 0));
  for (const int limit : {INT_MIN, -1, 0, 4, 4097, INT_MAX}) EXPECT_EQ(StsBadArg, variants(1, limit, 3)) << limit;
  for (const int fraction : {INT_MIN, -1, 14, INT_MAX}) EXPECT_EQ(StsBadArg, variants(1, 1, fraction)) << fraction;
  for (const int bad : {INT_MIN, -1, 4, INT_MAX}) {
    EXPECT_EQ(StsBadArg, decide(1, 4, 4, bad, 0));
    EXPECT_EQ(StsBadArg, decide(1, 4, 4, 0, bad));
  }
  // A branch from a state that does not exist.
  in.set(4 * 15 - 1, 8 * 15);
  EXPECT_EQ(StsBadArg, update(15));
  in.set(4 * 2, 8 * 4);
  for (const int len : {1, 3, 4}) EXPECT_EQ(StsBadArg, decide(len, 4, 4, 3, 0));
  EXPECT_TRUE(points.untouched() && out.untouched() && paths.untouched() && best.untouched());
  EXPECT_EQ(StsOk, decide(1, 4, 2, 1, 0));
}

// ---- The decoder

constexpr int kLimit = 7, kFraction = 9, kUnit = 1 << kFraction;

std::vector<Symbol> encode(const Code& code, int count, std::mt19937& random) {
  std::vector<Symbol> sent;
  for (int n = 0, state = 0; n < count; ++n) {
    const int subset = Code::subset(state, static_cast<int>(random() & 3));
    const int x = subset % 2 + 2 * static_cast<int>(random() & 1), y = (x + subset / 2) & 3;
    sent.push_back({pointsOfClass(x, kLimit)[random() % 16], pointsOfClass(y, kLimit)[random() % 16]});
    state = code.next(state, subset);
  }
  return sent;
}

// As received, with noise of that deviation in each coordinate.
std::vector<Orp16sc> transmit(const std::vector<Symbol>& sent, double deviation, std::mt19937& random) {
  std::normal_distribution<double> noise(0, 1);
  const auto coordinate = [&](int c) { return static_cast<int>(std::lrint(kUnit * (c + deviation * noise(random)))); };
  std::vector<Orp16sc> received;
  for (const Symbol& symbol : sent)
    for (const Orp16sc point : symbol) received.push_back(pointOf(coordinate(point.re), coordinate(point.im)));
  return received;
}

// As the header describes it, deciding on `len` symbols at once.
std::vector<Orp16sc> decode(const Code& code, const std::vector<Orp16sc>& received, int depth, int len) {
  const auto states = static_cast<size_t>(code.states), rows = static_cast<size_t>(depth);
  const auto trellis = code.trellis();
  const int count = static_cast<int>(received.size() / 2);
  Orp16sc points[8];
  Orp16u distances[8], branchMetrics[8];
  std::vector<Orp16u> metrics(states), paths(states * rows);
  std::vector<Orp16sc> symbols(16 * rows), decoded(received.size());
  for (int t = 0; t < count; ++t) {
    const int row = t % depth;
    const auto at = static_cast<size_t>(row);
    int state = -1;
    EXPECT_LE(StsOk, orpsGetVarPointDV_16sc(received.data() + 2 * t, points, distances, 2, kLimit, kFraction));
    EXPECT_EQ(StsOk, orpsBuildSymblTableDV4D_16sc(points, distances, &symbols[16 * at], branchMetrics, 1));
    EXPECT_EQ(StsOk, orpsUpdatePathMetricsDV_16u(branchMetrics, trellis.data(), metrics.data(), metrics.data(),
                                                 &paths[states * at], code.states, &state));
    EXPECT_GT(65535, *std::max_element(metrics.begin(), metrics.end()));
    const int first = t + 1 - depth;
    if (first < 0 || (first % len != 0 && t + 1 < count)) continue;
    EXPECT_EQ(StsOk, orpsCalcStatesDV_16sc(paths.data(), symbols.data(), decoded.data() + 2 * first,
                                           t + 1 < count ? len : depth, code.states, depth, row, state));
  }
  return decoded;
}

// The symbols in which points as received differ from those sent.
int errors(const std::vector<Symbol>& sent, const std::vector<Orp16sc>& received) {
  int count = 0;
  const auto is = [](Orp16sc p, Orp16sc q) { return p.re == q.re * kUnit && p.im == q.im * kUnit; };
  for (size_t n = 0; n < sent.size(); ++n)
    count += is(received[2 * n], sent[n][0]) && is(received[2 * n + 1], sent[n][1]) ? 0 : 1;
  return count;
}

TEST(ViterbiDecoder, DecodesWithoutNoise) {
  for (const Code& code : kCodes) {
    std::mt19937 random(6);
    auto sent = encode(code, 200, random);
    for (const int len : {1, 16, 32})
      EXPECT_EQ(0, errors(sent, decode(code, transmit(sent, 0, random), 32, len))) << code.states << ' ' << len;
    // A receiver that is a quarter turn off decides on turned points and is none the worse.
    for (Symbol& symbol : sent)
      for (Orp16sc& point : symbol) point = pointOf(-point.im, point.re);
    EXPECT_EQ(0, errors(sent, decode(code, transmit(sent, 0, random), 32, 1))) << code.states;
  }
}

TEST(ViterbiDecoder, CorrectsNearlyAllThatSlicingGetsWrong) {
  for (const Code& code : kCodes) {
    std::mt19937 random(66);
    const auto sent = encode(code, 20000, random);
    const auto received = transmit(sent, 0.45, random);
    auto sliced = received;
    const auto slice = [](int v) {
      return kUnit * std::clamp(2 * static_cast<int>(std::floor(0.5 * v / kUnit)) + 1, -kLimit, kLimit);
    };
    for (Orp16sc& point : sliced) point = pointOf(slice(point.re), slice(point.im));
    // 1722 and 9 of the 20000 with 16 states.
    EXPECT_GT(errors(sent, sliced), 100 * errors(sent, decode(code, received, 32, 1))) << code.states << " states";
  }
}

}  // namespace
}  // namespace orptest
