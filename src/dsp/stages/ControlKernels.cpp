#include "dsp/stages/ControlKernels.h"

#include "core/Constants.h"
#include "core/simd/LaneMath.h"
#include "core/simd/MapBlock.h"

namespace cinder::CINDER_SIMD_SET {

namespace {

using namespace simd::CINDER_SIMD_SET;

#define CINDER_LAMBDA __attribute__((always_inline))

constexpr auto nepersPerDb = static_cast<float>(logPerDecibel);

CINDER_LANES Wide gainOfDecibels(Wide db) {
    return exp(db * nepersPerDb);
}

void decibels(const float* in, float* out, int n) noexcept {
    constexpr auto dbPerNeper = static_cast<float>(1.0 / logPerDecibel);
    constexpr float floorDb = -180.0f;
    // A little below -180 dB, so that rounding cannot lift silence over the floor.
    constexpr float silence = 0.9999e-9f;
    mapBlock(in, out, n, [](Wide x) CINDER_LAMBDA {
        return max(log(max(abs(x), Wide(silence))) * dbPerNeper, Wide(floorDb));
    });
}

void gainsOfDecibels(const float* in, float* out, int n) noexcept {
    mapBlock(in, out, n, [](Wide db) CINDER_LAMBDA { return gainOfDecibels(db); });
}

/// The two branches meet at -0.6 to a part in a million: 0.2^2 * 2.0794094 is -21.6 dB.
void gainsOfLevels(const float* in, float* out, int n) noexcept {
    constexpr float parabolaEnd = 0.2f, parabolaScale = 2.0794094f, decibelsPerUnit = 36.0f;
    mapBlock(in, out, n, [](Wide x) CINDER_LAMBDA {
        const Wide v = (x + 1.0f) * 0.5f;
        return select(v < parabolaEnd, v * v * parabolaScale, gainOfDecibels(x * decibelsPerUnit));
    });
}

void panToLeft(const float* level, const float* pan, float* left, int n) noexcept {
    mapBlocks(
        left, n, [](Wide l, Wide p) CINDER_LAMBDA { return l - max(p, Wide(0.0f)) * l; }, level,
        pan);
}

void panToRight(const float* level, const float* pan, float* right, int n) noexcept {
    mapBlocks(
        right, n, [](Wide l, Wide p) CINDER_LAMBDA { return min(p, Wide(0.0f)) * l + l; }, level,
        pan);
}

#undef CINDER_LAMBDA

}  // namespace

constinit const ControlKernels controlKernels = {
    decibels, gainsOfDecibels, gainsOfLevels, panToLeft, panToRight,
};

}  // namespace cinder::CINDER_SIMD_SET
