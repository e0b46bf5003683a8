#pragma once

#include "core/Realtime.h"

namespace cinder {

/// Hears what arrives on the channels of one receiver. Values and velocities are 0..1, a pitch bend
/// is -0.5..0.5. All of it happens on the audio thread.
class MidiListener {
public:
    virtual void channelPressure(float value) noexcept CINDER_REALTIME = 0;
    virtual void polyPressure(int note, float value) noexcept CINDER_REALTIME = 0;
    virtual void controller(int number, int value, float normalised) noexcept CINDER_REALTIME = 0;
    /// Controller 1, besides the call of `controller`.
    virtual void modulationWheel(float normalised) noexcept CINDER_REALTIME = 0;
    virtual void noteOff(int note, float velocity) noexcept CINDER_REALTIME = 0;
    virtual void noteOn(int note, float velocity) noexcept CINDER_REALTIME = 0;
    virtual void pitchBend(float value) noexcept CINDER_REALTIME = 0;

protected:
    ~MidiListener() = default;
};

}  // namespace cinder
