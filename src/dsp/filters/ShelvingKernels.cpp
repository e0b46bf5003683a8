#include "dsp/filters/ShelvingKernels.h"

#include "core/simd/LaneMath.h"

namespace cinder::CINDER_SIMD_SET {

namespace {

using namespace simd::CINDER_SIMD_SET;

constexpr int numLanes = registerBytes / static_cast<int>(sizeof(double));
using V = DoubleLanes<numLanes>;

struct Polynomial {
    V s2, s1, s0;
};

CINDER_LANES Polynomial polynomialOf(const ShelvingLaw& law, V e) {
    const V square = e * e;
    return {mulAdd(V(law.s2Squared), square, V(law.s2)), max(V(law.s1) * e, V(law.leastS1)),
            mulAdd(V(law.s0Squared), square, V(law.s0))};
}

/// A design is a lane.
CINDER_LANES void designLanes(const ShelvingLaw& law, V gainsDb, int count,
                              BiquadCoefficients* out) {
    const V up = expOfSmall(gainsDb * law.nepersPerDb);
    const Polynomial n = polynomialOf(law, up), d = polynomialOf(law, 1.0 / up);
    // The bilinear transform.
    const V k = law.tangent;
    const V square = k * k;
    const V e = k * d.s1, f = k * n.s1;
    const V a = square * d.s0, b = square * n.s0;
    const V c = a + d.s2, h = n.s2 + b;
    const V m = 1.0 / (c + e);
    const V twice = m + m;
    const V b0 = (h + f) * m, b1 = (b - n.s2) * twice, b2 = (h - f) * m;
    const V a1 = (a - d.s2) * twice, a2 = (c - e) * m;
    for (int lane = 0; lane < numLanes && lane < count; ++lane)
        out[lane] = {b0[lane], b1[lane], b2[lane], a1[lane], a2[lane]};
}

void design(const ShelvingLaw& law, const float* gainsDb, int count,
            BiquadCoefficients* out) noexcept {
    const ShelvingLaw own = law;  // a copy, which overlaps nothing that is written
    for (int i = 0; i < count; i += numLanes) {
        double few[numLanes];
        for (int lane = 0; lane < numLanes; ++lane)
            few[lane] = static_cast<double>(gainsDb[i + lane < count ? i + lane : i]);
        designLanes(own, V::load(few), count - i, out + i);
    }
}

}  // namespace

constinit const ShelvingKernels shelvingKernels = {design};

}  // namespace cinder::CINDER_SIMD_SET
