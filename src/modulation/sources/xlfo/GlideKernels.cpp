#include "modulation/sources/xlfo/GlideKernels.h"

// The compiler makes lanes of these loops by itself: every branch is a choice between two values.
// Nothing is fused, so all sets give the same bits.

namespace cinder::simd::CINDER_SIMD_SET {

namespace {

#define CINDER_INLINE __attribute__((always_inline)) inline

struct Linear {
    static CINDER_INLINE float at(float u) { return u; }
};
struct Square {
    static CINDER_INLINE float at(float u) { return u * u; }
};
struct SquareRoot {
    static CINDER_INLINE float at(float u) { return __builtin_sqrtf(u); }
};
struct Sine {
    /// (sin((u - 1/2) pi) + 1) / 2, by the series of the sine: the first term left out is 6e-12 at
    /// the ends, far below what a float can tell.
    static CINDER_INLINE float at(float u) {
        constexpr double inverseFactorials[] = {
            -1.0 / 1307674368000.0,  // 15!
            1.0 / 6227020800.0,
            -1.0 / 39916800.0,
            1.0 / 362880.0,
            -1.0 / 5040.0,
            1.0 / 120.0,
            -1.0 / 6.0,
            1.0,
        };
        const double x = (static_cast<double>(u) - 0.5) * 3.141592653589793;
        const double square = x * x;
        double sum = inverseFactorials[0];
        for (int k = 1; k < 8; ++k)
            sum = sum * square + inverseFactorials[k];
        return static_cast<float>((sum * x + 1.0) * 0.5);
    }
};

/// Sample j of a way at an even pace.
CINDER_INLINE float timeAt(const EvenPace& pace, int j) {
    const double phase = pace.phase + (pace.count + static_cast<double>(j)) * pace.increment;
    return static_cast<float>((phase - pace.origin) * pace.pace);
}

CINDER_INLINE float boundedFrequency(float hz) {
    const float bounded = hz < 5000.0f ? hz : 5000.0f;
    return hz > 0.0f ? bounded : 0.0f;
}

CINDER_INLINE double boundedOffset(float turns) {
    const float above = turns > -100.0f ? turns : -100.0f;
    const float bounded = above < 100.0f ? above : 100.0f;
    return static_cast<double>(turns == turns ? bounded : 0.0f);
}

template <class Curve>
CINDER_INLINE float glided(float t, float begin, float inverse, float from, float change) {
    const float u = (t - begin) * inverse;
    return Curve::at(u < 1.0f ? u : 1.0f) * change + from;
}

template <class Curve>
void gliding(const EvenPace& pace, const Glide& glide, float g, float* __restrict out,
             int n) noexcept {
    const EvenPace p = pace;
    // Without a glide the inverse is infinite, and nothing is above `begin`.
    const float begin = 1.0f - g, inverse = 1.0f / g;
    const float from = glide.from, change = glide.to - glide.from;
    for (int j = 0; j < n; ++j) {
        const float t = timeAt(p, j);
        const float y = glided<Curve>(t, begin, inverse, from, change);
        out[j] = t > begin ? y : from;
    }
}

void times(const EvenPace& pace, float* __restrict t, int n) noexcept {
    const EvenPace p = pace;
    for (int j = 0; j < n; ++j)
        t[j] = timeAt(p, j);
}

void increments(const float* __restrict frequency, double rate, double* __restrict out,
                int n) noexcept {
    for (int j = 0; j < n; ++j)
        out[j] = static_cast<double>(boundedFrequency(frequency[j])) / rate;
}

void jumps(const float* __restrict offset, float before, double* __restrict out, int n) noexcept {
    out[0] = boundedOffset(offset[0]) - static_cast<double>(before);
    for (int j = 1; j < n; ++j)
        out[j] = boundedOffset(offset[j]) - boundedOffset(offset[j - 1]);
}

template <class Curve>
void moving(const float* __restrict t, const float* __restrict frequency,
            const float* __restrict globalGlide, const Glide& glide, float* __restrict out,
            int n) noexcept {
    const float from = glide.from, change = glide.to - glide.from, amount = glide.amount;
    for (int j = 0; j < n; ++j) {
        const float root = 0.0002f * boundedFrequency(frequency[j]);
        const float least = root * root;
        const float sum = amount + globalGlide[j];
        const float limited = sum < 1.0f ? sum : 1.0f;
        const float g = sum >= least ? limited : least;
        const float begin = 1.0f - g;
        const float y = glided<Curve>(t[j], begin, 1.0f / g, from, change);
        out[j] = t[j] > begin ? y : from;
    }
}

#undef CINDER_INLINE

}  // namespace

constinit const GlideKernels glideKernels = {
    {gliding<Linear>, gliding<Square>, gliding<SquareRoot>, gliding<Sine>},
    times,
    increments,
    jumps,
    {moving<Linear>, moving<Square>, moving<SquareRoot>, moving<Sine>}};

}  // namespace cinder::simd::CINDER_SIMD_SET
