// Tones, triangles and test vectors.
#include "cases.h"
#include "plain_tone.h"

namespace {

using bench::Case;
using bench::Data;
using bench::Kind;

#define TONE(T, M, R, hint) WORK(R phase = 1; orpsTone_Direct_##T(data.d<Orp##T>(), n, M, R(0.0123), &phase, hint))

const Case kCases[] = {
    {"Tone_Direct_16s", Kind::kInt16, 2, TONE(16s, 30000, Orp32f, 0),
     WORK(plain::tone16s(data.d<Orp16s>(), n, 30000, 0.0123f, 1))},
    {"Tone_Direct_32f", Kind::kFloat, 4, TONE(32f, 1, Orp32f, 0),
     WORK(plain::tone32f(data.d<Orp32f>(), n, 1, 0.0123f, 1)), nullptr, 1e-3},
    {"Tone_Direct_32f, hint 1", Kind::kFloat, 4, TONE(32f, 1, Orp32f, 1),
     WORK(plain::tone32f(data.d<Orp32f>(), n, 1, 0.0123f, 1)), nullptr, 1e-3},
    {"Tone_Direct_32fc", Kind::kFloat, 8, TONE(32fc, 1, Orp32f, 0),
     WORK(plain::tone32fc(data.d<Orp32fc>(), n, 1, 0.0123f, 1)), nullptr, 1e-3},
    {"Tone_Direct_64f", Kind::kDouble, 8, TONE(64f, 1, Orp64f, 0),
     WORK(plain::tone64f(data.d<Orp64f>(), n, 1, 0.0123, 1)), nullptr, 1e-6},
    {"Triangle_Direct_32f", Kind::kFloat, 4,
     WORK(Orp32f phase = 1; orpsTriangle_Direct_32f(data.d<Orp32f>(), n, 1, 0.0123f, 0.5f, &phase)),
     WORK(plain::triangle32f(data.d<Orp32f>(), n, 1, 0.0123f, 0.5f, 1)), nullptr, 1e-3},
    {"VectorRamp_16s", Kind::kInt16, 2, WORK(orpsVectorRamp_16s(data.d<Orp16s>(), n, -20000.5, 0.01)),
     WORK(plain::ramp16s(data.d<Orp16s>(), n, -20000.5, 0.01))},
    {"VectorRamp_32f", Kind::kFloat, 4, WORK(orpsVectorRamp_32f(data.d<Orp32f>(), n, 1, 0.25f)),
     WORK(plain::ramp32f(data.d<Orp32f>(), n, 1, 0.25f)), nullptr, 1e-6},
    {"VectorJaehne_32f", Kind::kFloat, 4, WORK(orpsVectorJaehne_32f(data.d<Orp32f>(), n, 1)),
     WORK(plain::jaehne32f(data.d<Orp32f>(), n, 1)), nullptr, 1e-3},
};

}  // namespace

std::span<const Case> bench::toneCases() { return kCases; }
