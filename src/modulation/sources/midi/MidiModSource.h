#pragma once

#include <atomic>
#include <cstdint>

#include "core/Property.h"
#include "modulation/sources/midi/ResponseCurves.h"
#include "wave/FloatParameter.h"

namespace cinder {

/// One kind of MIDI input as a modulation signal, with f the response curve:
///   pitch bend  f(2 x)                          velocity  2 f(x) - 1, so 1/2 is neutral if f is
///   odd note        f(x / 120) - f(0.4), 0 at 48    all else  f(x)
/// Each value is approached on the automatic ramp; those of a note can do without.
///
/// Shape   hands on the block of its smoothed value; constant at rest
/// Range   -1..1
/// State   the value. A new input is taken as it stands; a new curve or controller number counts
///         from the next event on. The same bits for any cut of the block between events
/// Errors  none; numbers that are no input's are not followed
class MidiModSource final : public wave::Source, public PropertyOwner {
public:
    using MidiInput = cinder::MidiInput;
    using ResponseCurve = cinder::ResponseCurve;
    class Cache;

    /// Follows the cache, which outlives it.
    MidiModSource(wave::Environment* environment, Cache* cache);
    ~MidiModSource() override;

    /// A ramp time for what a note brings: velocity and number. 0 jumps. [audio]
    void setNoteRampMs(float milliseconds) noexcept CINDER_REALTIME { noteRampMs = milliseconds; }
    /// The cache has a new value. [audio]
    void update(int index, float newValue) noexcept CINDER_REALTIME;

    void render(wave::BasicBlock<float>* block, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;
    void propertyChanged(AbstractProperty* property) override;

    /// What the source bar shows: 0..1 for bends, velocities and notes up to 120. [any]
    float getSourceValue() const noexcept CINDER_REALTIME {
        return shown.load(std::memory_order_relaxed);
    }

    Property<int> controllerNumber{0};  // for MidiInput::Controller
    Property<MidiInput> midiInput{MidiInput::ModWheel, this};
    Property<ResponseCurve> responseCurve{ResponseCurve::Linear, this};

private:
    float currentValue() const noexcept CINDER_REALTIME;
    float barValue() const noexcept CINDER_REALTIME;
    void show() noexcept CINDER_REALTIME { shown.store(barValue(), std::memory_order_relaxed); }

    Cache* const cache;  // not owned
    ResponseFunction curve = responseFunctionOf(ResponseCurve::Linear);
    wave::FloatParameter value;
    float noteRampMs = wave::FloatParameter::automaticRamp;
    std::atomic<float> shown{0.0f};
};

}  // namespace cinder
