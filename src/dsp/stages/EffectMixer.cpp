#include "dsp/stages/EffectMixer.h"

#include <algorithm>
#include <cmath>

#include "core/simd/BlockMath.h"
#include "dsp/stages/ControlBlock.h"

namespace cinder {

EffectMixer::Gains EffectMixer::gainsOf(float m, PanningLaw law) noexcept CINDER_REALTIME {
    switch (law) {
        case PanningLaw::BothFull:
            return {1.0f - std::max(m, 0.0f), 1.0f + std::min(m, 0.0f)};
        case PanningLaw::Linear: {
            const float w = (m + 1.0f) * 0.5f;
            return {1.0f - w, w};
        }
        case PanningLaw::EqualPower:
            break;
    }
    const float w = std::sin((m + 1.0f) * 0.5f * static_cast<float>(halfPi));
    return {std::sqrt(std::max(1.0f - w * w, 0.0f)), w};
}

void EffectMixer::handOn(wave::Producer* input, int numSamples) noexcept CINDER_REALTIME {
    passOn(input->pull(numSamples));
    setConstant(input->isConstant());
}

void EffectMixer::render(wave::BasicBlock<float>* block, int numSamples,
                         unsigned) noexcept CINDER_REALTIME {
    const float* const m = mix.pull(numSamples)->data();
    const bool mixConstant = mix.isConstant();
    if (mixConstant && isZero(m[0] + 1.0f)) return handOn(dry, numSamples);
    if (mixConstant && isOne(m[0])) return handOn(wet, numSamples);

    const float* const dryIn = dry->pull(numSamples)->data();
    const float* const wetIn = wet->pull(numSamples)->data();
    float* const out = block->data();
    if (mixConstant) {
        const Gains gains = gainsOf(m[0], panningLaw);
        simd::scale(dryIn, gains.dry, out, numSamples);
        simd::addScaled(wetIn, gains.wet, out, numSamples);
    } else {
        for (int i = 0; i < numSamples; ++i) {
            const Gains gains = gainsOf(m[i], panningLaw);
            out[i] = dryIn[i] * gains.dry + wetIn[i] * gains.wet;
        }
    }
    setConstant(mixConstant && dry->isConstant() && wet->isConstant());
}

}  // namespace cinder
