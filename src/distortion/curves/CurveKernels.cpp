#include "distortion/curves/CurveKernels.h"

#include "core/simd/LaneMath.h"
#include "core/simd/MapBlock.h"

namespace cinder::CINDER_SIMD_SET {

namespace {

using namespace simd::CINDER_SIMD_SET;

#define CINDER_INLINE_LAMBDA __attribute__((always_inline))

// From magnitude to magnitude, for magnitudes from 0 to infinity.

CINDER_LANES Wide arcTanOf(Wide a) {
    return 0.63661977f * arcTan(1.5707964f * a);
}

CINDER_LANES Wide divAbsOf(Wide a) {
    const Wide finite = min(a, Wide(__FLT_MAX__));  // infinity by infinity would be NaN
    return finite / (finite + 1.0f);
}

CINDER_LANES Wide polynomeOrder2Of(Wide a) {
    const Wide m = min(a, Wide(1.0f));
    return m * (2.0f - m);
}

/// out = sign(in) * curve(|in|), 0 for NaN.
template <class Curve>
CINDER_LANES void mapOdd(const float* in, float* out, int n, Curve curve) {
    mapBlock(in, out, n, [&](Wide x) CINDER_INLINE_LAMBDA {
        return keepWhere(x == x, withSignOf(curve(abs(x)), x));
    });
}

void arcTanBlock(const float* in, float* out, int n) noexcept {
    mapOdd(in, out, n, arcTanOf);
}

void divAbsBlock(const float* in, float* out, int n) noexcept {
    mapOdd(in, out, n, divAbsOf);
}

void sineBlock(const float* in, float* out, int n) noexcept {
    mapOdd(in, out, n, [](Wide a) CINDER_INLINE_LAMBDA {
        return sinOfQuarter(1.5707964f * min(a, Wide(1.0f)));
    });
}

void polynomeOrder2Block(const float* in, float* out, int n) noexcept {
    mapOdd(in, out, n, polynomeOrder2Of);
}

void polynomeOrder3Block(const float* in, float* out, int n) noexcept {
    mapOdd(in, out, n, [](Wide a) CINDER_INLINE_LAMBDA {
        const Wide m = min(a, Wide(1.0f));
        return m * mulAdd(m * -0.5f, m, Wide(1.5f));
    });
}

void rectifyBlock(const float* in, float* out, int n) noexcept {
    mapBlock(in, out, n, [](Wide x) CINDER_INLINE_LAMBDA {
        return keepWhere(x == x, polynomeOrder2Of(abs(x)));
    });
}

void tubeBlock(const float* in, float* out, int n) noexcept {
    mapBlock(in, out, n, [](Wide v) CINDER_INLINE_LAMBDA {
        const Wide parabola = v * mulAdd(v, Wide(-6.153f), Wide(3.9375f));
        const Wide t = v + 0.032847f;
        const Wide w = 1.0f + t;
        const Wide w2 = w * w;
        const Wide w4 = w2 * w2;
        const Wide bend =
            mulAdd(mulAdd(w4 * w4, w4, t * 0.33333334f - 1.0f), Wide(0.75f), Wide(-0.01f));
        const Wide curved = select(v < -0.08905f, bend, parabola);
        const Wide below = select(v < -1.754818f, Wide(-1.175451f), curved);
        const Wide limited = select(v < 0.320018f, below, Wide(0.62993276f));
        return keepWhere(v == v, limited);
    });
}

// The curves with a power. With b = u^power, the result is u * (c / b)^(1 / power) where b is at
// most 1, and c^(1 / power) where it is more: the root is taken of a number between 1/2 and 1, and
// neither its logarithm nor b itself can leave the range in which a float is exact. `inner` is b
// or, above 1, 1 / b; the curves give the logarithm of c / b or of c.

CINDER_LANES Wide divAbsLog(Wide inner, Wide::Mask) {
    return -log(1.0f + inner);
}

CINDER_LANES Wide arcTanLog(Wide inner, Wide::Mask isBelowOne) {
    // Above 1, atan(pi / 2 b) is pi / 2 less atan(2 / pi / b).
    const Wide x =
        max(inner * select(isBelowOne, Wide(1.5707964f), Wide(0.63661977f)), Wide(1e-30f));
    const Wide angle = arcTan(x);
    return log(select(isBelowOne, angle / x, 1.0f - 0.63661977f * angle));
}

/// |x| times negativeScale below 0.
CINDER_LANES Wide scaled(Wide x, float negativeScale) {
    return abs(x) * select(x < 0.0f, Wide(negativeScale), Wide(1.0f));
}

/// The way back. 0 where u is 0, for NaN and for a negativeScale of 0.
CINDER_LANES Wide restored(Wide magnitude, Wide u, Wide x, float inverseScale) {
    const Wide y = magnitude * select(x < 0.0f, Wide(inverseScale), Wide(1.0f));
    return keepWhere(u > 0.0f, withSignOf(y, x));
}

template <class Curve, class CurveLog>
CINDER_LANES void mapPower(const float* in, float* out, int n, float power, float negativeScale,
                           Curve curve, CurveLog curveLog) {
    const float inversePower = 1.0f / power;
    const float inverseScale = 1.0f / negativeScale;
    if (power == 1.0f) {
        mapBlock(in, out, n, [&](Wide x) CINDER_INLINE_LAMBDA {
            const Wide u = scaled(x, negativeScale);
            return restored(curve(u), u, x, inverseScale);
        });
        return;
    }
    mapBlock(in, out, n, [&](Wide x) CINDER_INLINE_LAMBDA {
        const Wide u = scaled(x, negativeScale);
        const Wide logOfB = log(u) * power;
        const auto isBelowOne = logOfB < 0.0f;
        const Wide root = exp(curveLog(exp(-abs(logOfB)), isBelowOne) * inversePower);
        return restored(root * select(isBelowOne, u, Wide(1.0f)), u, x, inverseScale);
    });
}

void arcTanPowerBlock(const float* in, float* out, int n, float power,
                      float negativeScale) noexcept {
    mapPower(in, out, n, power, negativeScale, arcTanOf, arcTanLog);
}

void divAbsPowerBlock(const float* in, float* out, int n, float power,
                      float negativeScale) noexcept {
    mapPower(in, out, n, power, negativeScale, divAbsOf, divAbsLog);
}

}  // namespace

constinit const CurveKernels curveKernels = {
    .arcTan = arcTanBlock,
    .divAbs = divAbsBlock,
    .sine = sineBlock,
    .polynomeOrder2 = polynomeOrder2Block,
    .polynomeOrder3 = polynomeOrder3Block,
    .tube = tubeBlock,
    .rectify = rectifyBlock,
    .arcTanPower = arcTanPowerBlock,
    .divAbsPower = divAbsPowerBlock,
};

}  // namespace cinder::CINDER_SIMD_SET
