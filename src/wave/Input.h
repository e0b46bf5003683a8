#pragma once

#include "wave/Producer.h"

namespace cinder::wave {

/// Where audio enters the graph: reads the host's buffer, sub-block by sub-block.
/// Range   whatever comes, finite and bounded samples go in (see simd::sanitise), so no filter
///         state can be poisoned
/// State   the place in the buffer; silence once the buffer is used up
class Input : public Producer {
public:
    explicit Input(Environment* environment) : Producer(environment) {}

    /// Once per host block; the buffer must live until the block is done. [audio]
    void setBuffer(const float* samples, int count) noexcept CINDER_REALTIME {
        next = samples;
        remaining = count;
    }

    void render(BasicBlock<float>* block, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;

private:
    const float* next = nullptr;
    std::int32_t remaining = 0;
};

}  // namespace cinder::wave
