#include "Kernels.h"
#include "core/simd/MapBlock.h"

namespace vectortypes::CINDER_SIMD_SET {

using namespace cinder::simd::CINDER_SIMD_SET;

void arcTan(const float* in, float* out, int n) noexcept {
    mapBlock(
        in, out, n, [](Wide v) __attribute__((always_inline)) {
            const Wide scaled = v * 1.5707964f;
            const Wide x = abs(scaled);
            const auto far = x > 2.4142137f;
            const auto middle = x > 0.41421357f;
            const Wide top = select(far, Wide(-1.0f), select(middle, x - 1.0f, x));
            const Wide bottom = select(far, x, select(middle, x + 1.0f, Wide(1.0f)));
            const Wide offset = select(far, Wide(1.5707964f), keepWhere(middle, Wide(0.78539819f)));
            const Wide t = top / bottom;
            const Wide z = t * t;
            Wide p = mulAdd(z, 8.05374449538e-2f, -1.38776856032e-1f);
            p = mulAdd(p, z, 1.99777106478e-1f);
            p = mulAdd(p, z, -3.33329491539e-1f);
            const Wide angle = mulAdd(p * z, t, t) + offset;
            return withSignOf(angle * 0.63661977f, scaled);
        });
}

void allpass(float* frames, int numFrames, const float* coefficients, float* state) noexcept {
    Lanes<4> c[numSections], last[numSections + 1];
    for (int i = 0; i < numSections; ++i)
        c[i] = Lanes<4>::load(coefficients + 4 * i);
    for (int i = 0; i <= numSections; ++i)
        last[i] = Lanes<4>::load(state + 4 * i);
    for (float* frame = frames; frame < frames + 4 * numFrames; frame += 4) {
        Lanes<4> x = Lanes<4>::load(frame);
        for (int i = 0; i < numSections; ++i) {
            const Lanes<4> y = mulAdd(c[i], x - last[i + 1], last[i]);
            last[i] = x;
            x = y;
        }
        last[numSections] = x;
        x.store(frame);
    }
    for (int i = 0; i <= numSections; ++i)
        last[i].store(state + 4 * i);
}

}  // namespace vectortypes::CINDER_SIMD_SET
