#pragma once

#include "cinder/shaper/ShaperProcessor.h"
#include "tools/HostBlocks.h"

#include <vector>

namespace cinder::test {

/// A shaper at a rate, its parameters at their defaults until they are set.
class ShaperFixture {
public:
    explicit ShaperFixture(int numChannels, float sampleRate = 48000.0f);

    /// Takes effect at the next block. Set before the first one, it doesn't ramp.
    void set(ShaperParameterId id, float value);
    /// Curve none, no drive, no level: what is left is the way through the oversampler.
    void setTransparent(int log2Factor);
    Channels render(const Channels& input, const std::vector<int>& blocks = {512}) {
        return playThrough(processor, input, blocks);
    }
    int latency() const { return processor.getLatency(); }

    ShaperProcessor processor;
};

}  // namespace cinder::test
