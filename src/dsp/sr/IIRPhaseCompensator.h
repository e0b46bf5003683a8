#pragma once

#include "dsp/sr/IIRDecimator.h"
#include "dsp/sr/IIRInterpolator.h"

namespace cinder::sr {

/// Gives a signal the delay and the phase that a trip through an oversampled stage of its style
/// costs, with the small errors in the passband, so that the two can be mixed: up, then down.
/// Shape   one channel; at factor 1 the output is the input block itself
/// State   that of the converters
class IIRPhaseCompensator final : public wave::Filter {
public:
    explicit IIRPhaseCompensator(IIRConverterStyle* style);

    void reset() noexcept CINDER_REALTIME override;

protected:
    void process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                 unsigned flags) noexcept CINDER_REALTIME override;

private:
    IIRDecimator decimator;
    IIRInterpolator interpolator;
    wave::BasicBlock<float> oversampled;
};

}  // namespace cinder::sr
