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

void IIRDecimator::scalePast(float gain) noexcept CINDER_REALTIME {
    IIRConverter::scalePast(gain);
    for (float& held : lastInputs)
        held = scaled(held, gain);
}

}  // namespace cinder::sr
