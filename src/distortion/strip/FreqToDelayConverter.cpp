#include "distortion/strip/FreqToDelayConverter.h"

#include <algorithm>
#include <cmath>

namespace cinder {

float FreqToDelayConverter::delayMs(float log2Hz, float compensationMs) noexcept CINDER_REALTIME {
    return 1000.0f * std::exp2(-log2Hz) - compensationMs;
}

void FreqToDelayConverter::convert(const float* in, float* out,
                                   int numSamples) noexcept CINDER_REALTIME {
    const float elsewhere = msOf(compensation, environment->getSampleRate());
    std::transform(in, in + numSamples, out,
                   [elsewhere](float log2Hz) { return delayMs(log2Hz, elsewhere); });
}

}  // namespace cinder
