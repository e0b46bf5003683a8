#include "core/simd/BlockMathKernels.h"

#include "core/simd/MapBlock.h"

namespace cinder::simd::CINDER_SIMD_SET {

namespace {

#define CINDER_LAMBDA __attribute__((always_inline))

void scale(const float* in, float gain, float* out, int n) noexcept {
    mapBlock(in, out, n, [g = Wide(gain)](Wide x) CINDER_LAMBDA { return x * g; });
}

void multiply(const float* a, const float* b, float* out, int n) noexcept {
    mapBlocks(
        out, n, [](Wide x, Wide y) CINDER_LAMBDA { return x * y; }, a, b);
}

void add(const float* in, float* sum, int n) noexcept {
    mapBlocks(
        sum, n, [](Wide s, Wide x) CINDER_LAMBDA { return s + x; }, sum, in);
}

void addScaled(const float* in, float gain, float* sum, int n) noexcept {
    mapBlocks(
        sum, n, [g = Wide(gain)](Wide s, Wide x) CINDER_LAMBDA { return mulAdd(x, g, s); }, sum,
        in);
}

void addProduct(const float* a, const float* b, float* sum, int n) noexcept {
    mapBlocks(
        sum, n, [](Wide s, Wide x, Wide y) CINDER_LAMBDA { return mulAdd(x, y, s); }, sum, a, b);
}

/// One pass: the running sum stays in a register.
void sumScaled(const float* const* in, const float* gain, int numInputs, float* sum,
               int n) noexcept {
    const auto sumAt = [=](int i) CINDER_LAMBDA {
        Wide total(0.0f);
        for (int k = 0; k < numInputs; ++k)
            total = mulAdd(Wide::load(in[k] + i), Wide(gain[k]), total);
        return total;
    };
    int i = 0;
    for (; i + wideLanes <= n; i += wideLanes)
        sumAt(i).store(sum + i);
    if (i < n && n >= wideLanes) {
        sumAt(n - wideLanes).store(sum + n - wideLanes);
        return;
    }
    for (; i < n; ++i) {
        Wide total(0.0f);
        for (int k = 0; k < numInputs; ++k)
            total = mulAdd(Wide(in[k][i]), Wide(gain[k]), total);
        sum[i] = total[0];
    }
}

void crossfade(const float* from, const float* to, const float* fade, float* out, int n) noexcept {
    mapBlocks(
        out, n, [](Wide x, Wide y, Wide f) CINDER_LAMBDA { return mulAdd(y - x, f, x); }, from, to,
        fade);
}

#undef CINDER_LAMBDA

}  // namespace

constinit const BlockMathKernels blockMathKernels = {scale,      multiply,  add,      addScaled,
                                                     addProduct, sumScaled, crossfade};

}  // namespace cinder::simd::CINDER_SIMD_SET
