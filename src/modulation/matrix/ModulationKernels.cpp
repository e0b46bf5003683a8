#include "modulation/matrix/ModulationKernels.h"

#include "core/simd/MapBlock.h"

namespace cinder::simd::CINDER_SIMD_SET {

namespace {

#define CINDER_LAMBDA __attribute__((always_inline))

/// Most targets have one slot: two registers at a time, with no list to go through.
CINDER_LANES int sumOneProduct(const float* base, const float* source, const float* level,
                               Wide minimum, Wide maximum, float* out, int n) {
    const auto sumAt = [=](int i) CINDER_LAMBDA {
        const Wide sum =
            mulAdd(Wide::load(source + i), Wide::load(level + i), Wide::load(base + i));
        min(max(sum, minimum), maximum).store(out + i);
    };
    int i = 0;
    for (; i + 2 * wideLanes <= n; i += 2 * wideLanes) {
        sumAt(i);
        sumAt(i + wideLanes);
    }
    return i;
}

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
    int i = numProducts == 1
                ? sumOneProduct(base, sources[0], levels[0], Wide(minimum), Wide(maximum), out, n)
                : 0;
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
