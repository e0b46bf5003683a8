#include "modulation/sources/dynamics/DynamicsKernels.h"

#include "core/Constants.h"
#include "core/simd/LaneMath.h"
#include "core/simd/MapBlock.h"

namespace cinder::CINDER_SIMD_SET {

namespace {

using namespace simd::CINDER_SIMD_SET;

#define CINDER_LAMBDA __attribute__((always_inline))

void levelsToDecibels(const float* in, float* out, int n) noexcept {
    constexpr auto dbPerNeper = static_cast<float>(1.0 / logPerDecibel);
    constexpr float silenceDb = -180.0f;
    // A little below -180 dB, so that rounding cannot lift silence over the floor.
    constexpr float silence = 0.9999e-9f;
    mapBlock(in, out, n, [](Wide x) CINDER_LAMBDA {
        return max(log(max(abs(x), Wide(silence))) * dbPerNeper, Wide(silenceDb));
    });
}

void changesToGains(const float* in, float* out, int n, float logPerDb, bool removed) noexcept {
    const Wide factor(logPerDb);
    if (removed)
        mapBlock(in, out, n, [=](Wide d) CINDER_LAMBDA { return 1.0f - exp(d * factor); });
    else
        mapBlock(in, out, n, [=](Wide d) CINDER_LAMBDA { return exp(d * factor); });
}

/// The quadratic bend of `width` around d = 0. Its half width is negative where there is none, so
/// that no d lies inside.
struct Knee {
    Wide half;
    Wide width;

    explicit CINDER_LANES Knee(float widthDb)
        : half(widthDb > sameValue ? widthDb * 0.5f : -1.0f), width(widthDb) {}
    CINDER_LANES Wide operator()(Wide d) const {
        const Wide t = (half + d) / width;
        return select((d >= -half) & (d <= half), t * t * half, d);
    }
};

/// The arithmetic of Detector's scalar loop, operation by operation: the same bits.
template <int purpose>
void changes(const float* levelDb, float* out, int n, const CurveControls& c) noexcept {
    const Wide threshold(c.thresholdDb);
    const Wide range(c.rangeDb);
    const Wide ratio(c.ratio);
    const Wide slope(c.ratio - 1.0f);
    const Wide halfKnee(c.kneeWidthDb * 0.5f);
    const Knee knee(c.kneeWidthDb);
    const auto limited = [=](Wide d) CINDER_LAMBDA { return max(min(range, d), Wide(0.0f)); };
    if (purpose == 0 && c.ratio < 100.0f)
        mapBlock(levelDb, out, n, [=](Wide x) CINDER_LAMBDA {
            const Wide d = knee(x - threshold);
            return limited(d - d / ratio);
        });
    else if (purpose == 0)
        mapBlock(levelDb, out, n,
                 [=](Wide x) CINDER_LAMBDA { return limited(knee(x - threshold)); });
    else if (purpose == 1)
        mapBlock(levelDb, out, n, [=](Wide x) CINDER_LAMBDA {
            return limited(knee(-(x - threshold) - halfKnee) * slope);
        });
    else
        mapBlock(levelDb, out, n,
                 [=](Wide x) CINDER_LAMBDA { return limited(knee(x - threshold) * slope); });
}

void magnitudes(const float* in, float* out, int n) noexcept {
    mapBlock(in, out, n, [](Wide x) CINDER_LAMBDA {
        const Wide magnitude = abs(x);
        return keepWhere(magnitude >= Wide(0.0f), magnitude);
    });
}

/// history[i] = the largest of `count` values from history[i] on, each `distance` behind the one
/// before, for i from 0 to end - 1 and up to the end of the register.
template <int count>
CINDER_LANES void joinNeighbours(float* history, int distance, int end) {
    static_assert(wideLanes <= slidingMaximumPadding);
    for (int i = 0; i < end; i += wideLanes) {
        Wide largest = Wide::load(history + i);
        for (int k = 1; k < count; ++k)
            largest = max(largest, Wide::load(history + i + k * distance));
        largest.store(history + i);
    }
}

/// Maxima of 4, 16, 64 ... neighbours, in place, until two of them, overlapping, span the window.
void slidingMaximum(float* history, int window, float* out, int n) noexcept {
    const int length = window + n;
    int span = 1;
    for (; span * 4 <= window + 1; span *= 4)
        joinNeighbours<4>(history, span, length - span * 3);
    if (span * 2 <= window + 1) {
        joinNeighbours<2>(history, span, length - span);
        span *= 2;
    }
    if (span <= window) joinNeighbours<2>(history, window + 1 - span, n);
    __builtin_memcpy(out, history, static_cast<unsigned long>(n) * sizeof(float));
}

/// A channel is a lane. One step waits for the one before, so both directions are worked out while
/// it is found which counts.
struct LevelPair {
    using V = DoubleLanes<2>;

    CINDER_LANES V follow(V to) {
        const V d = to - level;
        const V fallen = level + d * down, risen = level + d * up;
        return level = select(d <= V(capacitorFallsFrom), fallen, risen);
    }
    V level, up, down;
};

/// Two samples of both channels, as they lie: channel 0, 1, 0, 1.
CINDER_LANES Lanes<4> followTwo(LevelPair& levels, Lanes<4> in) {
    const DoubleLanes<4> to = toDouble(in);
    const auto early = levels.follow(shuffle<0, 1>(to, to));
    const auto late = levels.follow(shuffle<2, 3>(to, to));
    return {__builtin_convertvector((shuffle<0, 1, 2, 3>(early, late).raw), Lanes<4>::Raw)};
}

void smoothPair(CapacitorPair& pair, const float* const* in, float* const* out, int n) noexcept {
    using V = LevelPair::V;
    using Floats = Lanes<4>;
    const float* const ins[] = {in[0], in[1]};  // a copy, which overlaps nothing that is written
    float* const outs[] = {out[0], out[1]};
    LevelPair levels = {V::load(pair.level), V::load(pair.up), V::load(pair.down)};
    int i = 0;
    for (; i + 4 <= n; i += 4) {
        const Floats a = Floats::load(ins[0] + i), b = Floats::load(ins[1] + i);
        const Floats early = followTwo(levels, shuffle<0, 4, 1, 5>(a, b));
        const Floats late = followTwo(levels, shuffle<2, 6, 3, 7>(a, b));
        shuffle<0, 2, 4, 6>(early, late).store(outs[0] + i);
        shuffle<1, 3, 5, 7>(early, late).store(outs[1] + i);
    }
    for (; i < n; ++i) {
        const V last = levels.follow(
            V(V::Raw{static_cast<double>(ins[0][i]), static_cast<double>(ins[1][i])}));
        outs[0][i] = static_cast<float>(last[0]);
        outs[1][i] = static_cast<float>(last[1]);
    }
    levels.level.store(pair.level);
}

#undef CINDER_LAMBDA

}  // namespace

constinit const DynamicsKernels dynamicsKernels = {
    levelsToDecibels, {changes<0>, changes<1>, changes<2>},
    changesToGains,   magnitudes,
    slidingMaximum,   smoothPair,
};

}  // namespace cinder::CINDER_SIMD_SET
