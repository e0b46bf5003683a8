#pragma once

#include "core/Realtime.h"
#include "wave/Producer.h"

namespace cinder {

/// A control in dB as a linear gain: y = exp(x * ln(10) / 20). Stages that pull it in the same
/// cycle share the work. The ramp of the control runs in dB, so that it sounds even.
/// Shape   1..maxBlockSize samples; one exponential for a constant block, one a sample for a ramp
/// State   none
class DecibelsToGain final : public wave::Filter {
public:
    DecibelsToGain(wave::Environment* environment, wave::Producer* decibels);

protected:
    void process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                 unsigned flags) noexcept CINDER_REALTIME override;
};

}  // namespace cinder
