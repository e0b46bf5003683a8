#pragma once

#include "wave/Delay.h"

namespace cinder::wave {

/// A filter with a delay inside. In feedback mode a cycle reads first and writes at the sink visit,
/// behind all pulls, so a loop through it needs no special care: pulling it never pulls its input.
/// The delay in a loop is at least one block.
/// State   the delay; forgotten when the time line jumps (a hard reset, a skipped cycle, a cycle in
///         which nobody pulled)
class DelayFilterBase : public FilterBase {
public:
    explicit DelayFilterBase(Environment* environment)
        : FilterBase(environment), delay(environment) {
        setRenderPriority(0);
    }

    void setFeedbackMode(bool feedback) { feedbackMode = feedback ? 1 : 0; }
    void render(BasicBlock<float>* block, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;

protected:
    virtual void process(float* out, int numSamples) noexcept CINDER_REALTIME = 0;

    Delay delay;
    std::int32_t feedbackMode = 1;

private:
    void forgetIfTimeJumped(int numSamples) noexcept CINDER_REALTIME;

    std::uint64_t expectedPosition = 0;
};

}  // namespace cinder::wave
