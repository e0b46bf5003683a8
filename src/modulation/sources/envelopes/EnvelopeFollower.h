#pragma once

#include <atomic>
#include <memory>

#include "modulation/sources/envelopes/FollowerLevels.h"
#include "wave/FloatParameterBus.h"

namespace cinder {

/// Follows the level of its input: e = max(0, 20 log10 |x| + 60), d = e - level,
///   level[n] = level[n-1] + (1 - exp(-ln 10 / (t rate))) d,  y = level / 60
/// so 0 stands for -60 dB and less, 1 for 0 dB, and after t seconds a tenth of a step is left. t is
/// `release` where d is at most 0, otherwise `attack`.
///
/// Shape   one channel; a sink, so it follows whether anybody listens or not. At rest it hands on
///         silence
/// Range   times 0.0005..10 s, clamped, NaN is the least; y may pass 1, and starts from -3 when new
/// State   the level, which no reset clears. The same bits for any cut of the block, but for when
///         rest begins: from 2e-9 down, a silent block is 0
/// Errors  none; whatever comes in, y is finite
class EnvelopeFollower final : public wave::Filter {
public:
    /// Takes the levels of its input from `sharedLevels`, or works them out on its own.
    explicit EnvelopeFollower(wave::Environment* environment,
                              FollowerLevels* sharedLevels = nullptr);

    /// What the source bar shows: the last output's first sample. [any]
    float getSourceValue() const noexcept CINDER_REALTIME {
        return shown.load(std::memory_order_relaxed);
    }

    wave::FloatParameterBus attack;   // seconds
    wave::FloatParameterBus release;  // seconds

protected:
    void process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                 unsigned flags) noexcept CINDER_REALTIME override;

private:
    /// The coefficient of the time last asked for; the exponential is worked out on a change only.
    struct Coefficient {
        float of(float timeSamples) noexcept CINDER_REALTIME;
        float lastSamples = 0.0f;
        float value = 0.0f;
    };

    bool isAtRest() noexcept CINDER_REALTIME;
    void follow(float* out, int numSamples) noexcept CINDER_REALTIME;
    void followThroughMovingTimes(const float* attacks, const float* releases, const float* levels,
                                  float* out, int numSamples) noexcept CINDER_REALTIME;

    std::unique_ptr<FollowerLevels> ownLevels;  // where there are no shared ones
    FollowerLevels& inputLevels;
    float level = -180.0f;  // dB above -60
    Coefficient attackCoefficient;
    Coefficient releaseCoefficient;
    std::atomic<float> shown{0.0f};
};

}  // namespace cinder
