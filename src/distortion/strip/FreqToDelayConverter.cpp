#include "distortion/strip/FreqToDelayConverter.h"

#include <algorithm>
#include <cmath>

namespace cinder {

void FreqToDelayConverter::convert(const float* in, float* out,
                                   int numSamples) noexcept CINDER_REALTIME {
    const float elsewhere =
        static_cast<float>(compensation.get()) * 1000.0f / environment->getSampleRate();
    std::transform(in, in + numSamples, out,
                   [elsewhere](float log2Hz) { return 1000.0f * std::exp2(-log2Hz) - elsewhere; });
}

}  // namespace cinder
