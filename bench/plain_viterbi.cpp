#include "plain_viterbi.h"

#include <algorithm>
#include <limits>

namespace plain {

void variants(const Orp16sc* received, Orp16sc* points, Orp16u* distances, int n, int limit, int fraction) {
  const int unit = 1 << fraction, bound = (limit + 1) * unit;
  const auto nearest = [=](int v, int residue) {
    int c = ((v - (residue - 2) * unit) >> (fraction + 2)) * 4 + residue;
    while (c > limit) c -= 4;
    while (c < -limit) c += 4;
    return c * unit;
  };
  for (int i = 0; i < n; ++i) {
    const int re = std::clamp<int>(received[i].re, -bound, bound), im = std::clamp<int>(received[i].im, -bound, bound);
    const int nearRe[] = {nearest(re, 1), nearest(re, -1)}, nearIm[] = {nearest(im, 1), nearest(im, -1)};
    for (int x = 0; x < 4; ++x) {
      const int pointRe = nearRe[x == 1 || x == 2], pointIm = nearIm[x >= 2];
      points[4 * i + x] = {static_cast<Orp16s>(pointRe), static_cast<Orp16s>(pointIm)};
      const int square = (re - pointRe) * (re - pointRe) + (im - pointIm) * (im - pointIm), excess = 2 * fraction - 8;
      distances[4 * i + x] =
          static_cast<Orp16u>(excess > 0 ? (square + (1 << (excess - 1))) >> excess : square << -excess);
    }
  }
}

void symbolTable(const Orp16sc* points, const Orp16u* distances, Orp16sc* symbols, Orp16u* metrics, int n) {
  for (int i = 0; i < n; ++i, points += 8, distances += 8) {
    for (int s = 0; s < 8; ++s) {
      int x = s & 1, y = 4 + ((x + s / 2) & 3);
      const int otherX = x + 2, otherY = 4 + ((y + 2) & 3);
      int sum = distances[x] + distances[y];
      const int other = distances[otherX] + distances[otherY];
      if (other < sum) sum = other, x = otherX, y = otherY;
      *symbols++ = points[x];
      *symbols++ = points[y];
      *metrics++ = static_cast<Orp16u>(std::min(sum, 65535));
    }
  }
}

void pathMetrics(const Orp16u* branchMetrics, const Orp16u* trellis, const Orp16u* old, Orp16u* metrics, Orp16u* paths,
                 int states, int* bestState) {
  int least = std::numeric_limits<int>::max();
  for (int s = 0; s < states; ++s) {
    int best = std::numeric_limits<int>::max();
    for (int b = 0; b < 4; ++b) {
      const int branch = trellis[b * states + s];
      const int sum = std::min(old[branch >> 3] + branchMetrics[branch & 7], 65535);
      if (sum < best) best = sum, paths[s] = static_cast<Orp16u>(branch);
    }
    metrics[s] = static_cast<Orp16u>(best);
    if (best < least) least = best, *bestState = s;
  }
  for (int s = 0; s < states; ++s) metrics[s] = static_cast<Orp16u>(metrics[s] - least);
}

}  // namespace plain
