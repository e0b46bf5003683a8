#pragma once

#include "core/Property.h"
#include "dsp/stages/DelayLineBase.h"
#include "wave/FloatParameterBus.h"

namespace cinder {

/// A delay whose time may move.
/// Shape   one channel
/// Range   `delay` 0..maxDelayMs, in milliseconds or samples, clamped
/// State   the delay memory, the smoothing filter, the read heads; cleared by reset()
class DelayLine final : public DelayLineBase, public PropertyOwner {
public:
    enum class DelayInterpretation : std::int32_t { Milliseconds = 0, Samples = 1 };
    enum class ReadType : std::int32_t {
        Interpolated = 0,      ///< between two samples while it moves, which shifts the pitch
        CrossfadingHeads = 1,  ///< two heads take turns, so a moving time keeps the pitch
        Jumping = 2,           ///< the first value of a block, with a crossfade of 0.2 s
    };

    explicit DelayLine(wave::Environment* environment);

    void reset() noexcept CINDER_REALTIME override;
    void propertyChanged(AbstractProperty* property) override;

    wave::FloatParameterBus delayTime;
    Property<DelayInterpretation> delayInterpretation{DelayInterpretation::Milliseconds, this};
    Property<ReadType> readType{ReadType::Interpolated};
    Property<bool> smoothing{true};

protected:
    void process(float* out, int numSamples) noexcept CINDER_REALTIME override;

private:
    double samplesPerUnit() const noexcept CINDER_REALTIME;
    std::int32_t wholeDelay(float time) const noexcept CINDER_REALTIME;
    void updateLimits() noexcept CINDER_REALTIME;
    void followDelay(const float* times, int numSamples) noexcept CINDER_REALTIME;
    void readInterpolated(float* out, int numSamples) noexcept CINDER_REALTIME;
    void readHeads(float* out, int numSamples) noexcept CINDER_REALTIME;
    float sampleAt(std::int64_t index) const noexcept CINDER_REALTIME;
    /// Ring index of the block's first sample at delay 0.
    std::int64_t blockStart(int numSamples) const noexcept CINDER_REALTIME;

    wave::BasicBlock<double> delays;  // in samples, one for each sample of the block
    double smoothLow = 0.0;           // two-pole filter on the delay, in samples
    double smoothBand = 0.0;
    float smoothQ = 2.0f;
    float smoothF = 0.0f;
    bool smoothPending = true;
    std::int32_t headIndex = -1;
    std::int32_t headCount = 0;
    std::int32_t heads[2] = {};
};

}  // namespace cinder
