#include <xsimd/xsimd.hpp>

#include "Kernels.h"

namespace xsimdbatch::CINDER_SIMD_SET {

using Wide = xsimd::batch<float>;
using Four = xsimd::make_sized_batch_t<float, 4>;

void arcTan(const float* in, float* out, int n) noexcept {
    for (int i = 0; i < n; i += static_cast<int>(Wide::size)) {  // n is a multiple here
        const Wide scaled = Wide::load_unaligned(in + i) * Wide(1.5707964f);
        const Wide x = xsimd::abs(scaled);
        const Wide one(1.0f);
        const auto far = x > Wide(2.4142137f);
        const auto middle = x > Wide(0.41421357f);
        const Wide top = xsimd::select(far, -one, xsimd::select(middle, x - one, x));
        const Wide bottom = xsimd::select(far, x, xsimd::select(middle, x + one, one));
        const Wide offset = xsimd::select(far, Wide(1.5707964f),
                                          xsimd::select(middle, Wide(0.78539819f), Wide(0.0f)));
        const Wide t = top / bottom;
        const Wide z = t * t;
        Wide p = xsimd::fma(z, Wide(8.05374449538e-2f), Wide(-1.38776856032e-1f));
        p = xsimd::fma(p, z, Wide(1.99777106478e-1f));
        p = xsimd::fma(p, z, Wide(-3.33329491539e-1f));
        const Wide angle = xsimd::fma(p * z, t, t) + offset;
        xsimd::copysign(angle * Wide(0.63661977f), scaled).store_unaligned(out + i);
    }
}

void allpass(float* frames, int numFrames, const float* coefficients, float* state) noexcept {
    Four c[numSections], last[numSections + 1];
    for (int i = 0; i < numSections; ++i)
        c[i] = Four::load_unaligned(coefficients + 4 * i);
    for (int i = 0; i <= numSections; ++i)
        last[i] = Four::load_unaligned(state + 4 * i);
    for (float* frame = frames; frame < frames + 4 * numFrames; frame += 4) {
        Four x = Four::load_unaligned(frame);
        for (int i = 0; i < numSections; ++i) {
            const Four y = xsimd::fma(c[i], x - last[i + 1], last[i]);
            last[i] = x;
            x = y;
        }
        last[numSections] = x;
        x.store_unaligned(frame);
    }
    for (int i = 0; i <= numSections; ++i)
        last[i].store_unaligned(state + 4 * i);
}

}  // namespace xsimdbatch::CINDER_SIMD_SET
