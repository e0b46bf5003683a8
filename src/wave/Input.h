#pragma once

#include "wave/Producer.h"

namespace cinder::wave {

/// Where audio enters the graph: reads the host's buffer, sub-block by sub-block. A sub-block in
/// which nobody pulled is passed over, so what is read next is again what sounds now.
/// Range   whatever comes, finite and bounded samples go in (see simd::sanitise), so no filter
///         state can be poisoned
///         A sub-block of nothing but 0 is the block of silence
/// State   the place in the buffer; silence once the buffer is used up
class Input : public Producer {
public:
    explicit Input(Environment* environment) : Producer(environment) {}

    /// Once per host block; the buffer must live until the block is done. Null is silence. [audio]
    void setBuffer(const float* samples, int count) noexcept CINDER_REALTIME {
        next = samples;
        remaining = samples ? count : 0;
        nextPosition = environment->getPosition();
    }

    void render(BasicBlock<float>* block, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;

private:
    void advance(int numSamples) noexcept CINDER_REALTIME {
        next += numSamples;
        remaining -= numSamples;
    }

    const float* next = nullptr;
    std::int32_t remaining = 0;
    std::uint64_t nextPosition = 0;  // when the sample at `next` sounds
};

}  // namespace cinder::wave
