#include "wave/DelayFilterBase.h"

namespace cinder::wave {

void DelayFilterBase::render(BasicBlock<float>* block, int numSamples,
                             unsigned flags) noexcept CINDER_REALTIME {
    const bool feedback = feedbackMode == 1;
    if (flags & Environment::writeVisit) {
        if (!feedback) return;
        if (const BasicBlock<float>* in = input->pull(numSamples))
            delay.write(in->data(), numSamples);
        return;
    }
    forgetIfTimeJumped(numSamples);
    if (!feedback) delay.write(input->pull(numSamples)->data(), numSamples);
    delay.setReadAhead(feedback ? numSamples : 0);
    process(block->data(), numSamples);
}

void DelayFilterBase::forgetIfTimeJumped(int numSamples) noexcept CINDER_REALTIME {
    const std::uint64_t previous = expectedPosition;
    expectedPosition = environment->getPosition() + static_cast<std::uint64_t>(numSamples);
    if (previous == environment->getHardResetPosition() || previous != environment->getPosition())
        delay.clear();
}

}  // namespace cinder::wave
