#include "modulation/sources/envelopes/EnvelopeKernels.h"

#include "core/Constants.h"
#include "core/simd/LaneMath.h"
#include "core/simd/MapBlock.h"

namespace cinder::CINDER_SIMD_SET {

namespace {

using namespace simd::CINDER_SIMD_SET;

#define CINDER_LAMBDA __attribute__((always_inline))

/// Two running maxima, so that one register can wait for the other.
float peak(const float* in, int n) noexcept {
    Wide first(0.0f), second(0.0f);
    int i = 0;
    for (; i + 2 * wideLanes <= n; i += 2 * wideLanes) {
        first = max(abs(Wide::load(in + i)), first);
        second = max(abs(Wide::load(in + i + wideLanes)), second);
    }
    first = max(first, second);
    for (; i < n; ++i)
        first = max(abs(Wide(in[i])), first);
    float largest = 0.0f;
    for (int lane = 0; lane < wideLanes; ++lane)
        largest = first[lane] > largest ? first[lane] : largest;
    return largest;
}

void levelsAboveFloor(const float* in, float* out, int n) noexcept {
    constexpr auto dbPerNeper = static_cast<float>(1.0 / logPerDecibel);
    mapBlock(in, out, n, [](Wide x) CINDER_LAMBDA {
        return max(log(abs(x)) * dbPerNeper - followerFloorDb, Wide(0.0f));
    });
}

/// One step waits for the one before, so lanes gain nothing; what this set gives is shorter code. A
/// branch is cheaper than taking both ways and the larger result, since levels change direction
/// rarely enough to be foreseen. Written around the fall, whose operand may lie in memory.
float follow(const float* in, float* out, int n, const FollowerState& state) noexcept {
    float level = state.level;
    const auto step = [&](int i) CINDER_LAMBDA {
        const float fall = level - in[i];
        if (fall >= 0.0f)
            level -= fall * state.down;
        else
            level -= fall * state.up;
        out[i] = level * followerOutputPerDb;
    };
    int i = 0;
    for (; i + 4 <= n; i += 4) {
        step(i);
        step(i + 1);
        step(i + 2);
        step(i + 3);
    }
    for (; i < n; ++i)
        step(i);
    return level;
}

#undef CINDER_LAMBDA

}  // namespace

constinit const EnvelopeKernels envelopeKernels = {peak, levelsAboveFloor, follow};

}  // namespace cinder::CINDER_SIMD_SET
