#include "dsp/stages/DelayLineBase.h"

#include <algorithm>

namespace cinder {

DelayLineBase::DelayLineBase(wave::Environment* environment)
    : DelayFilterBase(environment), work(environment) {
    makeResettable();
    delay.setMaxDelay(capacity());
}

void DelayLineBase::setMaxDelayMs(float milliseconds) {
    maxDelayMs = milliseconds;
    reset();
}

void DelayLineBase::reset() noexcept CINDER_REALTIME {
    delay.setMaxDelay(capacity());
    delay.clear();
    firstRun = true;
    fadePosition = 0;
    fadeLength = 0;
}

std::int32_t DelayLineBase::capacity() const noexcept CINDER_REALTIME {
    return static_cast<std::int32_t>(static_cast<double>(maxDelayMs) * 0.001 *
                                     static_cast<double>(environment->getSampleRate()));
}

void DelayLineBase::readJumping(std::int32_t delaySamples, float* out,
                                int numSamples) noexcept CINDER_REALTIME {
    constexpr float fadeSeconds = 0.2f;
    const bool fading = fadePosition < fadeLength;
    if (firstRun) {
        firstRun = false;
        currentDelay = delaySamples;
    } else if (!fading && delaySamples != currentDelay) {
        fadingDelay = currentDelay;
        currentDelay = delaySamples;
        fadePosition = 0;
        fadeLength = static_cast<std::int32_t>(environment->getSampleRate() * fadeSeconds);
    }
    delay.read(currentDelay, out, numSamples);
    if (fadePosition >= fadeLength) return;

    delay.read(fadingDelay, work.data(), numSamples);
    const int count = std::min(fadeLength - fadePosition, numSamples);
    const double step = 1.0 / fadeLength;
    for (int i = 0; i < count; ++i) {
        const double t = (fadePosition + i) * step;
        out[i] = static_cast<float>(static_cast<double>(work[i]) * (1.0 - t) +
                                    static_cast<double>(out[i]) * t);
    }
    fadePosition += count;
}

}  // namespace cinder
