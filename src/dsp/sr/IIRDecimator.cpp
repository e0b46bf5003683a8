#include "dsp/sr/IIRDecimator.h"

#include <algorithm>

namespace cinder::sr {

bool IIRDecimator::process(const float* input, float* output, int count) noexcept CINDER_REALTIME {
    const Job job = {this, input, output};
    return processGroup({&job, 1}, count);
}

bool IIRDecimator::processGroup(std::span<const Job> jobs, int count) noexcept CINDER_REALTIME {
    return processJobs<IIRDecimator>(jobs, count, decimateChannels);
}

void IIRDecimator::reset() noexcept CINDER_REALTIME {
    IIRConverter::reset();
    std::ranges::fill(lastInputs, 0.0f);
}

bool IIRDecimator::isAtRest() const noexcept CINDER_REALTIME {
    return IIRConverter::isAtRest() && std::ranges::all_of(lastInputs, isNothing);
}

/// Either branch has half of what comes in.
void IIRDecimator::settle(float value) noexcept CINDER_REALTIME {
    IIRConverter::settle(0.5f * value);
    std::ranges::fill(lastInputs, value);
}

}  // namespace cinder::sr
