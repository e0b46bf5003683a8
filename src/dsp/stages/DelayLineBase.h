#pragma once

#include "wave/DelayFilterBase.h"

namespace cinder {

/// A delay that can jump: it plays the old and the new delay together while it fades over.
/// Shape   one channel
/// Range   0..maxDelayMs
/// State   the delay memory and the fade; cleared by reset() and by a jump of the time line
class DelayLineBase : public wave::DelayFilterBase {
public:
    explicit DelayLineBase(wave::Environment* environment);

    /// Resets, and allocates where the length changes.
    void setMaxDelayMs(float milliseconds);
    float getMaxDelayMs() const { return maxDelayMs; }

    /// Allocates where the sample rate has changed. [audio]
    void reset() noexcept CINDER_REALTIME override;

protected:
    /// Plays the given delay, with a crossfade of 0.2 s where it has changed. A delay that changes
    /// during a fade is taken up behind it.
    void readJumping(std::int32_t delaySamples, float* out,
                     int numSamples) noexcept CINDER_REALTIME;
    /// Samples in maxDelayMs at the present rate.
    std::int32_t capacity() const noexcept CINDER_REALTIME;

private:
    float maxDelayMs = 100.0f;
    std::int32_t currentDelay = 0;
    std::int32_t fadingDelay = 0;
    std::int32_t fadePosition = 0;
    std::int32_t fadeLength = 0;
    bool firstRun = true;
    wave::BasicBlock<float> work;
};

}  // namespace cinder
