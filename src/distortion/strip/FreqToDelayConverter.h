#pragma once

#include "core/Property.h"
#include "dsp/stages/ValueConverters.h"

namespace cinder {

/// The delay that gives a feedback loop the period of a frequency: out = 1000 / 2^in - k, where k
/// is what the rest of the loop takes, `compensation` samples.
/// Shape   one channel, log2 of Hz in, milliseconds out; a constant input is converted once
/// State   none
class FreqToDelayConverter final : public ValueConverter {
public:
    using ValueConverter::ValueConverter;

    /// What the delay is set to for `log2Hz`, bit by bit. [any]
    static float delayMs(float log2Hz, float compensationMs) noexcept CINDER_REALTIME;
    static float msOf(int samples, float sampleRate) noexcept CINDER_REALTIME {
        return static_cast<float>(samples) * 1000.0f / sampleRate;
    }

    Property<int> compensation{0};  // samples at the base rate

protected:
    void convert(const float* in, float* out, int numSamples) noexcept CINDER_REALTIME override;
};

}  // namespace cinder
