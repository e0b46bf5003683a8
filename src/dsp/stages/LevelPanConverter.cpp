#include "dsp/stages/LevelPanConverter.h"

#include "core/simd/BlockMath.h"
#include "dsp/stages/ControlBlock.h"
#include "dsp/stages/ControlKernels.h"

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
    if (invert) simd::scale(l, sign, left, numSamples);
    const float* const gain = invert ? left : l;
    controlKernels->panToRight(gain, p, right, numSamples);
    controlKernels->panToLeft(gain, p, left, numSamples);
}

}  // namespace cinder
