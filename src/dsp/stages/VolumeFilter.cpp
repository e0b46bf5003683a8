#include "dsp/stages/VolumeFilter.h"

#include "core/simd/BlockMath.h"
#include "dsp/stages/ControlBlock.h"

namespace cinder {

void VolumeFilter::render(wave::BasicBlock<float>* block, int numSamples,
                          unsigned flags) noexcept CINDER_REALTIME {
    if (muteController && muteController->isMuted()) return silence();
    // The level comes first: what nobody will hear need not run.
    const float firstLevel = (*level.pull(numSamples))[0];
    if (level.isConstant() && isZero(firstLevel)) return silence();
    Filter::render(block, numSamples, flags);
}

void VolumeFilter::process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out,
                           int numSamples, unsigned) noexcept CINDER_REALTIME {
    const float* const first = level.pull(numSamples)->data();
    const bool levelConstant = level.isConstant();
    const float* const second = secondLevel ? secondLevel->pull(numSamples)->data() : nullptr;
    setConstant(levelConstant && input->isConstant() && (!second || secondLevel->isConstant()));
    if (levelConstant && isOne(first[0])) {
        if (!second) return passOn(in);
        return simd::multiply(in->data(), second, out->data(), numSamples);
    }
    if (levelConstant)
        simd::scale(in->data(), first[0], out->data(), numSamples);
    else
        simd::multiply(in->data(), first, out->data(), numSamples);
    if (second) simd::multiply(out->data(), second, out->data(), numSamples);
}

void VolumeFilter::silence() noexcept CINDER_REALTIME {
    passOn(environment->getZeroBlock());
    setConstant(true);
}

}  // namespace cinder
