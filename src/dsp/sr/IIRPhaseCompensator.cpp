#include "dsp/sr/IIRPhaseCompensator.h"

namespace cinder::sr {

IIRPhaseCompensator::IIRPhaseCompensator(IIRConverterStyle* style)
    : Filter(style->getEnvironment()),
      decimator(style),
      interpolator(style),
      oversampled(style->getMaxFactor() * style->getEnvironment()->getMaxBlockSize()) {
    makeResettable();
}

void IIRPhaseCompensator::reset() noexcept CINDER_REALTIME {
    interpolator.reset();
    decimator.reset();
}

void IIRPhaseCompensator::process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out,
                                  int numSamples, unsigned) noexcept CINDER_REALTIME {
    if (interpolator.process(in->data(), oversampled.data(), numSamples))
        decimator.process(oversampled.data(), out->data(), numSamples);
    else
        passOn(in);
}

}  // namespace cinder::sr
