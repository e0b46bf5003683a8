#include "dsp/sr/IIRInterpolator.h"

namespace cinder::sr {

bool IIRInterpolator::process(const float* input, float* output,
                              int count) noexcept CINDER_REALTIME {
    const Job job = {this, input, output};
    return processGroup({&job, 1}, count);
}

bool IIRInterpolator::processGroup(std::span<const Job> jobs, int count) noexcept CINDER_REALTIME {
    return processJobs<IIRInterpolator>(jobs, count, interpolateChannels);
}

}  // namespace cinder::sr
