#include "dsp/stages/LevelPanConverter.h"

#include <algorithm>

#include "core/simd/BlockMath.h"
#include "dsp/stages/ControlBlock.h"

namespace cinder {

LevelPanConverter::LevelPanConverter(wave::Environment* environment)
    : MultiProducer(environment), level(environment, 1.0f), pan(environment, 0.0f, -1.0f, 1.0f) {
    createOutputs(2);
}

void LevelPanConverter::render(wave::BasicBlock<float>** blocks, int numSamples,
                               unsigned) noexcept CINDER_REALTIME {
    wave::BasicBlock<float>* const levelBlock = level.pull(numSamples);
    const float* const l = levelBlock->data();
    const float* const p = pan.pull(numSamples)->data();
    const bool bothConstant = level.isConstant() && pan.isConstant();
    setOutputConstant(0, bothConstant);
    setOutputConstant(1, bothConstant);

    const float sign = invert ? -1.0f : 1.0f;
    if (pan.isConstant() && isZero(p[0])) {
        if (invert) simd::scale(l, sign, blocks[0]->data(), numSamples);
        blocks[1] = invert ? blocks[0] : levelBlock;
        blocks[0] = blocks[1];
        return;
    }
    float* const left = blocks[0]->data();
    float* const right = blocks[1]->data();
    for (int i = 0; i < numSamples; ++i) {
        const float gain = l[i] * sign;
        left[i] = gain - std::max(p[i], 0.0f) * gain;
        right[i] = std::min(p[i], 0.0f) * gain + gain;
    }
}

}  // namespace cinder
