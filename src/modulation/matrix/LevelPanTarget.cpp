#include "modulation/matrix/LevelPanTarget.h"

#include <algorithm>
#include <cmath>

#include "core/Constants.h"
#include "modulation/matrix/GlobalModulationProducer.h"
#include "modulation/matrix/ModulationKernels.h"

namespace cinder {

LevelPanTarget::LevelPanTarget(ModulationMatrix* matrix, int levelTarget, int panTarget)
    : Component(matrix->getEnvironment()),
      matrix(matrix),
      levelTarget(levelTarget),
      panTarget(panTarget),
      level(matrix->getTarget(levelTarget)),
      pan(matrix->getTarget(panTarget)),
      leftGain(environment),
      rightGain(environment) {
    // Silence is within reach of pan even where it is not within that of the level. The ramps are
    // those of the level: while pan stands in the middle all three are the same.
    for (wave::FloatParameterSource* gain : {&leftGain, &rightGain})
        gain->parameter.setRange(std::min(level.minimum, 0.0f), level.maximum,
                                 level.base.getRange());
    targetChanged();
    matrix->setSecondaryTarget(levelTarget, this);
    matrix->setSecondaryTarget(panTarget, this);
}

LevelPanTarget::~LevelPanTarget() {
    matrix->setSecondaryTarget(levelTarget, nullptr);
    matrix->setSecondaryTarget(panTarget, nullptr);
}

void LevelPanTarget::targetChanged() noexcept CINDER_REALTIME {
    constexpr float ramp = wave::FloatParameter::automaticRamp;
    leftGain.parameter.setValue(level.value - std::max(pan.value, 0.0f) * level.value, ramp);
    rightGain.parameter.setValue((std::min(pan.value, 0.0f) + 1.0f) * level.value, ramp);
}

bool LevelPanTarget::isModulated() const noexcept CINDER_REALTIME {
    return level.hasActiveSlot() || pan.hasActiveSlot();
}

LevelPanTarget::VoiceController::VoiceController(LevelPanTarget* target)
    : MultiProducer(target->getEnvironment()),
      target(target),
      level(target->matrix->getTargetController(target->levelTarget)),
      pan(target->matrix->getTargetController(target->panTarget)) {
    createOutputs(2);
}

void LevelPanTarget::VoiceController::render(wave::BasicBlock<float>** blocks, int numSamples,
                                             unsigned) noexcept CINDER_REALTIME {
    level->pull(numSamples);
    pan->pull(numSamples);
    // Pulled in any case: a value that is not followed jumps when it is set.
    target->leftGain.pull(numSamples);
    target->rightGain.pull(numSamples);

    const bool isModulated = target->isModulated();
    const bool panIsCentred = pan->isConstant() && std::abs((*pan->getOutput())[0]) <= sameValue;
    // Pan may have come to rest while the gains are still on their way to the level.
    const bool gainsRest = target->leftGain.isConstant() && target->rightGain.isConstant();
    if (panIsCentred && (isModulated || gainsRest)) {
        handOn(blocks, level, level);
    } else if (!isModulated) {
        handOn(blocks, &target->leftGain, &target->rightGain);
    } else {
        const bool isConstant = level->isConstant() && pan->isConstant();
        simd::modulationKernels->panGains(level->getOutput()->data(), pan->getOutput()->data(),
                                          blocks[0]->data(), blocks[1]->data(),
                                          isConstant ? 1 : numSamples);
        for (int channel = 0; channel < 2; ++channel) {
            float* const out = blocks[channel]->data();
            if (isConstant) std::fill_n(out + 1, numSamples - 1, out[0]);
            setOutputConstant(channel, isConstant);
        }
    }
}

void LevelPanTarget::VoiceController::handOn(wave::BasicBlock<float>** blocks, wave::Producer* left,
                                             wave::Producer* right) noexcept CINDER_REALTIME {
    blocks[0] = left->getOutput();
    blocks[1] = right->getOutput();
    setOutputConstant(0, left->isConstant());
    setOutputConstant(1, right->isConstant());
}

}  // namespace cinder
