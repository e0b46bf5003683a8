#include "distortion/curves/CurveKernels.h"

#include "core/simd/LaneMath.h"
#include "core/simd/MapBlock.h"
#include "core/simd/Pair.h"

namespace cinder::CINDER_SIMD_SET {

namespace {

using namespace simd::CINDER_SIMD_SET;

#define CINDER_INLINE_LAMBDA __attribute__((always_inline))

// The curves as functions of a magnitude from 0 to infinity. L is Wide or a Pair of it.
//
// Those that take a power have a second form. With b = u^power, the result is u * (c / b)^(1 /
// power) where b is at most 1, and c^(1 / power) where it is more: so the root is taken of a number
// between 1/2 and 1, and neither its logarithm nor b itself leaves the range in which a float is
// exact. `logOf` gives the logarithm of c / b or of c; its argument is b or, above 1, 1 / b.

struct ArcTan {
    template <class L>
    static CINDER_LANES L of(L a) {
        return 0.63661977f * arcTan(1.5707964f * a);
    }

    template <class L>
    static CINDER_LANES L logOf(L inner, typename L::Mask isBelowOne) {
        // Above 1, atan(pi / 2 b) is pi / 2 less atan(2 / pi / b).
        const L x = max(inner * select(isBelowOne, L(1.5707964f), L(0.63661977f)), L(1e-30f));
        const L angle = arcTan(x);
        return log(select(isBelowOne, angle / x, 1.0f - 0.63661977f * angle));
    }
};

struct DivAbs {
    template <class L>
    static CINDER_LANES L of(L a) {
        const L finite = min(a, L(__FLT_MAX__));  // infinity by infinity would be NaN
        return finite / (finite + 1.0f);
    }

    template <class L>
    static CINDER_LANES L logOf(L inner, typename L::Mask) {
        return -log(1.0f + inner);
    }
};

struct Sine {
    template <class L>
    static CINDER_LANES L of(L a) {
        return sinOfQuarter(1.5707964f * min(a, L(1.0f)));
    }
};

struct PolynomeOrder2 {
    template <class L>
    static CINDER_LANES L of(L a) {
        const L m = min(a, L(1.0f));
        return m * (2.0f - m);
    }
};

struct PolynomeOrder3 {
    template <class L>
    static CINDER_LANES L of(L a) {
        const L m = min(a, L(1.0f));
        return m * mulAdd(m * -0.5f, m, L(1.5f));
    }
};

/// out = sign(in) * curve(|in|), 0 for NaN.
template <class Curve>
void odd(const float* in, float* out, int n) noexcept {
    mapBlock(in, out, n, [](Wide x) CINDER_INLINE_LAMBDA {
        return keepWhere(x == x, withSignOf(Curve::of(abs(x)), x));
    });
}

void rectify(const float* in, float* out, int n) noexcept {
    mapBlock(in, out, n, [](Wide x) CINDER_INLINE_LAMBDA {
        return keepWhere(x == x, PolynomeOrder2::of(abs(x)));
    });
}

void tube(const float* in, float* out, int n) noexcept {
    mapBlock(in, out, n, [](Wide v) CINDER_INLINE_LAMBDA {
        const Wide parabola = v * mulAdd(v, Wide(-6.153f), Wide(3.9375f));
        const Wide t = v + 0.032847f;
        const Wide w = 1.0f + t;
        const Wide w2 = w * w;
        const Wide w4 = w2 * w2;
        const Wide sum = mulAdd(w4 * w4, w4, t * 0.33333334f - 1.0f);
        const Wide bend = mulAdd(sum, Wide(0.75f), Wide(-0.01f));
        const Wide curved = select(v < -0.08905f, bend, parabola);
        const Wide below = select(v < -1.754818f, Wide(-1.175451f), curved);
        const Wide limited = select(v < 0.320018f, below, Wide(0.62993276f));
        return keepWhere(v == v, limited);
    });
}

/// The magnitude of x, times negativeScale below 0.
template <class L>
CINDER_LANES L scaled(L x, float negativeScale) {
    return abs(x) * select(x < 0.0f, L(negativeScale), L(1.0f));
}

/// The way back. 0 where u is 0, for NaN and for a negativeScale of 0.
template <class L>
CINDER_LANES L restored(L magnitude, L u, L x, float inverseScale) {
    const L y = magnitude * select(x < 0.0f, L(inverseScale), L(1.0f));
    return keepWhere(u > 0.0f, withSignOf(y, x));
}

template <class Curve>
void withPower(const float* in, float* out, int n, float power, float negativeScale) noexcept {
    const float inverseScale = 1.0f / negativeScale;
    if (power == 1.0f) {
        mapBlock(in, out, n, [=](Wide x) CINDER_INLINE_LAMBDA {
            const Wide u = scaled(x, negativeScale);
            return restored(Curve::of(u), u, x, inverseScale);
        });
        return;
    }
    using L = Pair<Wide>;
    const float inversePower = 1.0f / power;
    mapBlock<L>(in, out, n, [=](L x) CINDER_INLINE_LAMBDA {
        const L u = scaled(x, negativeScale);
        const L logOfB = log(u) * power;
        const auto isBelowOne = logOfB < 0.0f;
        const L root = exp(Curve::logOf(exp(-abs(logOfB)), isBelowOne) * inversePower);
        return restored(root * select(isBelowOne, u, L(1.0f)), u, x, inverseScale);
    });
}

#undef CINDER_INLINE_LAMBDA

}  // namespace

constinit const CurveKernels curveKernels = {
    .arcTan = odd<ArcTan>,
    .divAbs = odd<DivAbs>,
    .sine = odd<Sine>,
    .polynomeOrder2 = odd<PolynomeOrder2>,
    .polynomeOrder3 = odd<PolynomeOrder3>,
    .tube = tube,
    .rectify = rectify,
    .arcTanPower = withPower<ArcTan>,
    .divAbsPower = withPower<DivAbs>,
};

}  // namespace cinder::CINDER_SIMD_SET
