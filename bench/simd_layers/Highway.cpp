#include <hwy/highway.h>

#include "Kernels.h"

namespace highway::CINDER_SIMD_SET {

namespace hn = hwy::HWY_NAMESPACE;

void arcTan(const float* in, float* out, int n) noexcept {
    const hn::ScalableTag<float> d;
    const int width = static_cast<int>(hn::Lanes(d));
    const auto one = hn::Set(d, 1.0f);
    for (int i = 0; i < n; i += width) {  // n is a multiple of the width here
        const auto scaled = hn::Mul(hn::LoadU(d, in + i), hn::Set(d, 1.5707964f));
        const auto x = hn::Abs(scaled);
        const auto far = hn::Gt(x, hn::Set(d, 2.4142137f));
        const auto middle = hn::Gt(x, hn::Set(d, 0.41421357f));
        const auto top =
            hn::IfThenElse(far, hn::Set(d, -1.0f), hn::IfThenElse(middle, hn::Sub(x, one), x));
        const auto bottom = hn::IfThenElse(far, x, hn::IfThenElse(middle, hn::Add(x, one), one));
        const auto offset = hn::IfThenElse(far, hn::Set(d, 1.5707964f),
                                           hn::IfThenElseZero(middle, hn::Set(d, 0.78539819f)));
        const auto t = hn::Div(top, bottom);
        const auto z = hn::Mul(t, t);
        auto p = hn::MulAdd(z, hn::Set(d, 8.05374449538e-2f), hn::Set(d, -1.38776856032e-1f));
        p = hn::MulAdd(p, z, hn::Set(d, 1.99777106478e-1f));
        p = hn::MulAdd(p, z, hn::Set(d, -3.33329491539e-1f));
        const auto angle = hn::Add(hn::MulAdd(hn::Mul(p, z), t, t), offset);
        hn::StoreU(hn::CopySignToAbs(hn::Mul(angle, hn::Set(d, 0.63661977f)), scaled), d, out + i);
    }
}

void allpass(float* frames, int numFrames, const float* coefficients, float* state) noexcept {
    const hn::FixedTag<float, 4> d;
    hn::Vec<decltype(d)> c[numSections], last[numSections + 1];
    for (int i = 0; i < numSections; ++i)
        c[i] = hn::LoadU(d, coefficients + 4 * i);
    for (int i = 0; i <= numSections; ++i)
        last[i] = hn::LoadU(d, state + 4 * i);
    for (float* frame = frames; frame < frames + 4 * numFrames; frame += 4) {
        auto x = hn::LoadU(d, frame);
        for (int i = 0; i < numSections; ++i) {
            const auto y = hn::MulAdd(c[i], hn::Sub(x, last[i + 1]), last[i]);
            last[i] = x;
            x = y;
        }
        last[numSections] = x;
        hn::StoreU(x, d, frame);
    }
    for (int i = 0; i <= numSections; ++i)
        hn::StoreU(last[i], d, state + 4 * i);
}

}  // namespace highway::CINDER_SIMD_SET
