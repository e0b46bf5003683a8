#pragma once

#include <cstdint>

#include "core/Property.h"
#include "core/Realtime.h"
#include "wave/Producer.h"
#include "wave/Rest.h"

namespace cinder::wave {

/// A smoothed control value: whatever it is set to, it goes there on a straight ramp.
///
/// The automatic ramp takes `maxRampTime` for a tiny step and shrinks with the square of the step
/// size to `minRampTime` for any step of 30 % of the range or more: large moves are fast, small
/// ones smooth. A ramp of L samples starts with its start value; the target follows sample L.
///
/// Shape   a block of 1..maxBlockSize samples; constant blocks are written once, not every block
/// Range   minimum..maximum, clamped; a NaN becomes the minimum; times in milliseconds
/// State   the ramp, and the position up to which the value has been followed; after a
///         discontinuity of the environment a running ramp has ended and the next value jumps
class FloatParameter final : public Component, public ValueAssignable<float> {
public:
    class ValueBlock final : public BasicBlock<float> {
    public:
        using BasicBlock<float>::BasicBlock;
        void maxBlockSizeChanged() override {
            BasicBlock<float>::maxBlockSizeChanged();
            filled = 0;
        }
        std::int32_t filled = 0;  // leading samples that hold the target already
    };

    static constexpr float automaticRamp = -1.0f;

    /// The limits take in `initial`, 0 and 1.
    explicit FloatParameter(Environment* environment, float initial = 0.0f);
    FloatParameter(Environment* environment, float initial, float minimum, float maximum);
    /// Takes over ramp times, wrap period and limits, and starts at the other one's target.
    FloatParameter(const FloatParameter& other);
    FloatParameter& operator=(const FloatParameter&) = delete;

    /// A ramp time below 0 means the automatic ramp, 0 a jump. [audio]
    void setValue(float value, float rampMs) noexcept CINDER_REALTIME;
    void assign(float value) override { setValue(value, automaticRamp); }
    /// The reference of the automatic ramp is maximum - minimum where `range` is 0 or less. A
    /// target outside the new limits jumps to the nearest one. [audio]
    void setRange(float minimum, float maximum, float range) noexcept CINDER_REALTIME;
    /// Ends a running ramp at its target. [audio]
    void finishRamp() noexcept CINDER_REALTIME { rampPosition = rampLength; }

    /// The rest that a new value ends, or null. Before audio runs; not owned.
    void setRest(Rest* newRest) { rest = newRest; }
    void endRest() noexcept CINDER_REALTIME {
        if (rest) rest->end();
    }
    /// What `follow` would have noted, for a value that has stood still up to there. [audio]
    void wasFollowedUpTo(std::uint64_t position) noexcept CINDER_REALTIME {
        lastPosition = position;
    }
    /// Writes the whole of the block of a value that stands still. [audio]
    void fill() noexcept CINDER_REALTIME {
        bool isConstant = false;
        render(environment->getMaxBlockSize(), &isConstant);
    }

    /// The next samples of the ramp. Does not look at the clock: see `follow`. [audio]
    ValueBlock* render(int numSamples, bool* isConstant) noexcept CINDER_REALTIME;
    /// The samples of the present cycle: moves the ramp on by what nobody rendered, or to its end
    /// after a discontinuity, then renders. Every user that reads the value once a cycle, and no
    /// other producer on its behalf, calls this; without it ramps never run or never end. [audio]
    ValueBlock* follow(int numSamples, bool* isConstant) noexcept CINDER_REALTIME {
        // Most values stand still most of the time.
        if (isRamping() || valueBlock.filled < numSamples)
            return followRamp(numSamples, isConstant);
        lastPosition = environment->getPosition() + static_cast<std::uint64_t>(numSamples);
        *isConstant = true;
        return &valueBlock;
    }

    float getTarget() const { return target; }
    float getMinimum() const { return minimum; }
    float getMaximum() const { return maximum; }
    float getRange() const { return range; }
    bool isRamping() const { return rampPosition < rampLength; }
    /// Where the last ramp began, and by how much a sample of it rises.
    float getRampStart() const { return rampStart; }
    float getRampStep() const { return rampStep; }

    Property<float> wrapPeriod{0.0f};  // above 0: the value is circular with this period
    Property<float> maxRampTime{150.0f};
    Property<float> minRampTime{20.0f};

private:
    ValueBlock* followRamp(int numSamples, bool* isConstant) noexcept CINDER_REALTIME;
    float clamped(float value) const noexcept CINDER_REALTIME;
    float automaticRampMs(float difference) const noexcept CINDER_REALTIME;
    float currentValue() const noexcept CINDER_REALTIME {
        return static_cast<float>(rampPosition) * rampStep + rampStart;
    }

    Rest* rest = nullptr;  // not owned
    ValueBlock valueBlock;
    std::int32_t rampPosition = 0;
    std::int32_t rampLength = 0;
    float rampStart;
    float rampStep = 0.0f;
    float maximum;
    float minimum;
    float range;
    std::uint64_t lastPosition = 0;  // the value has been rendered up to here
    float target;
};

}  // namespace cinder::wave
