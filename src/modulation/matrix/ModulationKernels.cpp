#include "modulation/matrix/ModulationKernels.h"

#include "core/simd/MapBlock.h"

namespace cinder::simd::CINDER_SIMD_SET {

namespace {

#define CINDER_LAMBDA __attribute__((always_inline))

/// One pass: the running sum stays in a register.
void sumProducts(const float* base, const float* const* sources, const float* const* levels,
                 int numProducts, float minimum, float maximum, float* out, int n) noexcept {
    const auto limited = [=](Wide sum)
                             CINDER_LAMBDA { return min(max(sum, Wide(minimum)), Wide(maximum)); };
    const auto sumAt = [=](int i) CINDER_LAMBDA {
        Wide sum = Wide::load(base + i);
        for (int k = 0; k < numProducts; ++k)
            sum = mulAdd(Wide::load(sources[k] + i), Wide::load(levels[k] + i), sum);
        return limited(sum);
    };
    int i = 0;
    for (; i + wideLanes <= n; i += wideLanes)
        sumAt(i).store(out + i);
    if (i < n && n >= wideLanes) {
        sumAt(n - wideLanes).store(out + n - wideLanes);
        return;
    }
    for (; i < n; ++i) {
        Wide sum(base[i]);
        for (int k = 0; k < numProducts; ++k)
            sum = mulAdd(Wide(sources[k][i]), Wide(levels[k][i]), sum);
        out[i] = limited(sum)[0];
    }
}

void panGains(const float* level, const float* pan, float* left, float* right, int n) noexcept {
    mapBlocks(
        left, n, [](Wide l, Wide p) CINDER_LAMBDA { return l - max(p, Wide(0.0f)) * l; }, level,
        pan);
    mapBlocks(
        right, n, [](Wide l, Wide p) CINDER_LAMBDA { return min(p, Wide(0.0f)) * l + l; }, level,
        pan);
}

#undef CINDER_LAMBDA

}  // namespace

constinit const ModulationKernels modulationKernels = {sumProducts, panGains};

}  // namespace cinder::simd::CINDER_SIMD_SET
