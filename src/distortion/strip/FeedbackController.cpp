#include "distortion/strip/FeedbackController.h"

#include "core/simd/BlockMath.h"
#include "dsp/stages/ControlBlock.h"

namespace cinder {

void FeedbackController::process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out,
                                 int numSamples, unsigned) noexcept CINDER_REALTIME {
    setConstant(input->isConstant());
    if (!autoMute || (isConstant() && isZero((*in)[0]))) return passOn(in);
    const wave::BasicBlock<float>* const gateBlock = gate->pull(numSamples);
    if (gate->isConstant()) {
        simd::scale(in->data(), (*gateBlock)[0], out->data(), numSamples);
    } else {
        simd::multiply(in->data(), gateBlock->data(), out->data(), numSamples);
        setConstant(false);
    }
}

}  // namespace cinder
